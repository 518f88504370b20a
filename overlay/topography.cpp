#include "overlay/topography.h"

#include <algorithm>

#include "swath/ground_line.h"

namespace pelorin::overlay {
namespace {

constexpr int kRows = 2160;
constexpr int kLittleEndianColumns = 4321;
constexpr int kBigEndianColumns = 4320;

}  // namespace

std::optional<Topography> Topography::Open(const QString& path) {
  auto file = files::MappedFile::Open(path);
  if (!file) return std::nullopt;
  return Topography(std::move(*file));
}

Topography::Topography(files::MappedFile file) : file_(std::move(file)) {
  layout_ = file_.Size() == std::int64_t{2} * kRows * kLittleEndianColumns ? Layout::LittleEndianFromGreenwich
            : file_.Size() == std::int64_t{2} * kRows * kBigEndianColumns  ? Layout::BigEndianFromDateLine
                                                                           : Layout::Unknown;
}

int Topography::ElevationAt(int southMin, int eastMin) const {
  // The south pole itself lies below the last row's cells and belongs to them.
  const int row = std::min(southMin / 5, kRows - 1);
  if (layout_ == Layout::LittleEndianFromGreenwich) {
    const std::uint8_t* at = file_.Data() + 2 * (std::ptrdiff_t{row} * kLittleEndianColumns + eastMin / 5);
    return static_cast<std::int16_t>(at[0] | at[1] << 8);
  }
  if (layout_ == Layout::BigEndianFromDateLine) {
    const int column = swath::MinutesFromDateLine(eastMin) / 5;
    const std::uint8_t* at = file_.Data() + 2 * (std::ptrdiff_t{row} * kBigEndianColumns + column);
    return static_cast<std::int16_t>(at[0] << 8 | at[1]);
  }
  return 0;
}

}  // namespace pelorin::overlay
