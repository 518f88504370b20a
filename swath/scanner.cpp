#include "swath/scanner.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "orbit/scalar_math.h"
#include "swath/apt_line.h"

namespace pelorin::swath {
namespace {

/// Columns of a half line from the middle outward, and how many of the instrument's 2,048 samples make one.
struct Zone {
  int Columns;
  double Samples;
};
constexpr std::array<Zone, 5> kZones{{{78, 4}, {110, 3}, {83, 2}, {62, 1.5}, {121, 1}}};
constexpr double kMiddleSamples = 4;
/// Steps between the instrument's samples: a line's angle reaches from the centre of the first to that of the
/// last.
constexpr double kSampleSteps = 2047;

double Middle(const LineShape& line) { return (line.Columns - 1) / 2.0; }

/// Walks outward from the middle column, calling `step(columns, samples)` for stretches of columns that lie
/// evenly: the step from one column's centre to the next is the mean of their widths, so that it is half of
/// each across a zone's border. Ends when `step` answers false; the last stretch has no end.
template <class Step>
void WalkZones(const Step& step) {
  double before = kMiddleSamples;
  for (const Zone& zone : kZones) {
    if (!step(1.0, (before + zone.Samples) / 2)) return;
    if (!step(&zone == &kZones.back() ? HUGE_VAL : zone.Columns - 1.0, zone.Samples)) return;
    before = zone.Samples;
  }
}

/// Samples from the middle to a column so many columns out.
double SamplesOut(double columns) {
  double samples = 0;
  WalkZones([&](double length, double step) {
    const double taken = std::fmin(columns, length);
    samples += taken * step;
    columns -= taken;
    return columns > 0;
  });
  return samples;
}

double ColumnsOut(double samples) {
  double columns = 0;
  WalkZones([&](double length, double step) {
    const double taken = std::fmin(samples / step, length);
    columns += taken;
    samples -= taken * step;
    return samples > 0;
  });
  return columns;
}

struct LawName {
  ScanLaw Law;
  const char* Name;
};
constexpr std::array<LawName, 3> kLawNames{
    {{ScanLaw::EvenAngles, "even"}, {ScanLaw::Zones, "zones"}, {ScanLaw::ZonesSphere, "zones-sphere"}}};

}  // namespace

const char* NameOf(ScanLaw law) { return std::ranges::find(kLawNames, law, &LawName::Law)->Name; }

std::optional<ScanLaw> ScanLawNamed(std::string_view name) {
  const auto* const found = std::ranges::find(kLawNames, name, &LawName::Name);
  return found == kLawNames.end() ? std::nullopt : std::optional(found->Law);
}

double ColumnAngle(const LineShape& line, double column) {
  const double out = column - Middle(line);
  const double spanned = orbit::Radians(line.AngleDeg);
  if (line.Law == ScanLaw::EvenAngles) return out / line.Columns * spanned;
  return std::copysign(SamplesOut(std::fabs(out)) / kSampleSteps * spanned, out);
}

double ColumnAtAngle(const LineShape& line, double angle) {
  const double share = angle / orbit::Radians(line.AngleDeg);
  if (line.Law == ScanLaw::EvenAngles) return Middle(line) + share * line.Columns;
  return Middle(line) + std::copysign(ColumnsOut(std::fabs(share) * kSampleSteps), share);
}

std::optional<int> FirstColumnOf(const LineShape& line, int columns) {
  if (line.Law == ScanLaw::EvenAngles) {
    return columns == 0 || columns == line.Columns ? std::optional(0) : std::nullopt;
  }
  const auto isWithin = [columns](int least, int most) { return columns >= least && columns <= most; };
  if (columns == 0 || isWithin(kImageEnd, kUsualLineWidth + 10)) return kImageBegin;
  // A crop that is wider than the image alone begins in the space band.
  if (isWithin(kZoneColumns, kImageEnd - 1)) return columns - kZoneColumns;
  const int whole = 2 * kUsualLineWidth;
  return isWithin(whole - 20, whole + 20) ? std::optional(kImageBegin) : std::nullopt;
}

}  // namespace pelorin::swath
