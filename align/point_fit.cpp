#include "align/point_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "swath/clock_corrections.h"

namespace pelorin::align {
namespace {

using swath::Recording;

constexpr int kMost = 3;
/// Time, shift across, and the third, in units that move a picture by about a pixel.
using Step = std::array<double, kMost>;

/// What may be moved, and by what.
struct Freedom {
  const Recording& Origin;  ///< the recording that was asked for; limits are counted from it
  align::Third Third;
  Step Units;  ///< a line in seconds, a column in degrees of roll or in columns, a line at the edge in the
               ///< third
  bool IsSphere;
};

Freedom FreedomOf(const Recording& recording, const Sightings& near, Third third) {
  const swath::LineShape& line = recording.SeenBy.Line;
  const double rate = recording.SeenBy.RowsPerSecond;
  const bool isSphere = line.Law == swath::ScanLaw::ZonesSphere;
  const double halfLines = std::max(recording.LengthS() * rate / 2, 1.0);
  const double thirdUnit =
      third == Third::Drift ? 1e6 / halfLines : 1 / std::max(near.LinesPerYawDeg(), 1e-9);
  return {recording, third, {1 / rate, isSphere ? 1 : line.AngleDeg / line.Columns, thirdUnit}, isSphere};
}

double Within(double value, double middle, double most) {
  return std::clamp(value, middle - most, middle + most);
}

Recording Moved(const Freedom& freedom, const Recording& from, const Step& step) {
  const Recording& origin = freedom.Origin;
  Recording moved = from;
  moved.OffsetS = Within(from.OffsetS + step[0] * freedom.Units[0], 0, swath::kOffsetLimitS);
  const double across = step[1] * freedom.Units[1], third = step[2] * freedom.Units[2];
  if (freedom.IsSphere) {
    moved.ShiftColumns = Within(from.ShiftColumns + across, origin.ShiftColumns, kMostShiftColumns);
  } else {
    moved.Offsets.RollDeg = Within(from.Offsets.RollDeg + across, 0, swath::kMostTurnedDeg);
  }
  if (freedom.Third == Third::Drift) {
    moved.DriftPpm = Within(from.DriftPpm + third, origin.DriftPpm, kMostDriftPpm);
  } else {
    moved.Offsets.YawDeg = Within(Within(from.Offsets.YawDeg + third, origin.Offsets.YawDeg, kMostYawDeg), 0,
                                  swath::kMostTurnedDeg);
  }
  return moved;
}

/// How far a picture has a point beside its pixel.
struct Miss {
  double Columns, Lines;
};

/// A point as it takes part.
struct Seen {
  Sighting Ground;
  double Column, Line;  ///< of its pixel, as received
  double Weight;
  std::size_t Index;
};

/// In time instead of rows: between the two there may be a gap.
Miss MissOf(const Seen& point, const Sightings& near, const Recording& recording) {
  const double shownS = recording.SecondsAt(point.Line) + recording.OffsetS;
  return {near.ColumnIn(point.Ground, recording) - point.Column,
          (near.SecondsIn(point.Ground, recording) - shownS) * recording.SeenBy.RowsPerSecond};
}

std::vector<Seen> SeenOf(const Recording& recording, const Sightings& near,
                         std::span<const TiePoint> points) {
  std::vector<Seen> seen;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto ground = near.Of(points[i].Ground);
    const auto [column, line] = swath::InFile(recording, points[i].Pixel);
    if (!ground || !std::isfinite(column) || !std::isfinite(recording.SecondsAt(line))) continue;
    seen.push_back({*ground, column, line, points[i].Weight, i});
  }
  return seen;
}

/// The normal equations of one step.
struct Normal {
  std::array<Step, kMost> Matrix{};
  Step Right{};
};

Normal NormalOf(const Freedom& freedom, const Sightings& near, const std::vector<Seen>& points,
                const Recording& at) {
  Normal normal;
  for (const Seen& point : points) {
    const Miss miss = MissOf(point, near, at);
    std::array<Miss, kMost> slope{};
    for (std::size_t i = 0; i < kMost; ++i) {
      constexpr double half = 0.25;
      Step step{};
      step[i] = half;
      const Miss more = MissOf(point, near, Moved(freedom, at, step));
      step[i] = -half;
      const Miss less = MissOf(point, near, Moved(freedom, at, step));
      slope[i] = {(more.Columns - less.Columns) / (2 * half), (more.Lines - less.Lines) / (2 * half)};
    }
    for (std::size_t i = 0; i < kMost; ++i) {
      for (std::size_t j = 0; j < kMost; ++j) {
        normal.Matrix[i][j] +=
            point.Weight * (slope[i].Columns * slope[j].Columns + slope[i].Lines * slope[j].Lines);
      }
      normal.Right[i] -= point.Weight * (slope[i].Columns * miss.Columns + slope[i].Lines * miss.Lines);
    }
  }
  return normal;
}

/// Eliminates the first `count` unknowns, in their order; their pivots are the information on each with those
/// before it unknown. Unknowns without any stay where they are.
void Eliminate(Normal& normal, std::size_t count) {
  constexpr double none = 1e-9;
  for (std::size_t k = 0; k < count; ++k) {
    for (std::size_t i = k + 1; i < kMost; ++i) {
      if (normal.Matrix[k][k] < none) continue;
      const double share = normal.Matrix[i][k] / normal.Matrix[k][k];
      for (std::size_t j = k; j < kMost; ++j) normal.Matrix[i][j] -= share * normal.Matrix[k][j];
      normal.Right[i] -= share * normal.Right[k];
    }
  }
}

Step Solved(Normal normal, std::size_t unknowns) {
  constexpr double none = 1e-9;
  Eliminate(normal, unknowns);
  Step step{};
  for (std::size_t k = unknowns; k-- > 0;) {
    double right = normal.Right[k];
    for (std::size_t j = k + 1; j < unknowns; ++j) right -= normal.Matrix[k][j] * step[j];
    step[k] = normal.Matrix[k][k] < none ? 0 : right / normal.Matrix[k][k];
  }
  return step;
}

Untold WhyNoThird(const Freedom& freedom, const Sightings& near, const std::vector<Seen>& points,
                  const Recording& at) {
  if (freedom.IsSphere && freedom.Third == Third::Yaw) return Untold::DoesNotTurn;
  if (points.size() < 2) return Untold::TooFew;
  constexpr double mostLines = 4;
  Normal normal = NormalOf(freedom, near, points, at);
  Eliminate(normal, 2);
  return normal.Matrix[2][2] * mostLines * mostLines < 1 ? Untold::TooClose : Untold::Nothing;
}

/// Least squares by Gauss and Newton's steps.
Recording Fitted(const Freedom& freedom, const Sightings& near, const std::vector<Seen>& points,
                 Recording from, std::size_t unknowns) {
  constexpr int mostSteps = 20;
  constexpr double closePixels = 1e-5;
  for (int i = 0; i < mostSteps && !points.empty(); ++i) {
    const Step step = Solved(NormalOf(freedom, near, points, from), unknowns);
    from = Moved(freedom, from, step);
    if (std::fabs(step[0]) + std::fabs(step[1]) + std::fabs(step[2]) < closePixels) break;
  }
  return from;
}

double Distance(const Miss& miss) { return std::hypot(miss.Columns, miss.Lines); }

double SquaresOf(const Sightings& near, const std::vector<Seen>& points, const Recording& recording) {
  double squares = 0;
  for (const Seen& point : points) {
    const double distance = Distance(MissOf(point, near, recording));
    squares += point.Weight * distance * distance;
  }
  return squares;
}

/// The point that contradicts the others; nothing when none does, or when it cannot be said which.
std::optional<std::size_t> Contradicting(const Freedom& freedom, const Sightings& near,
                                         const std::vector<Seen>& points, const Recording& from) {
  constexpr double clearPixels = 3, clearScatter = 4;
  std::optional<std::size_t> worst;
  double best = HUGE_VAL, off = 0, scatter = 0;
  const Untold ofAll = WhyNoThird(freedom, near, points, from);
  const std::size_t unknowns = ofAll == Untold::Nothing ? kMost : kMost - 1;
  for (std::size_t i = 0; i < points.size(); ++i) {
    std::vector<Seen> others = points;
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
    // What one point alone tells no other can contradict.
    const bool isAlone =
        ofAll == Untold::Nothing && WhyNoThird(freedom, near, others, from) != Untold::Nothing;
    if (others.size() < unknowns || isAlone) continue;
    const Recording without = Fitted(freedom, near, others, from, unknowns);
    const double squares = SquaresOf(near, others, without);
    if (squares >= best) continue;
    best = squares;
    worst = i;
    off = Distance(MissOf(points[i], near, without));
    scatter = std::sqrt(squares / static_cast<double>(2 * others.size() - unknowns));
  }
  return off > std::max(clearPixels, clearScatter * scatter) ? worst : std::nullopt;
}

PointFit ReportOf(const Sightings& near, std::span<const TiePoint> points, const std::vector<bool>& leftOut,
                  const Recording& fitted, Untold whyNoThird) {
  PointFit fit{fitted, std::vector<double>(points.size(), std::nan("")), leftOut, whyNoThird};
  fit.IsLeftOut.resize(points.size(), false);
  std::vector<bool> isSeen(points.size(), false);
  for (const Seen& point : SeenOf(fitted, near, points)) {
    fit.MisfitPixels[point.Index] = Distance(MissOf(point, near, fitted));
    isSeen[point.Index] = true;
  }
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!isSeen[i]) fit.IsLeftOut[i] = true;
  }
  return fit;
}

void LeaveOut(std::vector<Seen>& points, const std::vector<bool>& leftOut) {
  std::erase_if(points,
                [&](const Seen& point) { return point.Index < leftOut.size() && leftOut[point.Index]; });
}

}  // namespace

PointFit FollowPoints(const Recording& recording, const Sightings& near, std::span<const TiePoint> points,
                      Third third, const std::vector<bool>& leftOut) {
  const Freedom freedom = FreedomOf(recording, near, third);
  std::vector<Seen> seen = SeenOf(recording, near, points);
  LeaveOut(seen, leftOut);
  const Untold why = WhyNoThird(freedom, near, seen, recording);
  const Recording fitted = Fitted(freedom, near, seen, recording, why == Untold::Nothing ? kMost : kMost - 1);
  return ReportOf(near, points, leftOut, fitted, why);
}

PointFit FitPoints(const Recording& recording, std::span<const TiePoint> points, Third third) {
  std::vector<bool> leftOut(points.size(), false);
  {
    const Sightings near(recording);
    const Freedom freedom = FreedomOf(recording, near, third);
    std::vector<Seen> seen = SeenOf(recording, near, points);
    while (const auto worst = Contradicting(freedom, near, seen, recording)) {
      leftOut[seen[*worst].Index] = true;
      seen.erase(seen.begin() + static_cast<std::ptrdiff_t>(*worst));
    }
  }
  // Sightings are exact for their own yaw alone.
  constexpr int mostRounds = 5;
  constexpr double closeDeg = 1e-4;
  Recording near = recording;
  PointFit fit;
  for (int round = 0; round < mostRounds; ++round) {
    fit = FollowPoints(recording, Sightings(near), points, third, leftOut);
    const double moved = std::fabs(fit.Fitted.Offsets.YawDeg - near.Offsets.YawDeg);
    near = fit.Fitted;
    if (moved < closeDeg) break;
  }
  return fit;
}

}  // namespace pelorin::align
