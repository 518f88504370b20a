#include "align/alignment_medians.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace pelorin::align {
namespace {

constexpr std::size_t kClocks = 5, kFewestAttitudes = 3;
constexpr double kClockDays = 60;
/// Half a line of the slowest scanner.
constexpr double kNotableS = 0.25;
constexpr double kNotableDeg = 0.05;
constexpr std::size_t kMostInTip = 8;

int MonthOf(orbit::TDateTime moment) { return orbit::TakeApart(moment).Month; }

bool IsSameSeason(orbit::TDateTime one, orbit::TDateTime other) {
  const int apart = std::abs(MonthOf(one) - MonthOf(other));
  return apart <= 1 || apart == 11;
}

/// Those that fit, the nearest in time to the picture first.
template <class Fits>
std::vector<LoggedAlignment> Nearest(std::span<const LoggedAlignment> log, const LoggedAlignment& picture,
                                     Fits fits) {
  std::vector<LoggedAlignment> nearest;
  for (const LoggedAlignment& one : log) {
    if (one.How != FoundBy::CoastsRoughly && fits(one) && !IsSamePicture(one, picture))
      nearest.push_back(one);
  }
  std::ranges::stable_sort(nearest, {}, [&](const LoggedAlignment& one) {
    return std::fabs(one.Start.Days - picture.Start.Days);
  });
  return nearest;
}

double MedianBy(const std::vector<LoggedAlignment>& some, double (*number)(const LoggedAlignment&)) {
  std::vector<double> numbers;
  for (const LoggedAlignment& one : some) numbers.push_back(number(one));
  return MedianOf(std::move(numbers));
}

template <class Words>
QString TipOf(const QString& heading, const std::vector<LoggedAlignment>& of, Words words) {
  QStringList lines{heading};
  for (const LoggedAlignment& one : of) {
    if (lines.size() > static_cast<qsizetype>(kMostInTip)) break;
    lines.append(QStringLiteral("%1  %2  %3")
                     .arg(QString::fromStdString(orbit::FormatDateTime("yyyy mmm dd hh:nn", one.Start)),
                          one.Satellite, words(one)));
  }
  const qsizetype more = static_cast<qsizetype>(of.size()) + 1 - lines.size();
  if (more > 0) lines.append(QStringLiteral("and %1 more").arg(more));
  return lines.join(u'\n');
}

}  // namespace

double MedianOf(std::vector<double> numbers) {
  if (numbers.empty()) return 0;
  std::ranges::sort(numbers);
  const std::size_t middle = numbers.size() / 2;
  return numbers.size() % 2 != 0 ? numbers[middle] : (numbers[middle - 1] + numbers[middle]) / 2;
}

std::optional<ClockMedian> MedianClock(std::span<const LoggedAlignment> log, const LoggedAlignment& picture) {
  ClockMedian median;
  median.Of = Nearest(log, picture, [&](const LoggedAlignment& one) {
    return one.StartIsFrom == swath::StartFrom::NameSecond &&
           std::fabs(one.Start.Days - picture.Start.Days) <= kClockDays;
  });
  if (median.Of.empty()) return std::nullopt;
  median.Of.resize(std::min(median.Of.size(), kClocks));
  median.OffsetS = MedianBy(median.Of, [](const LoggedAlignment& one) { return one.ClockS; });
  median.AreEarlier =
      std::ranges::all_of(median.Of, [&](const LoggedAlignment& one) { return one.Start < picture.Start; });
  return median;
}

std::optional<AttitudeMedian> MedianAttitude(std::span<const LoggedAlignment> log,
                                             const LoggedAlignment& picture) {
  AttitudeMedian median;
  median.Of = Nearest(log, picture, [&](const LoggedAlignment& one) {
    return IsSameSatellite(one, picture) && one.ScannerColumns == picture.ScannerColumns &&
           IsSameSeason(one.Start, picture.Start);
  });
  if (median.Of.size() < kFewestAttitudes) return std::nullopt;
  median.RollDeg = MedianBy(median.Of, [](const LoggedAlignment& one) { return one.Offsets.RollDeg; });
  median.YawDeg = MedianBy(median.Of, [](const LoggedAlignment& one) { return one.Offsets.YawDeg; });
  return median;
}

std::optional<ClockMedian> OfferClock(std::span<const LoggedAlignment> log, const LoggedAlignment& picture) {
  if (picture.StartIsFrom != swath::StartFrom::NameSecond) return std::nullopt;
  const auto median = MedianClock(log, picture);
  const bool isNews = median && std::fabs(median->OffsetS - picture.ClockS) >= kNotableS;
  return isNews ? median : std::nullopt;
}

std::optional<AttitudeMedian> OfferAttitude(std::span<const LoggedAlignment> log,
                                            const LoggedAlignment& picture) {
  const auto median = MedianAttitude(log, picture);
  const bool isNews = median && (std::fabs(median->RollDeg - picture.Offsets.RollDeg) >= kNotableDeg ||
                                 std::fabs(median->YawDeg - picture.Offsets.YawDeg) >= kNotableDeg);
  return isNews ? median : std::nullopt;
}

QString AngleText(double degrees) {
  // −0.00 is no angle.
  const double rounded = std::round(degrees * 100) / 100 + 0.0;
  return QString::number(rounded, 'f', 2).replace(u'-', QChar(0x2212)) + QChar(0xB0);
}

QString SecondsText(double seconds) {
  const double rounded = std::round(seconds * 10) / 10 + 0.0;
  const QString sign = rounded > 0 ? QStringLiteral("+") : rounded < 0 ? QString(QChar(0x2212)) : QString();
  return sign + QString::number(std::fabs(rounded), 'f', 1) + QStringLiteral(" s");
}

QString TextOf(const ClockMedian& median) {
  const QString which = median.AreEarlier ? QStringLiteral("last") : QStringLiteral("nearest");
  const QString of = median.Of.size() == 1
                         ? QStringLiteral("as of the %1 picture").arg(which)
                         : QStringLiteral("the median of the %1 %2").arg(which).arg(median.Of.size());
  return QStringLiteral("Clock: take %1, %2").arg(SecondsText(median.OffsetS), of);
}

QString TextOf(const AttitudeMedian& median) {
  return QStringLiteral("Attitude: take roll %1, yaw %2, the median of %3")
      .arg(AngleText(median.RollDeg), AngleText(median.YawDeg))
      .arg(median.Of.size());
}

QString TextOf(const LoggedAlignment& before) {
  return QStringLiteral("Aligned before: %1, %2").arg(SecondsText(before.ClockS), WordsOf(before.How));
}

QString TipOf(const LoggedAlignment& before) {
  QStringList lines{
      QStringLiteral("This picture was aligned %1; press to let it lie so again:").arg(WordsOf(before.How)),
      QStringLiteral("time %1, roll %2, pitch %3, yaw %4")
          .arg(SecondsText(before.ClockS), AngleText(before.Offsets.RollDeg),
               AngleText(before.Offsets.PitchDeg), AngleText(before.Offsets.YawDeg))};
  if (before.ShiftColumns != 0)
    lines.append(QStringLiteral("%1 columns across").arg(before.ShiftColumns, 0, 'f', 1));
  if (before.DriftPpm != 0)
    lines.append(QStringLiteral("its clock slow by %1 ppm").arg(before.DriftPpm, 0, 'f', 0));
  if (before.Accepted.Days != 0) {
    lines.append(
        QStringLiteral("accepted %1")
            .arg(QString::fromStdString(orbit::FormatDateTime("yyyy mmm dd hh:nn UTC", before.Accepted))));
  }
  return lines.join(u'\n');
}

QString TipOf(const ClockMedian& median) {
  return TipOf(QStringLiteral("What the recorder's clock was off, by pictures that you have aligned:"),
               median.Of, [](const LoggedAlignment& one) { return SecondsText(one.ClockS); });
}

QString TipOf(const AttitudeMedian& median) {
  return TipOf(QStringLiteral("How the satellite flew at this season, by pictures that you have aligned:"),
               median.Of, [](const LoggedAlignment& one) {
                 return QStringLiteral("roll %1, yaw %2")
                     .arg(AngleText(one.Offsets.RollDeg), AngleText(one.Offsets.YawDeg));
               });
}

}  // namespace pelorin::align
