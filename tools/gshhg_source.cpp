#include "tools/gshhg_source.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <utility>

#include "tools/netcdf_file.h"

namespace pelorin::tools {
namespace {

constexpr std::int64_t kUnitsPerBin = 65535;  ///< relative positions are fractions of a bin in 16 bits

/// The part that shoreline and border files have in common: bins that hold segments that hold points.
class BinnedFile {
 public:
  explicit BinnedFile(const std::string& path)
      : File(path),
        path_(path),
        columns_(File.Integer("N_bins_in_360_longitude_range")),
        firstSegment_(File.Integers("Id_of_first_segment_in_a_bin")),
        segmentsInBin_(File.Integers("N_segments_in_a_bin")),
        firstPoint_(File.Integers("Id_of_first_point_in_a_segment")),
        dx_(File.Integers("Relative_longitude_from_SW_corner_of_bin")),
        dy_(File.Integers("Relative_latitude_from_SW_corner_of_bin")) {
    const auto bins = static_cast<int>(segmentsInBin_.size());
    if (columns_ <= 0 || bins % columns_ != 0 || firstSegment_.size() != segmentsInBin_.size() ||
        dx_.size() != dy_.size()) {
      throw Garbled();
    }
    rows_ = bins / columns_;
  }

  GridSize Size() const { return {columns_ * kUnitsPerBin, rows_ * kUnitsPerBin}; }
  std::size_t SegmentCount() const { return firstPoint_.size(); }

  /// The bin that each segment lies in.
  std::vector<int> BinOfSegment() const {
    std::vector<int> binOf(SegmentCount(), 0);
    for (std::size_t bin = 0; bin < segmentsInBin_.size(); ++bin) {
      for (int i = 0; i < segmentsInBin_[bin]; ++i) {
        const auto segment = static_cast<std::size_t>(firstSegment_[bin]) + static_cast<std::size_t>(i);
        if (segment >= binOf.size()) throw Garbled();
        binOf[segment] = static_cast<int>(bin);
      }
    }
    return binOf;
  }

  std::vector<GridPoint> PointsOf(std::size_t segment, int bin, int count) const {
    const auto first = static_cast<std::size_t>(firstPoint_[segment]);
    if (count < 0 || first + static_cast<std::size_t>(count) > dx_.size()) throw Garbled();
    // Bins are numbered from the north, their relative latitudes from their southern edge.
    const std::int64_t x = (bin % columns_) * kUnitsPerBin;
    const std::int64_t y = (rows_ - bin / columns_ - 1) * kUnitsPerBin;
    std::vector<GridPoint> points;
    for (std::size_t i = first; i < first + static_cast<std::size_t>(count); ++i) {
      points.push_back({x + Unsigned(dx_[i]), y + Unsigned(dy_[i])});
    }
    return points;
  }

  std::vector<int> PerSegment(const char* variable) const {
    std::vector<int> values = File.Integers(variable);
    if (values.size() != SegmentCount()) throw Garbled();
    return values;
  }

  std::runtime_error Garbled() const { return std::runtime_error(path_ + ": not a file of binned lines"); }

  const NetcdfFile File;

 private:
  /// The file's type has a sign, its values have none.
  static std::int64_t Unsigned(int value) { return value & 0xFFFF; }

  std::string path_;
  int columns_;
  int rows_ = 0;
  std::vector<int> firstSegment_, segmentsInBin_, firstPoint_, dx_, dy_;
};

}  // namespace

std::vector<Shoreline> ReadShorelines(const std::string& path) {
  const BinnedFile binned(path);
  const std::vector<int> embedded = binned.PerSegment("Embedded_npts_levels_exit_entry_for_a_segment");
  const std::vector<int> polygon = binned.PerSegment("Id_of_GSHHS_ID");
  const std::vector<double> area = binned.File.Reals("The_km_squared_area_of_polygons");
  const std::vector<int> binOf = binned.BinOfSegment();

  std::map<Level, std::vector<Segment>> byLevel;
  for (std::size_t i = 0; i < embedded.size(); ++i) {
    const int level = (embedded[i] >> 6) & 7;
    // Beyond the four levels is only the rock of Antarctica, below the ice that level 1 ends with.
    if (level < static_cast<int>(Level::Land) || level > static_cast<int>(Level::PondOnIsland)) continue;
    if (polygon[i] < 0 || static_cast<std::size_t>(polygon[i]) >= area.size()) throw binned.Garbled();
    byLevel[static_cast<Level>(level)].push_back(
        {polygon[i], binned.PointsOf(i, binOf[i], embedded[i] >> 9)});
  }
  std::vector<Shoreline> shorelines;
  for (const auto& [level, segments] : byLevel) {
    for (Ring& ring : ChainRings(segments, binned.Size())) {
      // Lakes that are a river's wide reach have their area with a minus sign.
      const double areaKm2 = std::abs(area[static_cast<std::size_t>(ring.Polygon)]);
      shorelines.push_back({level, areaKm2, std::move(ring)});
    }
  }
  return shorelines;
}

std::vector<Points> ReadNationalBorders(const std::string& path) {
  constexpr int nationalLevel = 1;
  const BinnedFile binned(path);
  const std::vector<int> level = binned.PerSegment("Hierarchial_level_of_a_segment");
  const std::vector<int> count = binned.PerSegment("N_points_for_a_segment");
  const std::vector<int> binOf = binned.BinOfSegment();
  std::vector<Points> borders;
  for (std::size_t i = 0; i < level.size(); ++i) {
    if (level[i] != nationalLevel) continue;
    Points line;
    for (const GridPoint& point : binned.PointsOf(i, binOf[i], count[i])) {
      line.push_back(ToMinutes(point, binned.Size()));
    }
    // A bin, and so a border's piece, lies wholly east or wholly west of 180°.
    const bool west =
        std::any_of(line.begin(), line.end(), [](const PointMin& p) { return p.Longitude > kEastCutMin; });
    if (west) {
      for (PointMin& point : line) point.Longitude -= 2 * kEastCutMin;
    }
    if (line.size() >= 2) borders.push_back(std::move(line));
  }
  return borders;
}

}  // namespace pelorin::tools
