#include "align/fine_land.h"

#include <algorithm>
#include <cmath>

#include "lines/map_lines.h"
#include "orbit/julian_date.h"

namespace pelorin::align {
namespace {

/// Each row is looked at along so many lines.
constexpr int kLinesPerRow = 4;
/// What a coarse map says holds for so many rows.
constexpr int kRowsAlike = 3;

/// Where a shore crosses one of the lines.
struct Crossing {
  int Line;
  float X;
};

void AddCrossings(const std::vector<lines::PixelLine>& shores, int margin, int lineCount,
                  std::vector<Crossing>& crossings) {
  const auto lineAt = [margin](double row) { return (row + 0.5 + margin) * kLinesPerRow - 0.5; };
  for (const lines::PixelLine& shore : shores) {
    for (std::size_t i = 1; i < shore.size(); ++i) {
      const double from = lineAt(shore[i - 1].Row), to = lineAt(shore[i].Row);
      if (!std::isfinite(from + to + shore[i - 1].Column + shore[i].Column)) continue;
      // Of two pieces that meet on a line one crosses it.
      const int first = static_cast<int>(std::ceil(std::min(from, to)));
      const int end = static_cast<int>(std::ceil(std::max(from, to)));
      for (int line = std::max(first, 0); line < std::min(end, lineCount); ++line) {
        const double share = (line - from) / (to - from);
        crossings.push_back({line, static_cast<float>(shore[i - 1].Column +
                                                      share * (shore[i].Column - shore[i - 1].Column))});
      }
    }
  }
  std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) {
    return a.Line != b.Line ? a.Line < b.Line : a.X < b.X;
  });
}

/// What a coarse map has along a row of the raster, margins included.
class CoarseRows {
 public:
  CoarseRows(const Frame& frame, int margin, const swath::SurfaceOfLine& surfaceOf)
      : frame_(frame),
        finder_(frame.Recording),
        surfaceOf_(surfaceOf),
        surfaces_(static_cast<std::size_t>(frame.Recording.SeenBy.Line.Columns)) {
    const int columns = frame.Columns + 2 * margin, last = frame.Recording.SeenBy.Line.Columns - 1;
    for (int x = 0; x < columns; ++x) {
      scannerColumns_.push_back(static_cast<std::size_t>(
          std::clamp(static_cast<int>(std::lround(frame.ScannerColumn(x - margin))), 0, last)));
    }
    land_.resize(scannerColumns_.size() + 1);
    water_ = land_;
  }

  /// Moves on; a row without a moment has what the row before had.
  void Take(int row) {
    const double seconds = frame_.Recording.SecondsOfLine(row);
    if (!std::isfinite(seconds)) return;
    finder_.Find(
        orbit::JulianDateOfMoment({frame_.Recording.FirstLine().Days + seconds / orbit::kSecondsPerDay}),
        line_);
    surfaceOf_(line_, surfaces_);
    for (std::size_t x = 0; x < scannerColumns_.size(); ++x) {
      const swath::Surface surface = surfaces_[scannerColumns_[x]];
      land_[x + 1] = land_[x] + (surface == swath::Surface::Land ? 1 : 0);
      water_[x + 1] = water_[x] + (surface == swath::Surface::Water ? 1 : 0);
    }
  }
  /// Samples of land among those before the x-th, and of water.
  int LandBefore(int x) const { return land_[static_cast<std::size_t>(x)]; }
  int WaterBefore(int x) const { return water_[static_cast<std::size_t>(x)]; }

 private:
  const Frame& frame_;
  swath::GroundLineFinder finder_;
  const swath::SurfaceOfLine& surfaceOf_;
  swath::GroundLine line_;
  std::vector<swath::Surface> surfaces_;
  std::vector<std::size_t> scannerColumns_;
  std::vector<int> land_, water_;
};

/// Land along one line of a row: from edge to edge, each shore between two of them.
class LandLine {
 public:
  LandLine(const CoarseRows& coarse, int columns, int margin)
      : coarse_(coarse), columns_(columns), margin_(margin) {}

  /// Adds it to a row of land, as `part` of it.
  void Add(const Crossing* begin, const Crossing* end, float part, float* row) const {
    int agreesAsWater = 0;
    bool isLand = false;
    float from = 0;
    const auto go = [&](auto&& add) {
      isLand = false;
      from = 0;
      for (const Crossing* crossing = begin; crossing != end; ++crossing) {
        const float to =
            std::clamp(crossing->X + 0.5F + static_cast<float>(margin_), from, static_cast<float>(columns_));
        add(from, to);
        from = to;
        isLand = !isLand;
      }
      add(from, static_cast<float>(columns_));
    };
    go([&](float a, float b) {
      const int first = static_cast<int>(std::lround(a)), last = static_cast<int>(std::lround(b));
      agreesAsWater += isLand ? coarse_.LandBefore(last) - coarse_.LandBefore(first)
                              : coarse_.WaterBefore(last) - coarse_.WaterBefore(first);
    });
    const int known = coarse_.LandBefore(columns_) + coarse_.WaterBefore(columns_);
    constexpr double makesSense = 0.75;
    if (std::max(agreesAsWater, known - agreesAsWater) < makesSense * known) {
      for (int x = 0; x < columns_; ++x) {
        if (coarse_.LandBefore(x + 1) > coarse_.LandBefore(x)) row[x] += part;
      }
      return;
    }
    const bool beginsAsLand = 2 * agreesAsWater < known;
    go([&](float a, float b) {
      if (isLand != beginsAsLand) Fill(a, b, part, row);
    });
  }

 private:
  void Fill(float from, float to, float part, float* row) const {
    const int first = static_cast<int>(from), last = static_cast<int>(to);
    if (first == last) {
      if (first < columns_) row[first] += part * (to - from);
      return;
    }
    row[first] += part * (static_cast<float>(first + 1) - from);
    for (int x = first + 1; x < last; ++x) row[x] += part;
    if (last < columns_) row[last] += part * (to - static_cast<float>(last));
  }

  const CoarseRows& coarse_;
  int columns_, margin_;
};

}  // namespace

Frame Frame::OfPixels(const swath::Recording& recording) {
  Frame frame;
  frame.Recording = recording;
  frame.Recording.Lies = {};
  frame.Columns = recording.Columns;
  frame.Rows = recording.Rows;
  frame.PixelColumn = [](double x) { return x; };
  frame.X = frame.PixelColumn;
  return frame;
}

Frame Frame::OfSamples(const SampleMesh& mesh) {
  Frame frame;
  frame.Recording = mesh.Evenly(0, mesh.Rows());
  frame.Columns = mesh.Columns();
  frame.Rows = mesh.Rows();
  frame.PixelColumn = [mesh](double x) { return mesh.ScannerColumn(x); };
  frame.X = [mesh](double column) { return mesh.X(column); };
  return frame;
}

Plane LandIn(const Frame& frame, int margin, const lines::FineLines& shores,
             const swath::SurfaceOfLine& surfaceOf) {
  const swath::PixelGeometry geometry(frame.Recording);
  lines::PictureView view;
  view.PixelOf = [&](const swath::GroundPoint& ground) {
    auto pixel = geometry.PixelOf(ground);
    if (pixel) pixel->Column = frame.X(pixel->Column);
    return pixel;
  };
  view.GroundOf = [&](swath::PixelPoint at) {
    return geometry.GroundOf({frame.PixelColumn(at.Column), at.Row});
  };
  view.Left = view.Top = -0.5 - margin;
  view.Right = frame.Columns - 0.5 + margin;
  view.Bottom = frame.Rows - 0.5 + margin;
  lines::MapLinesRequest request;
  request.Borders = false;
  const lines::MapLines map = lines::MapLinesOf(view, &shores, request);

  Plane land(frame.Columns + 2 * margin, frame.Rows + 2 * margin);
  std::vector<Crossing> crossings;
  AddCrossings(map.Coasts, margin, land.Rows * kLinesPerRow, crossings);
  AddCrossings(map.Lakes, margin, land.Rows * kLinesPerRow, crossings);
  CoarseRows coarse(frame, margin, surfaceOf);
  const LandLine along(coarse, land.Columns, margin);
  const Crossing *next = crossings.data(), *end = next + crossings.size();
  for (int row = 0; row < land.Rows; ++row) {
    if (row % kRowsAlike == 0) coarse.Take(row - margin);
    for (int i = 0; i < kLinesPerRow; ++i) {
      const Crossing* begin = next;
      while (next != end && next->Line == row * kLinesPerRow + i) ++next;
      along.Add(begin, next, 1.0F / kLinesPerRow, land.Row(row));
    }
  }
  return land;
}

}  // namespace pelorin::align
