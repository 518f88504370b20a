#include "app/station_entry.h"

#include <algorithm>
#include <cmath>

namespace pelorin::app {
namespace {

constexpr double kDefaultLatitudeDeg = 55.905;
constexpr double kDefaultLongitudeDeg = -3.2;
constexpr double kDefaultHeightM = 150;
constexpr double kDefaultMinElevationDeg = 1.5;
constexpr double kHighestMinElevationDeg = 10;

/// Whoever writes decimals with a comma may do so; it cannot part thousands in a number of this size.
double NumberOr(const QString& text, double defaultValue) {
  bool isNumber = false;
  const double number = text.trimmed().replace(u',', u'.').toDouble(&isNumber);
  return isNumber && std::isfinite(number) ? number : defaultValue;
}

/// 15 digits show every typed number as it was typed, without the noise of its binary form.
QString GeneralText(double number) { return QString::number(number, 'g', 15); }

}  // namespace

Station EnterStation(const StationTexts& texts) {
  const double latitudeDeg = NumberOr(texts.Latitude, kDefaultLatitudeDeg);
  const double longitudeDeg = NumberOr(texts.Longitude, kDefaultLongitudeDeg);
  const double heightM = NumberOr(texts.Height, kDefaultHeightM);
  const double minElevationDeg =
      std::clamp(NumberOr(texts.MinElevation, kDefaultMinElevationDeg), 0.0, kHighestMinElevationDeg);
  return {orbit::ObserverFromDegrees(latitudeDeg, longitudeDeg, heightM),
          minElevationDeg,
          {GeneralText(latitudeDeg), GeneralText(longitudeDeg), GeneralText(heightM),
           GeneralText(minElevationDeg)}};
}

bool ReplaceUnsavedHeight(QString& height) {
  if (height != QStringView(kHeightNeverSaved)) return false;
  height = GeneralText(kDefaultHeightM);
  return true;
}

}  // namespace pelorin::app
