#include "passes/pass_lookup.h"

#include <algorithm>

#include "orbit/julian_date.h"

namespace pelorin::passes {
namespace {

constexpr qsizetype kShortestKey = 8;  // "mmddhhnn"

QStringList EntriesOfDay(orbit::TDateTime day, const std::vector<orbit::TSatellite>& satellites,
                         const orbit::Observer& station, double minElevationDeg) {
  QStringList entries;
  for (const orbit::TSatellite& satellite : satellites) {
    for (const orbit::Pass& pass : PassesRisingOn(day, satellite, station, minElevationDeg)) {
      entries.append(QString::fromStdString(pass.Record.ToListEntry()));
    }
  }
  entries.sort();
  return entries;
}

/// The first entry with that beginning, or an empty text.
QString FirstWithPrefix(const QStringList& entries, const QString& key) {
  const auto match = std::find_if(entries.begin(), entries.end(),
                                  [&key](const QString& entry) { return entry.startsWith(key); });
  return match == entries.end() ? QString() : *match;
}

}  // namespace

std::vector<orbit::Pass> PassesRisingOn(orbit::TDateTime day, const orbit::TSatellite& satellite,
                                        const orbit::Observer& station, double minElevationDeg) {
  const double midnight = JulianDateOfDateTime(DatePart(day));
  std::vector<orbit::Pass> passes = SearchPasses(satellite, station, {day, 2, minElevationDeg});
  std::erase_if(passes, [midnight](const orbit::Pass& pass) {
    return pass.Aos < midnight || pass.Aos >= midnight + 1;
  });
  return passes;
}

PassMatch FindPassByString(const QString& passString, const std::vector<orbit::TSatellite>& satellites,
                           const orbit::Observer& station, double minElevationDeg, orbit::TDateTime now) {
  PassMatch match;
  match.Time = orbit::ParseTimeString(passString.toStdString(), now);
  const bool hasSeconds = passString.size() == 10 || passString.size() == 14;
  match.Key = QString::fromStdString(FormatDateTime(hasSeconds ? "mmddhhnnss" : "mmddhhnn", match.Time));
  const QStringList entries = EntriesOfDay(match.Time, satellites, station, minElevationDeg);
  match.Entry = FirstWithPrefix(entries, match.Key);
  while (match.Entry.isEmpty() && match.Key.size() > kShortestKey) {
    match.Key.chop(1);
    match.Entry = FirstWithPrefix(entries, match.Key);
  }
  if (!match.Entry.isEmpty()) match.Pass = ParseSelectedPass(match.Entry, match.Time);
  return match;
}

QString NoMatchText(const QString& passString, const QString& key) {
  return QStringLiteral("Parameter ") + passString + QStringLiteral(" specified but pass string ") + key +
         QStringLiteral(
             " not found.  Note that the pass string may have been truncated in an effort to "
             "find a matching pass");
}

}  // namespace pelorin::passes
