#include "swath/ground_line.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "orbit/propagation.h"
#include "orbit/scalar_math.h"
#include "swath/geodetic_latitude.h"
#include "swath/line_of_sight.h"

namespace pelorin::swath {
namespace {

using orbit::Vector;

/// A change of height (km) that moves no pixel by more than a twentieth of its width, at the heights of
/// weather satellites: within it one table serves.
constexpr double kHeightTolerance = 0.05;

constexpr double kMinutesPerRadian = kMinutesOfTurn / orbit::kTwoPi;

/// Two-argument arctangent within 1e-7 radians (0.0003 minutes of arc), without branches, so that a compiler
/// works on several points at a time: a polynomial for the first octant and its reflections.
PELORIN_INTO_LOOP double QuickAtan2(double y, double x) {
  const double ax = std::fabs(x), ay = std::fabs(y);
  const double high = ax > ay ? ax : ay, low = ax > ay ? ay : ax;
  const double a = low / (high + 1e-300);
  const double s = a * a;
  double angle = -0.004668773306886;
  angle = angle * s + 0.02416618951946;
  angle = angle * s - 0.05936710078513;
  angle = angle * s + 0.09906096895759;
  angle = angle * s - 0.1401658504196;
  angle = angle * s + 0.1996923539477;
  angle = angle * s - 0.3333195972432;
  angle = (angle * s + 0.9999998977539) * a;
  angle = ay > ax ? orbit::kPi / 2 - angle : angle;
  angle = x < 0 ? orbit::kPi - angle : angle;
  return y < 0 ? -angle : angle;
}

// Latitudes as minutes from the pole and longitudes as minutes from 360° W are positive: adding a half and
// cutting rounds them to the nearest.
PELORIN_INTO_LOOP double SouthOf(double up, double out) {
  return (orbit::kPi / 2 - QuickAtan2(up, out)) * kMinutesPerRadian + 0.5;
}
PELORIN_INTO_LOOP double EastOf(double y, double x) {
  return QuickAtan2(y, x) * kMinutesPerRadian + (kMinutesOfTurn + 0.5);
}

/// What a loop over a line's columns reads and writes; all of one length.
struct LineBuffers {
  const double *Cos, *Sin;
  double *South, *East;
  std::size_t Columns;
};

// Machines of the last ten years work on four points at a time; which code runs is decided when the program
// starts.
#if defined(__x86_64__) && defined(__linux__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define PELORIN_VECTOR_UNITS [[gnu::target_clones("default", "avx2")]]
#else
#define PELORIN_VECTOR_UNITS
#endif

/// PointSeen for every column. The frame is stretched along the axis until the ellipsoid is a sphere; there
/// all rays of a line lie in one plane, so that their products come of those of its two axes.
PELORIN_VECTOR_UNITS
void SeeLine(const Vector& origin, const Vector& down, const Vector& left, const LineBuffers& line) {
  constexpr double stretch = 1 / orbit::kOneMinusFlattening;
  const Vector from{origin.x, origin.y, origin.z * stretch, 0};
  const Vector d{down.x, down.y, down.z * stretch, 0}, l{left.x, left.y, left.z * stretch, 0};
  const double dd = Dot(d, d), dl = 2 * Dot(d, l), ll = Dot(l, l), fd = Dot(from, d), fl = Dot(from, l);
  const double c = Dot(from, from) - orbit::XKMPER * orbit::XKMPER;
  const double *cosines = line.Cos, *sines = line.Sin;
  double *south = line.South, *east = line.East;
  for (std::size_t i = 0; i < line.Columns; ++i) {
    const double co = cosines[i], si = sines[i];
    const double a = co * co * dd + co * si * dl + si * si * ll, b = co * fd + si * fl;
    const double discriminant = b * b - a * c;
    const double far = (-b - std::sqrt(discriminant > 0 ? discriminant : 0.0)) / a;
    const double x = from.x + far * (co * d.x + si * l.x);
    const double y = from.y + far * (co * d.y + si * l.y);
    const double z = from.z + far * (co * d.z + si * l.z);
    south[i] = SouthOf(z * stretch, std::sqrt(x * x + y * y));
    east[i] = EastOf(y, x);
  }
}

/// PointAcross for every column.
PELORIN_VECTOR_UNITS
void SeeClassicLine(const Vector& p, const Vector& n, const double* distances, const LineBuffers& line) {
  double *south = line.South, *east = line.East;
  for (std::size_t i = 0; i < line.Columns; ++i) {
    const double distance = distances[i];
    const double x = p.x + distance * n.x, y = p.y + distance * n.y, z = p.z + distance * n.z;
    const double r = std::sqrt(x * x + y * y);
    const LatitudeParts parts = GeodeticLatitude(r, z);
    south[i] = SouthOf(parts.Up, parts.Out);
    east[i] = EastOf(y, x);
  }
}

/// Distances of a line that stands so many columns later; beyond the ends they go on as within the last two.
ScanDistances Shifted(const ScanDistances& distances, double columns) {
  ScanDistances shifted;
  for (std::size_t i = 0; i < distances.size(); ++i) {
    const double from = static_cast<double>(i) - columns;
    const auto left = static_cast<std::size_t>(std::clamp(from, 0.0, kScanPositions - 2.0));
    shifted[i] =
        distances[left] + (from - static_cast<double>(left)) * (distances[left + 1] - distances[left]);
  }
  return shifted;
}

PELORIN_VECTOR_UNITS
void RoundLine(const double* south, const double* east, std::size_t columns, std::int32_t* southMin,
               std::int32_t* eastMin) {
  for (std::size_t i = 0; i < columns; ++i) {
    // Written so that what is no number becomes 0: whatever comes in, the minutes point into maps.
    const auto s = static_cast<std::int32_t>(south[i] > 0 && south[i] < 10801 ? south[i] : 0.0);
    const auto e = static_cast<std::int32_t>(east[i] > 0 && east[i] < 43201 ? east[i] : 0.0);
    southMin[i] = s > 10800 ? 10800 : s;
    eastMin[i] = e >= kMinutesOfTurn ? e - kMinutesOfTurn : e;
  }
}

}  // namespace

GroundLineFinder::GroundLineFinder(const Recording& recording)
    : recording_(recording), distancesFor_(std::nan("")) {
  const LineShape& shape = recording_.SeenBy.Line;
  const auto columns = static_cast<std::size_t>(shape.Columns);
  const double roll = orbit::Radians(recording_.Offsets.RollDeg);
  for (int column = 0; column < shape.Columns; ++column) {
    const double angle = ColumnAngle(shape, column - recording_.ShiftColumns) + roll;
    cos_.push_back(std::cos(angle));
    sin_.push_back(std::sin(angle));
  }
  south_.resize(columns);
  east_.resize(columns);
}

void GroundLineFinder::FollowHeight(double heightKm) {
  if (std::fabs(heightKm - distancesFor_) <= kHeightTolerance) return;
  distances_ = ScanDistancesFor(recording_.SeenBy.Line.AngleDeg / 2, heightKm);
  if (recording_.ShiftColumns != 0) distances_ = Shifted(distances_, recording_.ShiftColumns);
  distancesFor_ = heightKm;
}

GroundTrack GroundLineFinder::Find(double julianDate, GroundLine& line) {
  const Instrument& scanner = recording_.SeenBy;
  const GroundTrack track = TrackAt(*recording_.Elements, julianDate);
  const LineBuffers buffers{cos_.data(), sin_.data(), south_.data(), east_.data(), cos_.size()};
  if (scanner.Line.Law == ScanLaw::ZonesSphere) {
    FollowHeight(track.Below.Altitude);
    SeeClassicLine(track.Position, track.Across, distances_.data(), buffers);
  } else {
    const ScannerAxes axes = AxesAt(track.Inertial, julianDate, scanner.YawSteering, recording_.Offsets);
    SeeLine(axes.Origin, axes.Down, axes.Left, buffers);
  }
  line.SouthMin.resize(cos_.size());
  line.EastMin.resize(cos_.size());
  RoundLine(south_.data(), east_.data(), cos_.size(), line.SouthMin.data(), line.EastMin.data());
  return track;
}

}  // namespace pelorin::swath
