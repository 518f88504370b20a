#include "overlay/master_surface.h"

#include "overlay/palette.h"

namespace pelorin::overlay {

swath::SurfaceOfLine SurfacesIn(const MasterView& master) {
  return [&master](const swath::GroundLine& line, std::span<swath::Surface> surfaces) {
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
      switch (master.IndexAt(line.SouthMin[i], line.EastMin[i])) {
        case kLand:
          surfaces[i] = swath::Surface::Land;
          break;
        case kBackground:
          surfaces[i] = swath::Surface::Water;
          break;
        default:
          surfaces[i] = swath::Surface::Unsure;
      }
    }
  };
}

}  // namespace pelorin::overlay
