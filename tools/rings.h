#pragma once

#include <cstdint>
#include <vector>

#include "overlay/countries.h"

/// Coastlines put together from pieces and cut to the map. Pure geometry: no files, no pictures.
///
/// The source divides the Earth into bins and every coast into segments that end at bin edges. Here the
/// segments become rings again; rings become shapes that can be drawn on a map from 180° W to 180° E.
namespace pelorin::tools {

/// A point on the source's integer grid: X eastward from Greenwich, any number of turns; Y northward
/// from the south pole. Points where segments meet are equal to the last bit.
struct GridPoint {
  std::int64_t X = 0;
  std::int64_t Y = 0;
  bool operator==(const GridPoint&) const = default;
};

/// A piece of a coast, cut at bin edges.
struct Segment {
  int Polygon = 0;  ///< number of the polygon it belongs to
  std::vector<GridPoint> Points;
};

/// Minutes of arc, longitude east positive and not confined to one turn, latitude north positive.
struct PointMin {
  double Longitude = 0;
  double Latitude = 0;
  bool operator==(const PointMin&) const = default;
};
using Points = std::vector<PointMin>;

/// Size of the source's grid: units round the equator and from pole to pole.
struct GridSize {
  std::int64_t Width = 0;
  std::int64_t Height = 0;
};

PointMin ToMinutes(const GridPoint& point, const GridSize& size);

/// A closed coast, or one that goes round the pole.
struct Ring {
  int Polygon = 0;
  Points Outline;          ///< continuous in longitude, first point not repeated
  bool RoundPole = false;  ///< the end is one turn away from the start: the coast of Antarctica
};

/// The segments of any number of polygons chained end to start, each polygon on its own; a polygon may
/// consist of several rings. Rings of fewer than four points are left out. Throws std::runtime_error when
/// a chain does not come back to its start.
std::vector<Ring> ChainRings(const std::vector<Segment>& segments, const GridSize& size);

/// Where shapes end beyond the map's sides. The cut edge of a shape must not be seen as a coast: 180° E is
/// column 7920 of the overlay master, one past its last; but a longitude above that would be turned back
/// to the map's west side, so shapes end there. West of the map any longitude is outside, and shapes run on
/// for half a degree.
inline constexpr double kEastCutMin = 10800;
inline constexpr double kWestCutMin = -10830;

/// The part of a ring that lies on the map: one shape for each side of 180° that the ring touches, closed
/// along the cuts. A ring round the pole is closed along 90° S, which is below the master's last row.
std::vector<Points> CutToMap(const Ring& ring);

/// Douglas and Peucker: leaves out points nearer than `toleranceMin` (minutes on the map) to the line
/// through the points kept. The first and the last point stay, and a ring's farthest from the first.
Points Simplify(const Points& line, double toleranceMin, bool closed);

/// Rounded to whole minutes without repeated points; of a closed shape also not the first one at the end.
std::vector<overlay::PolyPoint> Round(const Points& line, bool closed);

/// A ring as shapes for the file: simplified by `toleranceMin`, and by more until every shape fits into
/// a record, cut, rounded. What rounding leaves without an area is left out.
std::vector<std::vector<overlay::PolyPoint>> FileShapes(const Ring& ring, double toleranceMin);

}  // namespace pelorin::tools
