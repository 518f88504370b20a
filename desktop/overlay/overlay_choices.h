#pragma once

#include <QString>

#include "app/settings.h"
#include "overlay/ground_colour.h"

namespace pelorin::desktop {

/// What of the overlay the user wants to see over the ground.
overlay::Marks ChosenMarks(const app::Settings& settings);

/// What the direction buttons of both pages say.
QString DirectionCaption(bool southBound);

}  // namespace pelorin::desktop
