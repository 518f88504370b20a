#include "passes/ephemeris_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/pass_search.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"
#include "orbit/time_stamp.h"
#include "passes/pass_lookup.h"

namespace pelorin::passes {
namespace {

constexpr qsizetype kNameWidth = 12;
constexpr qsizetype kRuleWidth = 51;

/// 30 December 1899, day 0, was a Saturday.
constexpr std::array<const char*, 7> kWeekdays = {"Saturday",  "Sunday",   "Monday", "Tuesday",
                                                  "Wednesday", "Thursday", "Friday"};

QString Weekday(orbit::TDateTime day) {
  const int index =
      static_cast<int>(orbit::Modulus(DatePart(day).Days, static_cast<double>(kWeekdays.size())));
  return QString::fromLatin1(kWeekdays[static_cast<std::size_t>(index)]);
}

QString MomentText(const char* pattern, orbit::TDateTime moment) {
  return QString::fromStdString(FormatDateTime(pattern, moment));
}

/// An angle without its sign, and the letter that stands for it.
QString AngleText(double degrees, char16_t negative, char16_t positive) {
  return QString::number(std::fabs(degrees), 'f', 2) + u'°' + QChar(degrees < 0 ? negative : positive);
}

QString WholeNumber(double value) { return QString::number(std::lrint(value)); }

/// A satellite and how far the report has come with it.
class ReportedSatellite {
 public:
  ReportedSatellite(const orbit::TSatellite& satellite, const EphemerisRequest& request)
      : satellite_(satellite), request_(request), frame_(request.Station) {}

  const orbit::TSatellite& Satellite() const { return satellite_; }

  std::vector<orbit::Pass> PassesOf(orbit::TDateTime day, bool isFirstDay) {
    std::vector<orbit::Pass> passes =
        SearchPasses(satellite_, request_.Station, {day, 1, request_.MinElevationDeg});
    // A search knows a culmination to the minute only. Around midnight both days may claim a pass, or
    // neither; it is listed once.
    std::erase_if(passes, [this](const orbit::Pass& pass) { return pass.Aos < listedUntil_; });
    const double midnight = JulianDateOfDateTime(day);
    const bool isListed = listedUntil_ > midnight || (!passes.empty() && passes.front().Aos < midnight);
    if (!isFirstDay && !isListed && IsUp(midnight)) {
      for (const orbit::Pass& pass :
           PassesRisingOn({day.Days - 1}, satellite_, request_.Station, request_.MinElevationDeg)) {
        if (pass.Los > midnight) passes.insert(passes.begin(), pass);
      }
    }
    if (!passes.empty()) listedUntil_ = passes.back().Los;
    return passes;
  }

 private:
  bool IsUp(double jd) { return frame_.Elevation(SatelliteStateKm(satellite_, jd).Position, jd) > 0; }

  const orbit::TSatellite& satellite_;
  const EphemerisRequest& request_;
  orbit::ElevationFrame frame_;
  double listedUntil_ = 0;  ///< Julian date of the last listed set
};

}  // namespace

QString StationText(const orbit::Observer& station) {
  return AngleText(orbit::Degrees(orbit::SignedAngle(station.Longitude)), u'W', u'E') + QStringLiteral(", ") +
         AngleText(orbit::Degrees(station.Latitude), u'S', u'N');
}

QStringList DayHeading(orbit::TDateTime day, const orbit::Observer& station) {
  return {QStringLiteral("Pelorin pass prediction for ") + Weekday(day) + MomentText(", yyyy mmm dd", day),
          QStringLiteral("Station located at ") + StationText(station), QString(kRuleWidth, u'_'),
          QStringLiteral("N/S   Satellite    A O S    L O S    Mins Elev Long"), QString()};
}

QString ReportRow(const orbit::PassInfo& record, double maxElevationDeg) {
  const orbit::TDateTime aos = orbit::CutToSecond(record.Aos);
  const orbit::TDateTime los{aos.Days + record.DurationSeconds / orbit::kSecondsPerDay};
  return (record.SouthBound ? QStringLiteral(" S  ") : QStringLiteral(" N  ")) +
         QString::fromStdString(record.Name).leftJustified(kNameWidth, u' ', true) + QStringLiteral("  ") +
         MomentText("hh:nn:ss ", aos) + MomentText("hh:nn:ss  ", los) +
         QString::number((record.DurationSeconds + 59) / 60).rightJustified(4) + QStringLiteral("  ") +
         WholeNumber(maxElevationDeg).rightJustified(2) + u'°' + u' ' +
         WholeNumber(record.LongitudeDeg).rightJustified(3) + u'°';
}

void MakeEphemeris(EphemerisRequest request, const std::function<bool(EphemerisDay)>& afterDay) {
  std::vector<ReportedSatellite> followed;
  followed.reserve(request.Satellites.size());
  for (const orbit::TSatellite& satellite : request.Satellites) followed.emplace_back(satellite, request);

  struct Found {
    std::string Text;
    orbit::Pass Pass;
    const orbit::TSatellite* Satellite;
  };
  std::vector<Found> ofDay;
  for (int number = 1; number <= request.Days; ++number) {
    const orbit::TDateTime day{DatePart(request.StartDate).Days + (number - 1)};
    ofDay.clear();
    for (ReportedSatellite& satellite : followed) {
      for (orbit::Pass& pass : satellite.PassesOf(day, number == 1)) {
        std::string text = pass.Record.ToText();
        ofDay.push_back({std::move(text), std::move(pass), &satellite.Satellite()});
      }
    }
    std::stable_sort(ofDay.begin(), ofDay.end(),
                     [](const Found& a, const Found& b) { return a.Text < b.Text; });

    EphemerisDay made{number, {}, {}};
    if (number > 1) made.Lines = {QString(), QString()};
    made.Lines += DayHeading(day, request.Station);
    for (const Found& found : ofDay) {
      made.Passes.push_back(DetailsOf(found.Pass, *found.Satellite, request.Station));
      made.Lines.append(ReportRow(found.Pass.Record, made.Passes.back().MaxElevationDeg));
    }
    if (!afterDay(std::move(made))) return;
  }
}

}  // namespace pelorin::passes
