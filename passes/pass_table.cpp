#include "passes/pass_table.h"

#include "orbit/date_time.h"

namespace pelorin::passes {
namespace {

PassCell Moment(orbit::TDateTime moment) {
  return {QString::fromStdString(FormatDateTime("yyyy-mm-ddThh:nn:ssZ", moment))};
}

PassCell Angle(double degrees) { return {QString::number(degrees, 'f', 1), true}; }

}  // namespace

QStringList PassColumns() {
  return {QStringLiteral("satellite"),
          QStringLiteral("catalogue_number"),
          QStringLiteral("rise_utc"),
          QStringLiteral("culmination_utc"),
          QStringLiteral("set_utc"),
          QStringLiteral("rise_azimuth_deg"),
          QStringLiteral("culmination_azimuth_deg"),
          QStringLiteral("set_azimuth_deg"),
          QStringLiteral("max_elevation_deg"),
          QStringLiteral("direction"),
          QStringLiteral("duration_s")};
}

std::vector<PassCell> PassRow(const PassDetails& pass) {
  return {{pass.Satellite},
          {pass.CatalogueNumber},
          Moment(pass.Rise),
          Moment(pass.Culmination),
          Moment(pass.Set),
          Angle(pass.RiseAzimuthDeg),
          Angle(pass.CulminationAzimuthDeg),
          Angle(pass.SetAzimuthDeg),
          Angle(pass.MaxElevationDeg),
          {pass.SouthBound ? QStringLiteral("S") : QStringLiteral("N")},
          {QString::number(pass.DurationSeconds), true}};
}

}  // namespace pelorin::passes
