#include "overlay/elevation_colours.h"

#include <cmath>

namespace pelorin::overlay {
namespace {

struct Tint {
  int metres;
  double red, green, blue;
};

constexpr Tint kTints[] = {{0, 96, 150, 96},      {100, 122, 172, 104},  {300, 168, 196, 120},
                           {600, 214, 212, 140},  {1000, 222, 194, 122}, {1800, 194, 150, 92},
                           {2800, 160, 112, 76},  {3800, 150, 120, 108}, {4800, 190, 180, 176},
                           {5800, 240, 240, 244}, {9000, 255, 255, 255}};

ElevationColours MakeAtlasColours() {
  ElevationColours colours{};
  const Tint* tint = kTints;
  for (int metres = 0; metres < static_cast<int>(colours.size()); ++metres) {
    if (metres > tint[1].metres) ++tint;
    const double share = static_cast<double>(metres - tint[0].metres) / (tint[1].metres - tint[0].metres);
    const auto mix = [share](double a, double b) {
      return static_cast<std::uint32_t>(std::lround(a + share * (b - a)));
    };
    colours[static_cast<std::size_t>(metres)] = mix(tint[0].red, tint[1].red) << 16 |
                                                mix(tint[0].green, tint[1].green) << 8 |
                                                mix(tint[0].blue, tint[1].blue);
  }
  colours[0] = kSeaColour;
  return colours;
}

}  // namespace

const ElevationColours& AtlasColours() {
  static const ElevationColours colours = MakeAtlasColours();
  return colours;
}

}  // namespace pelorin::overlay
