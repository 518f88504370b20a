#include "orbit/satellite.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "orbit/element_fields.h"
#include "orbit/julian_date.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

/// Columns of a field, fewer where the line ends before.
std::string Columns(std::string_view line, std::size_t first, std::size_t length) {
  return first - 1 < line.size() ? UpperCased(line.substr(first - 1, length)) : std::string();
}

/// Period of the recovered Brouwer mean motion, minutes.
double BrouwerPeriod(double meanMotion, double eccentricity, double inclination) {
  const double a1 = Power(XKE / meanMotion, kTwoThirds);
  const double cosI = std::cos(inclination);
  const double c = k15CK2 * (3 * cosI * cosI - 1) / Power(1 - eccentricity * eccentricity, 1.5);
  const double del1 = c / (a1 * a1);
  const double a0 = a1 * (1 - del1 * (1.0 / 3 + del1 * (1 + 134.0 / 81 * del1)));
  const double del0 = c / (a0 * a0);
  return kTwoPi / (meanMotion / (1 + del0));
}

/// Digits count as themselves, a minus sign as 1; the last digit of the sum is the line's 69th character.
bool HasWrongChecksum(std::string_view line) {
  constexpr std::size_t place = 68;
  if (line.size() <= place || line[place] < '0' || line[place] > '9') return false;
  int sum = 0;
  for (const char c : line.substr(0, place)) {
    if (c >= '0' && c <= '9') sum += c - '0';
    if (c == '-') ++sum;
  }
  return sum % 10 != line[place] - '0';
}

}  // namespace

void TSatellite::ParseElements(std::string_view line1, std::string_view line2) {
  PublishedElements elements;
  elements.CatalogueNumber = Columns(line1, 3, 5);
  elements.EpochRaw = RealField(line1, 19, 14);
  elements.MeanMotionDot = RealField(line1, 34, 10);
  elements.MeanMotionDotDot = RealField(line1, 45, 6) * 1e-5 * Power(10, IntegerField(line1, 51, 2));
  elements.BStar = RealField(line1, 54, 6) * 1e-5 * Power(10, IntegerField(line1, 60, 2));
  elements.ElementSetNumber = std::abs(IntegerField(line1, 66, 3));

  elements.Inclination = RealField(line2, 9, 8);
  elements.RightAscensionOfNode = RealField(line2, 18, 8);
  elements.Eccentricity = RealField(line2, 27, 7) * 1e-7;
  elements.ArgumentOfPerigee = RealField(line2, 35, 8);
  elements.MeanAnomaly = RealField(line2, 44, 8);
  elements.MeanMotion = RealField(line2, 53, 11);
  TakeElements(elements);
  IsDoubtful = HasWrongChecksum(line1) || HasWrongChecksum(line2);
}

void TSatellite::TakeElements(const PublishedElements& elements) {
  Propagator = std::monostate();
  IsDoubtful = false;

  CatalogueNumber = elements.CatalogueNumber;
  ElementSetNumber = ThreeDigit(elements.ElementSetNumber);
  EpochRaw = elements.EpochRaw;
  Epoch = JulianDateOfEpoch(EpochRaw);
  MeanMotion = elements.MeanMotion * kTwoPi / kMinutesPerDay;
  MeanMotionDot = elements.MeanMotionDot * kTwoPi / (kMinutesPerDay * kMinutesPerDay);
  MeanMotionDotDot = elements.MeanMotionDotDot * kTwoPi / Cube(kMinutesPerDay);
  BStar = elements.BStar;
  Eccentricity = elements.Eccentricity;
  Inclination = Radians(elements.Inclination);
  RightAscensionOfNode = Radians(elements.RightAscensionOfNode);
  ArgumentOfPerigee = Radians(elements.ArgumentOfPerigee);
  MeanAnomaly = Radians(elements.MeanAnomaly);

  IsDeepSpace = BrouwerPeriod(MeanMotion, Eccentricity, Inclination) >= kDeepSpacePeriodMinutes;
  Valid = true;
}

void TSatellite::SetIdentity(std::string_view nameLine, std::string_view fileName) {
  constexpr std::array<std::string_view, 6> noaaScanners{"NOAA 12", "NOAA-12", "NOAA 14",
                                                         "NOAA-14", "NOAA 15", "NOAA-15"};
  Name = UpperCased(Trimmed(nameLine));
  IsNoaaScanner = std::find(noaaScanners.begin(), noaaScanners.end(), Name) != noaaScanners.end();
  ScanHalfAngle = IsNoaaScanner ? 55.37 : Name == "METEOR 3-5" ? 36.0 : 45.0;
  LinesPerMinute = Name.starts_with("OKEAN") || Name.starts_with("SICH") ? 240 : 120;
  SourceFile = fileName.substr(fileName.find_last_of("/\\") + 1);
}

std::string TSatellite::CatalogueKey() const {
  if (CatalogueNumber.size() < 5) return {};
  // Alpha-5: the ten thousands from 10 on as a letter; I and O look too much like digits.
  constexpr std::string_view letters = "ABCDEFGHJKLMNPQRSTUVWXYZ";
  const std::size_t letter = letters.find(CatalogueNumber.front());
  const std::string digits = CatalogueNumber.substr(1);
  const bool alpha5 = CatalogueNumber.size() == 5 && letter != std::string_view::npos &&
                      digits.find_first_not_of("0123456789") == std::string::npos;
  return alpha5 ? std::to_string(10 + letter) + digits : CatalogueNumber;
}

double TSatellite::PeriodDays() const { return kTwoPi / (MeanMotion * kMinutesPerDay); }

}  // namespace pelorin::orbit
