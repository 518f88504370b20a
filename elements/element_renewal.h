#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "elements/element_update.h"
#include "orbit/date_time.h"
#include "orbit/satellite.h"

/// Elements that are renewed without being told to.
namespace pelorin::elements {

/// What is done about elements of a certain age. The values are saved.
enum class Renewal { WhenTold, Ask, ByItself };

/// The files, each once and in ascending order, that have the sets of satellites in use which are more than
/// so many days old at a Julian date.
QStringList FilesToRenew(const std::vector<const orbit::TSatellite*>& inUse, double nowJd, int days);

/// Once a day is enough: whether a turn that was had on `lastDay`, "yyyy-mm-dd" or empty, was before today. A
/// day to come is the work of a clock that was wrong.
bool IsRenewalDue(const QString& lastDay, orbit::TDateTime now);
QString RenewalDay(orbit::TDateTime now);

/// What came of it.
struct RenewalReport {
  QList<FileOutcome> Outcomes;  ///< of each file
  QStringList Said;             ///< why some were not updated
};

/// Runs the update where nobody can be asked, so that what is out of proportion is refused. It has a
/// connection of its own and touches nothing else, so it may run in any thread that has no event loop, or
/// whose loop may go on meanwhile. Ends after the file in hand when `goesOn` answers false. Errors are said.
RenewalReport RenewElements(const ElementUpdate& update, const QString& requestsFile,
                            const std::function<bool()>& goesOn);

/// A line, fit for a status bar: "Elements renewed: 1 updated".
QString RenewalText(const RenewalReport& report);

}  // namespace pelorin::elements
