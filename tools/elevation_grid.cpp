#include "tools/elevation_grid.h"

#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace pelorin::tools {

ElevationGrid::ElevationGrid(const QByteArray& bytes) {
  constexpr std::size_t count = std::size_t{kRows} * kColumns;
  if (static_cast<std::size_t>(bytes.size()) != count * sizeof(std::int16_t)) {
    throw std::runtime_error("the topography has the wrong size");
  }
  heights_.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    heights_[i] = qFromLittleEndian<std::int16_t>(bytes.constData() + i * sizeof(std::int16_t));
  }
}

float ElevationGrid::HeightM(double latitudeDeg, double longitudeDeg) const {
  constexpr double nodesPerDeg = 12;
  constexpr double turn = kColumns - 1;
  const double row = std::clamp((90 - latitudeDeg) * nodesPerDeg, 0.0, kRows - 1.0);
  double column = std::fmod(longitudeDeg * nodesPerDeg, turn);
  if (column < 0) column += turn;
  const auto north = std::min(static_cast<std::size_t>(row), std::size_t{kRows - 2});
  const auto west = std::min(static_cast<std::size_t>(column), std::size_t{kColumns - 2});
  const auto down = static_cast<float>(row - static_cast<double>(north));
  const auto right = static_cast<float>(column - static_cast<double>(west));
  const float* upper = heights_.data() + north * kColumns + west;
  const float* lower = upper + kColumns;
  return (upper[0] * (1 - right) + upper[1] * right) * (1 - down) +
         (lower[0] * (1 - right) + lower[1] * right) * down;
}

}  // namespace pelorin::tools
