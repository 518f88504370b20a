#include "tools/relief.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace pelorin::tools {
namespace {

struct Stop {
  float At;
  Colour Tint;
};

Colour Along(std::span<const Stop> stops, float at) {
  const auto above =
      std::find_if(stops.begin(), stops.end(), [at](const Stop& stop) { return at < stop.At; });
  if (above == stops.begin()) return stops.front().Tint;
  if (above == stops.end()) return stops.back().Tint;
  const Stop& below = *(above - 1);
  return Mix(below.Tint, above->Tint, (at - below.At) / (above->At - below.At));
}

/// 0 below `low`, 1 above `high`, smooth in between.
float Rise(float low, float high, float at) {
  const float t = std::clamp((at - low) / (high - low), 0.0F, 1.0F);
  return t * t * (3 - 2 * t);
}

/// An ellipse on the map with soft edges: 1 inside a third of its radius, 0 outside it.
struct Region {
  float LatitudeDeg, LongitudeDeg, LatitudeRadius, LongitudeRadius;

  float Share(float latitudeDeg, float longitudeDeg) const {
    const float dy = (latitudeDeg - LatitudeDeg) / LatitudeRadius;
    const float dx = (longitudeDeg - LongitudeDeg) / LongitudeRadius;
    const float squared = dx * dx + dy * dy;
    return squared >= 1 ? 0 : 1 - Rise(0.35F, 1, std::sqrt(squared));
  }
};

/// The great deserts and dry steppes. Climate does not follow latitude: without these, China and Florida
/// would be as yellow as the Sahara.
constexpr std::array kDryRegions = {Region{23, -4, 12, 20},   Region{24, 16, 13, 24},
                                    Region{25, 33, 14, 16},  // Sahara
                                    Region{24, 47, 15, 17},   Region{21, 56, 8, 9},
                                    Region{32, 41, 6, 9},  // Arabia, Syria
                                    Region{9, 46, 9, 10},     Region{33, 59, 12, 16},
                                    Region{28, 69, 8, 10},  // Somalia, Iran, Thar
                                    Region{43, 62, 9, 16},    Region{40, 84, 8, 17},
                                    Region{42, 104, 8, 17},  // Aral, Takla Makan, Gobi
                                    Region{34, 90, 7, 15},    Region{-24, 19, 14, 9},
                                    Region{-25, 130, 13, 24},  // Tibet, Kalahari, Australia
                                    Region{36, -114, 10, 11}, Region{27, -105, 10, 9},
                                    Region{28, -113, 7, 5},  // Great Basin, Mexico
                                    Region{-23, -69, 11, 5},  Region{-44, -69, 13, 6}};  // Atacama, Patagonia

/// What lies under inland ice; everything beyond 60° S does too.
constexpr std::array kIceSheets = {Region{74, -40, 16, 30}, Region{68, -43, 12, 16}};

/// Where regions overlap, each turns a part of what the others left.
template <std::size_t N>
float TotalShare(const std::array<Region, N>& regions, float latitudeDeg, float longitudeDeg) {
  float left = 1;
  for (const Region& region : regions) left *= 1 - region.Share(latitudeDeg, longitudeDeg);
  return 1 - left;
}

/// Deserts do not end along ellipses: places are moved by a degree or two before they are looked up.
float Dryness(float latitudeDeg, float longitudeDeg) {
  const float latitude = latitudeDeg + 1.2F * std::sin(0.27F * longitudeDeg + 0.31F * latitudeDeg);
  const float longitude = longitudeDeg + 1.8F * std::sin(0.41F * latitudeDeg - 0.17F * longitudeDeg + 1);
  return TotalShare(kDryRegions, latitude, longitude);
}

/// Lowland that gets its rain, by distance from the equator.
constexpr std::array kHumid = {Stop{0, {126, 172, 112}},  Stop{12, {142, 182, 118}},
                               Stop{25, {160, 190, 128}}, Stop{42, {158, 190, 132}},
                               Stop{56, {146, 180, 134}}, Stop{64, {160, 182, 148}},
                               Stop{70, {188, 192, 168}}, Stop{78, {214, 212, 200}}};
constexpr Colour kDry{232, 212, 164};

/// What height makes of the lowland's colour; the lowest stop's tint is the lowland's own.
constexpr std::array kHeights = {Stop{500, {214, 204, 150}}, Stop{1500, {204, 176, 126}},
                                 Stop{3000, {178, 146, 108}}, Stop{4500, {194, 176, 156}},
                                 Stop{6000, {238, 234, 230}}};
constexpr Colour kSnow{248, 250, 252};

constexpr std::array kDepths = {Stop{-8000, {70, 116, 166}},  Stop{-6000, {88, 136, 184}},
                                Stop{-4000, {108, 156, 200}}, Stop{-2500, {128, 174, 212}},
                                Stop{-1000, {150, 194, 224}}, Stop{-200, {176, 212, 234}},
                                Stop{0, {200, 226, 240}}};

/// Far north the bare rock is grey with lichen and frost, not brown.
constexpr Colour kTundra{208, 204, 192};

/// The height above which snow lies all year: highest in the dry air at 30°, falling steeply to the Alps
/// and slowly from there to the poles. These are mountains as the 5′ grid has them, without their peaks.
float SnowLineM(float latitudeDeg) {
  const float fromEquator = std::abs(latitudeDeg);
  if (fromEquator < 30) return 5200 + 25 * fromEquator;
  return std::max({5950 - 175 * (fromEquator - 30), 2975 - 80 * (fromEquator - 47), 350.0F});
}

}  // namespace

Colour Mix(const Colour& a, const Colour& b, float part) {
  return {a.R + (b.R - a.R) * part, a.G + (b.G - a.G) * part, a.B + (b.B - a.B) * part};
}

Colour LandColour(float heightM, float latitudeDeg, float longitudeDeg) {
  const float fromEquator = std::abs(latitudeDeg);
  const Colour lowland = Mix(Along(kHumid, fromEquator), kDry, Dryness(latitudeDeg, longitudeDeg));
  const Colour rock = Mix(Along(kHeights, heightM), kTundra, 0.8F * Rise(58, 74, fromEquator));
  const Colour bare = Mix(lowland, rock, 0.85F * Rise(100, 1600, heightM));
  const float snowLine = SnowLineM(latitudeDeg);
  const float snow = Rise(snowLine - 150, snowLine + 700, heightM);
  const float sheet =
      latitudeDeg < -60 ? 1 : TotalShare(kIceSheets, latitudeDeg, longitudeDeg) * Rise(100, 700, heightM);
  return Mix(bare, kSnow, std::max(snow, sheet));
}

Colour SeaColour(float heightM) { return Along(kDepths, heightM); }

Colour LakeColour() { return {150, 196, 226}; }

float HillShade(float eastwardSlope, float northwardSlope) {
  // The light comes from the north-west, 45° up: half west, half north and 1/√2 from above.
  constexpr float sideways = 0.5F;
  constexpr float above = 0.70710678F;
  const float length = std::sqrt(eastwardSlope * eastwardSlope + northwardSlope * northwardSlope + 1);
  return (eastwardSlope * sideways - northwardSlope * sideways + above) / (length * above);
}

Colour Lit(const Colour& colour, float shade) {
  const float light = std::clamp(shade, 0.5F, 1.4F);
  if (light >= 1) return Mix(colour, {255, 255, 255}, (light - 1) * 0.8F);
  return Mix({40, 44, 66}, colour, 0.15F + 0.85F * light);
}

}  // namespace pelorin::tools
