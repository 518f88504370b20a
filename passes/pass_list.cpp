#include "passes/pass_list.h"

#include <algorithm>
#include <iterator>

namespace pelorin::passes {

QStringList PassListEntries(const std::vector<orbit::TSatellite>& satellites, const orbit::Observer& observer,
                            const orbit::PassRequest& request) {
  QStringList entries;
  for (const orbit::TSatellite& satellite : satellites) {
    for (const orbit::Pass& pass : SearchPasses(satellite, observer, request)) {
      entries.append(QString::fromStdString(pass.Record.ToListEntry()));
    }
  }
  entries.sort();
  return entries;
}

int FindNextPassIndex(const QStringList& entries, orbit::TDateTime now) {
  const QString key = QString::fromStdString(FormatDateTime("mmddhhnnss", now));
  const auto next =
      std::find_if(entries.begin(), entries.end(), [&key](const QString& entry) { return entry > key; });
  return next == entries.end() ? -1 : static_cast<int>(std::distance(entries.begin(), next));
}

QString NoSatellitesText(const QString& elementFolder) {
  return QStringLiteral(
             "Pelorin could find no satellite data.  Perhaps your data files are missing or incorrectly "
             "named?  Please check that you have placed your orbital data in the folder \r\r   ") +
         elementFolder +
         QStringLiteral("\r\rand named the two-line element files with the extension either  .2LI or .TLE");
}

QString NoActiveSatellitesText() {
  return QStringLiteral("Please drag one or more satellites from the Available list to the Active list.");
}

}  // namespace pelorin::passes
