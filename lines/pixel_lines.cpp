#include "lines/pixel_lines.h"

#include <algorithm>
#include <cmath>

#include "orbit/scalar_math.h"

namespace pelorin::lines {
namespace {

using swath::GroundPoint;
using swath::PixelPoint;

/// What is not seen at both ends is taken for unseen between, up to this length: 22 km.
constexpr double kLongestStepDeg = 0.2;
/// A step of which the ends are still far apart in the picture, or one end is not seen, is a break: 11 m.
constexpr double kShortestStepDeg = 1e-4;
/// In so few pixels no projection bends, and no jump is seen.
constexpr double kStraightPixels = 4;
/// How far the middle of a step may lie from that of its ends, along and across.
constexpr double kBendPixels = 0.2;

/// A point of the ground line, and its pixel if it has one.
struct Place {
  GroundPoint Ground;
  std::optional<PixelPoint> Pixel;
};

GroundPoint Between(const GroundPoint& a, const GroundPoint& b, double share) {
  return {a.LatitudeDeg + share * (b.LatitudeDeg - a.LatitudeDeg),
          a.LongitudeDeg + share * (b.LongitudeDeg - a.LongitudeDeg)};
}

/// Degrees of arc, for points that are near each other or on one parallel or meridian.
double LengthDeg(const GroundPoint& a, const GroundPoint& b) {
  const double middle = (a.LatitudeDeg + b.LatitudeDeg) / 2;
  return std::hypot(b.LatitudeDeg - a.LatitudeDeg,
                    (b.LongitudeDeg - a.LongitudeDeg) * std::cos(orbit::Radians(middle)));
}

double Distance(const PixelPoint& a, const PixelPoint& b) {
  return std::hypot(b.Column - a.Column, b.Row - a.Row);
}

class LineDrawing {
 public:
  LineDrawing(const PictureView& view, std::vector<PixelLine>& lines) : view_(view), lines_(lines) {}

  void Draw(std::span<const GroundPoint> line) {
    Place last = At(line.front());
    for (const GroundPoint& point : line.subspan(1)) {
      const GroundPoint from = last.Ground;
      const int steps = static_cast<int>(std::ceil(LengthDeg(from, point) / kLongestStepDeg));
      for (int step = 1; step < steps; ++step) {
        const Place next = At(Between(from, point, static_cast<double>(step) / steps));
        Step(last, next);
        last = next;
      }
      const Place next = At(point);
      Step(last, next);
      last = next;
    }
  }

 private:
  Place At(const GroundPoint& ground) const { return {ground, view_.PixelOf(ground)}; }

  void Step(const Place& from, const Place& to) {
    if (!from.Pixel && !to.Pixel) return;
    const bool both = from.Pixel && to.Pixel;
    if (both && BothBeyond(*from.Pixel, *to.Pixel)) return;
    if (both && Distance(*from.Pixel, *to.Pixel) <= kStraightPixels) return Join(*from.Pixel, *to.Pixel);
    if (LengthDeg(from.Ground, to.Ground) < kShortestStepDeg) return;
    const Place middle = At(Between(from.Ground, to.Ground, 0.5));
    if (both && middle.Pixel) {
      const PixelPoint straight{(from.Pixel->Column + to.Pixel->Column) / 2,
                                (from.Pixel->Row + to.Pixel->Row) / 2};
      if (Distance(straight, *middle.Pixel) <= kBendPixels) return Join(*from.Pixel, *to.Pixel);
    }
    Step(from, middle);
    Step(middle, to);
  }

  /// On one side of the picture, far enough for any bend: nothing between them is seen.
  bool BothBeyond(const PixelPoint& a, const PixelPoint& b) const {
    constexpr double far = 4;
    return std::max(a.Column, b.Column) < view_.Left - far ||
           std::min(a.Column, b.Column) > view_.Right + far || std::max(a.Row, b.Row) < view_.Top - far ||
           std::min(a.Row, b.Row) > view_.Bottom + far;
  }

  /// Adds the part of a straight step that lies in the picture (Liang and Barsky, 1984).
  void Join(const PixelPoint& from, const PixelPoint& to) {
    double enter = 0, leave = 1;
    const double dx = to.Column - from.Column, dy = to.Row - from.Row;
    const bool isSeen = Cut(-dx, from.Column - view_.Left, enter, leave) &&
                        Cut(dx, view_.Right - from.Column, enter, leave) &&
                        Cut(-dy, from.Row - view_.Top, enter, leave) &&
                        Cut(dy, view_.Bottom - from.Row, enter, leave);
    if (!isSeen || (dx == 0 && dy == 0)) return;
    const auto at = [&](double share) {
      // To the last bit on the edge and within it, whatever the rounding.
      return PixelPoint{std::clamp(from.Column + share * dx, view_.Left, view_.Right),
                        std::clamp(from.Row + share * dy, view_.Top, view_.Bottom)};
    };
    if (enter > 0 || !goesOn_ || Distance(end_, from) > 0) lines_.push_back({at(enter)});
    lines_.back().push_back(at(leave));
    goesOn_ = leave == 1;
    end_ = to;
  }

  /// Shortens a step to one side of an edge; false when nothing is left.
  static bool Cut(double outward, double room, double& enter, double& leave) {
    if (outward == 0) return room >= 0;
    const double share = room / outward;
    if (outward < 0) {
      enter = std::max(enter, share);
    } else {
      leave = std::min(leave, share);
    }
    return enter < leave;
  }

  const PictureView& view_;
  std::vector<PixelLine>& lines_;
  bool goesOn_ = false;  ///< the last of the lines ends at `end_`, inside
  PixelPoint end_{};
};

}  // namespace

PictureView ViewOf(const swath::Recording& recording, const swath::PixelGeometry& geometry) {
  PictureView view;
  view.PixelOf = [&geometry](const GroundPoint& ground) { return geometry.PixelOf(ground); };
  view.GroundOf = [&geometry](PixelPoint pixel) { return geometry.GroundOf(pixel); };
  const int columns = recording.SeenBy.Line.Columns;
  const int first =
      recording.RunsLeft() ? recording.Columns - recording.FirstColumn - columns : recording.FirstColumn;
  view.Left = std::max(first, 0) - 0.5;
  view.Right = std::min(first + columns, recording.Columns) - 0.5;
  view.Top = -0.5;
  view.Bottom = recording.Rows - 0.5;
  return view;
}

void AddPixelLines(const PictureView& view, std::span<const GroundPoint> line,
                   std::vector<PixelLine>& lines) {
  if (line.size() >= 2) LineDrawing(view, lines).Draw(line);
}

}  // namespace pelorin::lines
