#pragma once

#include "overlay/master_view.h"
#include "swath/surface.h"

namespace pelorin::overlay {

/// Land and water as the overlay master has them; `master` must outlive the answer.
swath::SurfaceOfLine SurfacesIn(const MasterView& master);

}  // namespace pelorin::overlay
