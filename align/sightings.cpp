#include "align/sightings.h"

#include <algorithm>
#include <cmath>

#include "orbit/scalar_math.h"

namespace pelorin::align {
namespace {

using swath::PixelPoint;
using swath::Recording;

/// Beyond the picture's first and last line, for what is pulled into it.
constexpr double kMarginS = 20;
constexpr double kMarginColumns = 24;
/// Yaw's doing is measured by turning so far to either side.
constexpr double kYawStepDeg = 0.5;
/// Its mesh. It is as smooth as the Earth: along the flight it hardly changes in a minute.
constexpr int kYawColumns = 65;
constexpr double kYawEveryS = 60;

/// The same pass received without a loss, a margin earlier and later, by a recorder without faults.
Recording PassOf(const Recording& base, double moreYawDeg) {
  Recording pass = base;
  pass.Offsets.YawDeg += moreYawDeg;
  pass.OffsetS -= kMarginS;
  pass.LineTimesS = nullptr;
  pass.DriftPpm = pass.ShiftColumns = 0;
  pass.Rows = static_cast<int>(std::ceil((base.LengthS() + 2 * kMarginS) * base.SeenBy.RowsPerSecond)) + 1;
  pass.Columns = base.SeenBy.Line.Columns;
  pass.FirstColumn = 0;
  pass.Lies = {};
  return pass;
}

}  // namespace

Sightings::Sightings(const Recording& base)
    : base_(base),
      pass_(PassOf(base, 0)),
      isSphere_(base.SeenBy.Line.Law == swath::ScanLaw::ZonesSphere),
      geometry_(pass_) {
  const double lengthS = (pass_.Rows - 1) / pass_.SeenBy.RowsPerSecond;
  yawRows_ = std::max(2, static_cast<int>(std::ceil(lengthS / kYawEveryS)) + 1);
  yaw_.assign(static_cast<std::size_t>(kYawColumns * yawRows_), PixelPoint{0, 0});
  // The table on a sphere knows no attitude.
  if (isSphere_) return;
  FindYaw(swath::PixelGeometry(PassOf(base, kYawStepDeg)), swath::PixelGeometry(PassOf(base, -kYawStepDeg)));
}

void Sightings::FindYaw(const swath::PixelGeometry& more, const swath::PixelGeometry& less) {
  for (int row = 0; row < yawRows_; ++row) {
    for (int column = 0; column < kYawColumns; ++column) {
      const PixelPoint node{1.0 * column / (kYawColumns - 1) * (pass_.Columns - 1),
                            1.0 * row / (yawRows_ - 1) * (pass_.Rows - 1)};
      const auto ground = geometry_.GroundOf(node);
      const auto a = ground ? more.PixelOf(*ground) : std::nullopt;
      const auto b = ground ? less.PixelOf(*ground) : std::nullopt;
      if (!a || !b) continue;
      const PixelPoint yaw{(a->Column - b->Column) / (2 * kYawStepDeg),
                           (a->Row - b->Row) / (2 * kYawStepDeg)};
      yaw_[static_cast<std::size_t>(row * kYawColumns + column)] = yaw;
      linesPerYawDeg_ = std::max(linesPerYawDeg_, std::fabs(yaw.Row));
    }
  }
}

PixelPoint Sightings::YawAt(PixelPoint place) const {
  const double across =
      std::clamp(place.Column / std::max(1, pass_.Columns - 1), 0.0, 1.0) * (kYawColumns - 1);
  const double along = std::clamp(place.Row / std::max(1, pass_.Rows - 1), 0.0, 1.0) * (yawRows_ - 1);
  const int left = std::min(static_cast<int>(across), kYawColumns - 2);
  const int above = std::min(static_cast<int>(along), yawRows_ - 2);
  const double x = across - left, y = along - above;
  const auto node = [&](int column, int row) {
    return yaw_[static_cast<std::size_t>((above + row) * kYawColumns + left + column)];
  };
  const PixelPoint a = node(0, 0), b = node(1, 0), c = node(0, 1), d = node(1, 1);
  const auto between = [&](double PixelPoint::*part) {
    return (a.*part * (1 - x) + b.*part * x) * (1 - y) + (c.*part * (1 - x) + d.*part * x) * y;
  };
  return {between(&PixelPoint::Column), between(&PixelPoint::Row)};
}

std::optional<Sighting> Sightings::Of(const swath::GroundPoint& ground) const {
  const auto place = geometry_.PixelOf(ground);
  return place ? std::optional(At(*place)) : std::nullopt;
}

Sighting Sightings::At(PixelPoint place) const {
  const double rate = pass_.SeenBy.RowsPerSecond;
  const PixelPoint yaw = YawAt(place);
  Sighting sighting{place.Row / rate + pass_.OffsetS, place.Column, yaw.Row / rate, 0};
  if (isSphere_) return sighting;
  const swath::LineShape& line = pass_.SeenBy.Line;
  sighting.Angle = swath::ColumnAngle(line, place.Column) + orbit::Radians(base_.Offsets.RollDeg);
  sighting.AnglePerYawDeg = yaw.Column * (swath::ColumnAngle(line, place.Column + 0.5) -
                                          swath::ColumnAngle(line, place.Column - 0.5));
  return sighting;
}

double Sightings::SecondsIn(const Sighting& sighting, const Recording& corrected) const {
  return sighting.Seconds + sighting.SecondsPerYawDeg * (corrected.Offsets.YawDeg - base_.Offsets.YawDeg);
}

double Sightings::ColumnIn(const Sighting& sighting, const Recording& corrected) const {
  const double first = corrected.FirstColumn + corrected.ShiftColumns;
  if (isSphere_) return first + sighting.Angle;
  const double yaw = corrected.Offsets.YawDeg - base_.Offsets.YawDeg;
  const double angle =
      sighting.Angle + sighting.AnglePerYawDeg * yaw - orbit::Radians(corrected.Offsets.RollDeg);
  return first + swath::ColumnAtAngle(corrected.SeenBy.Line, angle);
}

std::optional<PixelPoint> Sightings::PixelIn(const Sighting& sighting, const Recording& corrected) const {
  const auto line = corrected.LineAtSecond(SecondsIn(sighting, corrected) - corrected.OffsetS);
  if (!line) return std::nullopt;
  return swath::InFile(corrected, {ColumnIn(sighting, corrected), *line});
}

lines::PictureView Sightings::WholePass() const {
  lines::PictureView view = lines::ViewOf(pass_, geometry_);
  view.Left -= kMarginColumns;
  view.Right += kMarginColumns;
  return view;
}

}  // namespace pelorin::align
