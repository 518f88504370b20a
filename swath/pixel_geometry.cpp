#include "swath/pixel_geometry.h"

#include <algorithm>
#include <cmath>

#include "orbit/julian_date.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "swath/scanner_geometry.h"

namespace pelorin::swath {
namespace {

using orbit::Vector;

/// Beyond the first and the last line.
constexpr double kMarginS = 20;
/// Between two knots a satellite's path is bent by a metre in a second.
constexpr double kKnotStepS = 1;
constexpr double kMostKnots = 20000;
/// A satellite passes a point at most once in such a time.
constexpr double kLegS = 600;

Vector Between(const Vector& a, const Vector& b, double share) {
  return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y), a.z + share * (b.z - a.z), 0};
}

Vector Difference(const Vector& a, const Vector& b) { return {a.x - b.x, a.y - b.y, a.z - b.z, 0}; }

/// The ellipsoid's normal.
Vector UpAt(const GroundPoint& ground) {
  const double lat = orbit::Radians(ground.LatitudeDeg), lon = orbit::Radians(ground.LongitudeDeg);
  return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat), 0};
}

/// A point of the ellipsoid, whose normal is given.
Vector PlaceOf(const Vector& up) {
  constexpr double squeezed = orbit::kOneMinusFlattening * orbit::kOneMinusFlattening;
  const double toAxis = orbit::XKMPER / std::sqrt(up.x * up.x + up.y * up.y + squeezed * up.z * up.z);
  return {toAxis * up.x, toAxis * up.y, toAxis * squeezed * up.z, 0};
}

/// Between tables so far apart distances are straight to some metres.
constexpr double kClassicStepKm = 2;

}  // namespace

PixelPoint InFile(const Recording& recording, PixelPoint received) {
  return {recording.RunsLeft() ? recording.Columns - 1 - received.Column : received.Column,
          recording.Lies.Turned ? recording.Rows - 1 - received.Row : received.Row};
}

PixelGeometry::PixelGeometry(const Recording& recording)
    : recording_(recording), isClassic_(recording.SeenBy.Line.Law == ScanLaw::ZonesSphere) {
  firstS_ = -kMarginS;
  const double lengthS = recording.LengthS() + 2 * kMarginS;
  stepS_ = std::max(kKnotStepS, lengthS / kMostKnots);
  const int last = static_cast<int>(std::ceil(lengthS / stepS_));
  for (int knot = 0; knot <= last; ++knot) {
    const double jd = JulianDateAt(firstS_ + knot * stepS_);
    const GroundTrack track = TrackAt(*recording_.Elements, jd);
    if (isClassic_) {
      knots_.push_back({track.Position, {}, track.Across, {}, track.Below.Altitude});
      continue;
    }
    const ScannerAxes axes = AxesAt(track.Inertial, jd, recording_.SeenBy.YawSteering, recording_.Offsets);
    knots_.push_back({axes.Origin, axes.Down, axes.Left, axes.Forward, track.Below.Altitude});
  }
  if (isClassic_) MakeClassicTables();
}

double PixelGeometry::JulianDateAt(double seconds) const {
  return orbit::JulianDateOfMoment({recording_.FirstLine().Days + seconds / orbit::kSecondsPerDay});
}

void PixelGeometry::MakeClassicTables() {
  double highestKm = knots_.front().HeightKm;
  lowestKm_ = highestKm;
  for (const Knot& knot : knots_) {
    lowestKm_ = std::fmin(lowestKm_, knot.HeightKm);
    highestKm = std::fmax(highestKm, knot.HeightKm);
  }
  // Two at least, to have something between; elements without a position need no more.
  constexpr double mostTables = 2000;
  const double span = std::ceil((highestKm - lowestKm_) / kClassicStepKm) + 2;
  const int tables = span <= mostTables ? static_cast<int>(span) : 2;
  for (int table = 0; table < tables; ++table) {
    classic_.push_back(
        ScanDistancesFor(recording_.SeenBy.Line.AngleDeg / 2, lowestKm_ + table * kClassicStepKm));
  }
}

double PixelGeometry::ClassicDistance(double heightKm, double column) const {
  const double tables = (heightKm - lowestKm_) / kClassicStepKm;
  const auto below =
      static_cast<std::size_t>(std::clamp(tables, 0.0, static_cast<double>(classic_.size() - 2)));
  const double higher = tables - static_cast<double>(below);
  const auto left = static_cast<std::size_t>(std::clamp(column, 0.0, kScanPositions - 2.0));
  const auto at = [&](std::size_t i) {
    return classic_[below][i] + higher * (classic_[below + 1][i] - classic_[below][i]);
  };
  return at(left) + (column - static_cast<double>(left)) * (at(left + 1) - at(left));
}

double PixelGeometry::ClassicColumn(double heightKm, double distanceKm) const {
  int low = 0, high = kScanPositions - 1;
  while (high - low > 1) {
    const int middle = (low + high) / 2;
    (ClassicDistance(heightKm, middle) <= distanceKm ? low : high) = middle;
  }
  const double from = ClassicDistance(heightKm, low), to = ClassicDistance(heightKm, high);
  return low + (distanceKm - from) / (to - from);
}

PixelGeometry::Knot PixelGeometry::At(double seconds) const {
  const double steps = (seconds - firstS_) / stepS_;
  const double before = std::clamp(std::floor(steps), 0.0, static_cast<double>(knots_.size() - 2));
  const double share = steps - before;
  const Knot &a = knots_[static_cast<std::size_t>(before)], &b = knots_[static_cast<std::size_t>(before) + 1];
  return {Between(a.Origin, b.Origin, share), Between(a.Down, b.Down, share), Between(a.Left, b.Left, share),
          Between(a.Forward, b.Forward, share), a.HeightKm + share * (b.HeightKm - a.HeightKm)};
}

std::optional<GroundPoint> PixelGeometry::GroundOf(PixelPoint pixel) const {
  const auto [received, line] = InFile(recording_, pixel);
  const double cut = received - recording_.FirstColumn, column = cut - recording_.ShiftColumns;
  const LineShape& shape = recording_.SeenBy.Line;
  if (!(cut >= -0.5 && cut <= shape.Columns - 0.5 && line >= -0.5 && line <= recording_.Rows - 0.5) ||
      recording_.Rows < 1) {
    return std::nullopt;
  }
  const double seconds = recording_.SecondsAt(line);
  if (!std::isfinite(seconds)) return std::nullopt;
  const Knot knot = At(seconds);
  if (!isClassic_) {
    return PointSeen({knot.Origin, knot.Down, knot.Left, knot.Forward},
                     ColumnAngle(shape, column) + orbit::Radians(recording_.Offsets.RollDeg));
  }
  if (!std::isfinite(knot.HeightKm)) return std::nullopt;
  const GroundPoint point =
      PointAcross({knot.Origin, knot.Left, {}, {}}, ClassicDistance(knot.HeightKm, column));
  if (!std::isfinite(point.LatitudeDeg)) return std::nullopt;
  return point;
}

double PixelGeometry::Ahead(double seconds, const Vector& point, const Vector& up) const {
  const Knot knot = At(seconds);
  const Vector off = Difference(point, knot.Origin);
  return isClassic_ ? Dot(off, Cross(knot.Left, up)) : Dot(off, knot.Forward);
}

std::optional<double> PixelGeometry::SecondsAbeam(double from, double to, const Vector& point,
                                                  const Vector& up) const {
  double ahead = Ahead(from, point, up), behind = Ahead(to, point, up);
  if (!(ahead >= 0 && behind < 0)) return std::nullopt;
  // The chord's foot, its heavier end lightened (Dowell and Jarratt, 1971).
  constexpr int mostSteps = 60;
  constexpr double nearKm = 1e-5;
  for (int step = 0; step < mostSteps; ++step) {
    const double at = from + (to - from) * ahead / (ahead - behind);
    const double there = Ahead(at, point, up);
    if (std::fabs(there) < nearKm) return at;
    if (there > 0) {
      from = at;
      ahead = there;
      behind /= 2;
    } else {
      to = at;
      behind = there;
      ahead /= 2;
    }
  }
  return (from + to) / 2;
}

std::optional<double> PixelGeometry::ScannerColumn(double seconds, const Vector& point,
                                                   const Vector& up) const {
  const Knot knot = At(seconds);
  const Vector off = Difference(point, knot.Origin);
  if (!(Dot(off, up) < 0 && std::isfinite(knot.HeightKm))) return std::nullopt;
  const LineShape& shape = recording_.SeenBy.Line;
  if (isClassic_) {
    // The point lies below the one that is so far from the satellite: what is not along the normal there.
    const Vector across = Difference(knot.Left, PointAlong({}, up, Dot(knot.Left, up)));
    const double distance = Dot(off, across) / Dot(across, across);
    return ClassicColumn(knot.HeightKm, distance);
  }
  const double angle = std::atan2(Dot(off, knot.Left), Dot(off, knot.Down));
  return ColumnAtAngle(shape, angle - orbit::Radians(recording_.Offsets.RollDeg));
}

std::optional<PixelPoint> PixelGeometry::PixelOf(const GroundPoint& ground) const {
  const Vector up = UpAt(ground), point = PlaceOf(up);
  const double endS = firstS_ + stepS_ * static_cast<double>(knots_.size() - 1);
  const int legs = std::max(1, static_cast<int>(std::ceil((endS - firstS_) / kLegS)));
  const double legS = (endS - firstS_) / legs;
  for (int leg = 0; leg < legs; ++leg) {
    const auto seconds = SecondsAbeam(firstS_ + leg * legS, firstS_ + (leg + 1) * legS, point, up);
    if (!seconds) continue;
    const auto column = ScannerColumn(*seconds, point, up);
    if (!column) continue;
    const auto line = recording_.LineAtSecond(*seconds);
    if (!line) return std::nullopt;
    const double received = *column + recording_.FirstColumn + recording_.ShiftColumns;
    return InFile(recording_, {received, *line});
  }
  return std::nullopt;
}

}  // namespace pelorin::swath
