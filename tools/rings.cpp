#include "tools/rings.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace pelorin::tools {
namespace {

constexpr double kTurnMin = 21600;
constexpr double kSouthPoleMin = -5400;

using Key = std::pair<std::int64_t, std::int64_t>;

/// The same place whatever the number of turns.
Key PlaceOf(const GridPoint& point, const GridSize& size) {
  return {((point.X % size.Width) + size.Width) % size.Width, point.Y};
}

/// Half a turn at most: which way a coast goes on at the grid's own seam.
std::int64_t ShortWay(std::int64_t difference, std::int64_t width) {
  difference %= width;
  if (difference > width / 2) return difference - width;
  if (difference < -width / 2) return difference + width;
  return difference;
}

/// Appends a segment so that longitudes run on without a jump.
void Append(std::vector<GridPoint>& chain, const Segment& segment, const GridSize& size) {
  for (const GridPoint& point : segment.Points) {
    GridPoint next = point;
    if (!chain.empty()) next.X = chain.back().X + ShortWay(point.X - chain.back().X, size.Width);
    if (chain.empty() || next != chain.back()) chain.push_back(next);
  }
}

/// The chains of one polygon.
std::vector<std::vector<GridPoint>> ChainPolygon(const std::vector<const Segment*>& segments,
                                                 const GridSize& size) {
  std::multimap<Key, const Segment*> byStart;
  for (const Segment* segment : segments) byStart.emplace(PlaceOf(segment->Points.front(), size), segment);
  std::vector<std::vector<GridPoint>> chains;
  while (!byStart.empty()) {
    const Key start = byStart.begin()->first;
    auto next = byStart.begin();
    std::vector<GridPoint> chain;
    do {
      Append(chain, *next->second, size);
      byStart.erase(next);
      next = byStart.find(PlaceOf(chain.back(), size));
    } while (PlaceOf(chain.back(), size) != start && next != byStart.end());
    if (PlaceOf(chain.back(), size) != start) {
      throw std::runtime_error("polygon " + std::to_string(segments.front()->Polygon) + " does not close");
    }
    chains.push_back(std::move(chain));
  }
  return chains;
}

/// Keeps the side of the meridian that `sign` points to: +1 what lies east of it, −1 what lies west.
Points ClipAtMeridian(const Points& shape, double meridian, double sign) {
  Points kept;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    const PointMin& from = shape[i];
    const PointMin& to = shape[(i + 1) % shape.size()];
    const double fromInside = sign * (from.Longitude - meridian);
    const double toInside = sign * (to.Longitude - meridian);
    if (fromInside >= 0) kept.push_back(from);
    if ((fromInside > 0 && toInside < 0) || (fromInside < 0 && toInside > 0)) {
      const double part = fromInside / (fromInside - toInside);
      kept.push_back({meridian, from.Latitude + part * (to.Latitude - from.Latitude)});
    }
  }
  return kept;
}

/// The master leaves out points less than two pixels (5.5′) from the last one drawn. When that is the point
/// where a coast reaches the eastern cut, the cut's edge would be drawn from inside the picture, as a false
/// coast. So an edge on the cut begins with points close enough that the picture is left at the next one.
Points EaseIntoEastCut(const Points& shape) {
  constexpr double stepMin = 3;
  constexpr double lengthMin = 12;
  Points eased;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    const PointMin& from = shape[i];
    const PointMin& to = shape[(i + 1) % shape.size()];
    eased.push_back(from);
    if (from.Longitude != kEastCutMin || to.Longitude != kEastCutMin) continue;
    const double edge = to.Latitude - from.Latitude;
    for (double along = stepMin; along <= lengthMin && along < std::abs(edge); along += stepMin) {
      eased.push_back({kEastCutMin, from.Latitude + std::copysign(along, edge)});
    }
  }
  return eased;
}

/// Three turns of a coast round the pole, closed along 90° S: whatever the coast's own seam, the turn
/// in the middle is without one.
Points ClosedAlongPole(const Points& coast) {
  const double turn = coast.back().Longitude > coast.front().Longitude ? kTurnMin : -kTurnMin;
  Points closed;
  for (const double shift : {-turn, 0.0, turn}) {
    for (const PointMin& point : coast) closed.push_back({point.Longitude + shift, point.Latitude});
  }
  closed.push_back({closed.back().Longitude, kSouthPoleMin});
  closed.push_back({closed.front().Longitude, kSouthPoleMin});
  return closed;
}

double DistanceToLine(const PointMin& point, const PointMin& from, const PointMin& to) {
  const double dx = to.Longitude - from.Longitude;
  const double dy = to.Latitude - from.Latitude;
  const double px = point.Longitude - from.Longitude;
  const double py = point.Latitude - from.Latitude;
  const double length = std::hypot(dx, dy);
  if (length == 0) return std::hypot(px, py);
  const double along = std::clamp((px * dx + py * dy) / (length * length), 0.0, 1.0);
  return std::hypot(px - along * dx, py - along * dy);
}

/// Marks what stays between two points that stay.
void MarkKept(const Points& line, std::size_t first, std::size_t last, double tolerance,
              std::vector<bool>& keep) {
  std::vector<std::pair<std::size_t, std::size_t>> open{{first, last}};
  while (!open.empty()) {
    const auto [from, to] = open.back();
    open.pop_back();
    std::size_t farthest = from;
    double distance = tolerance;
    for (std::size_t i = from + 1; i < to; ++i) {
      const double d = DistanceToLine(line[i], line[from], line[to]);
      if (d > distance) {
        distance = d;
        farthest = i;
      }
    }
    if (farthest == from) continue;
    keep[farthest] = true;
    open.emplace_back(from, farthest);
    open.emplace_back(farthest, to);
  }
}

}  // namespace

PointMin ToMinutes(const GridPoint& point, const GridSize& size) {
  return {static_cast<double>(point.X) * kTurnMin / static_cast<double>(size.Width),
          static_cast<double>(point.Y) * (kTurnMin / 2) / static_cast<double>(size.Height) + kSouthPoleMin};
}

std::vector<Ring> ChainRings(const std::vector<Segment>& segments, const GridSize& size) {
  std::map<int, std::vector<const Segment*>> byPolygon;
  for (const Segment& segment : segments) {
    if (!segment.Points.empty()) byPolygon[segment.Polygon].push_back(&segment);
  }
  std::vector<Ring> rings;
  for (const auto& [polygon, pieces] : byPolygon) {
    for (const std::vector<GridPoint>& chain : ChainPolygon(pieces, size)) {
      Ring ring{polygon, {}, chain.front().X != chain.back().X};
      for (const GridPoint& point : chain) ring.Outline.push_back(ToMinutes(point, size));
      ring.Outline.pop_back();
      if (ring.Outline.size() >= 4) rings.push_back(std::move(ring));
    }
  }
  return rings;
}

std::vector<Points> CutToMap(const Ring& ring) {
  const Points outline = ring.RoundPole ? ClosedAlongPole(ring.Outline) : ring.Outline;
  const auto [west, east] =
      std::minmax_element(outline.begin(), outline.end(),
                          [](const PointMin& a, const PointMin& b) { return a.Longitude < b.Longitude; });
  std::vector<Points> shapes;
  double firstShift = kTurnMin * std::ceil((-kTurnMin / 2 - east->Longitude) / kTurnMin);
  double lastShift = kTurnMin * std::floor((kEastCutMin - west->Longitude) / kTurnMin);
  if (ring.RoundPole) firstShift = lastShift = 0;
  for (double shift = firstShift; shift <= lastShift; shift += kTurnMin) {
    Points shape = outline;
    for (PointMin& point : shape) point.Longitude += shift;
    shape = ClipAtMeridian(ClipAtMeridian(shape, kEastCutMin, -1), kWestCutMin, +1);
    const bool onMap = std::any_of(shape.begin(), shape.end(), [](const PointMin& p) {
      return p.Longitude > -kTurnMin / 2 && p.Longitude < kEastCutMin;
    });
    if (onMap) shapes.push_back(EaseIntoEastCut(shape));
  }
  return shapes;
}

Points Simplify(const Points& line, double toleranceMin, bool closed) {
  if (line.size() < 3) return line;
  Points work = line;
  if (closed) work.push_back(line.front());
  std::vector<bool> keep(work.size(), false);
  keep.front() = keep.back() = true;
  if (closed) {
    const auto farthest =
        std::max_element(work.begin(), work.end(), [&](const PointMin& a, const PointMin& b) {
          return DistanceToLine(a, line.front(), line.front()) <
                 DistanceToLine(b, line.front(), line.front());
        });
    const auto middle = static_cast<std::size_t>(farthest - work.begin());
    keep[middle] = true;
    MarkKept(work, 0, middle, toleranceMin, keep);
    MarkKept(work, middle, work.size() - 1, toleranceMin, keep);
    keep.back() = false;
  } else {
    MarkKept(work, 0, work.size() - 1, toleranceMin, keep);
  }
  Points kept;
  for (std::size_t i = 0; i < work.size(); ++i) {
    if (keep[i]) kept.push_back(work[i]);
  }
  return kept;
}

std::vector<overlay::PolyPoint> Round(const Points& line, bool closed) {
  std::vector<overlay::PolyPoint> rounded;
  for (const PointMin& point : line) {
    const overlay::PolyPoint next{static_cast<std::int16_t>(std::lround(point.Longitude)),
                                  static_cast<std::int16_t>(std::lround(point.Latitude))};
    if (rounded.empty() || next != rounded.back()) rounded.push_back(next);
  }
  while (closed && rounded.size() > 1 && rounded.front() == rounded.back()) rounded.pop_back();
  return rounded;
}

std::vector<std::vector<overlay::PolyPoint>> FileShapes(const Ring& ring, double toleranceMin) {
  constexpr double step = 1.1;
  for (double tolerance = toleranceMin;; tolerance *= step) {
    // A coast round the pole is not closed in longitude; its two ends stay as they are.
    const Ring simple{ring.Polygon, Simplify(ring.Outline, tolerance, !ring.RoundPole), ring.RoundPole};
    std::vector<std::vector<overlay::PolyPoint>> shapes;
    for (const Points& shape : CutToMap(simple)) {
      std::vector<overlay::PolyPoint> rounded = Round(shape, true);
      if (rounded.size() >= 3) shapes.push_back(std::move(rounded));
    }
    const bool fits = std::all_of(shapes.begin(), shapes.end(), [&](const auto& s) {
      return s.size() <= static_cast<std::size_t>(overlay::kMostPolyPoints);
    });
    if (fits) return shapes;
  }
}

}  // namespace pelorin::tools
