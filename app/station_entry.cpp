#include "app/station_entry.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "orbit/number_text.h"
#include "orbit/pass_search.h"

namespace pelorin::app {
namespace {

constexpr double kDefaultLatitudeDeg = 55.905;
constexpr double kDefaultLongitudeDeg = -3.2;
constexpr double kPoleDeg = 90;
constexpr double kDefaultHeightM = 150;
constexpr double kDefaultMinElevationDeg = 1.5;

/// Whoever writes decimals with a comma may do so; it cannot part thousands in a number of this size. Nothing
/// when the text is no number.
std::optional<double> Number(const QString& text) {
  return orbit::DecimalNumber(text.trimmed().replace(u',', u'.').toStdString());
}

/// 15 digits show every typed number as it was typed, without the noise of its binary form.
QString GeneralText(double number) { return QString::number(number, 'g', 15); }

}  // namespace

Station EnterStation(const StationTexts& texts) {
  const double latitudeDeg =
      std::clamp(Number(texts.Latitude).value_or(kDefaultLatitudeDeg), -kPoleDeg, kPoleDeg);
  const double longitudeDeg = Number(texts.Longitude).value_or(kDefaultLongitudeDeg);
  const double heightM = Number(texts.Height).value_or(kDefaultHeightM);
  const double minElevationDeg = std::clamp(Number(texts.MinElevation).value_or(kDefaultMinElevationDeg), 0.0,
                                            orbit::kHighestMinElevationDeg);
  return {orbit::ObserverFromDegrees(latitudeDeg, longitudeDeg, heightM),
          minElevationDeg,
          {GeneralText(latitudeDeg), GeneralText(longitudeDeg), GeneralText(heightM),
           GeneralText(minElevationDeg)}};
}

bool IsSameNumber(const QString& a, const QString& b) {
  const std::optional<double> first = Number(a), second = Number(b);
  return first && second && std::abs(*first - *second) <= 1e-12 * std::max(1.0, std::abs(*first));
}

bool ReplaceUnsavedHeight(QString& height) {
  if (height != QStringView(kHeightNeverSaved)) return false;
  height = GeneralText(kDefaultHeightM);
  return true;
}

}  // namespace pelorin::app
