#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "orbit/date_time.h"
#include "passes/pass_details.h"

namespace pelorin::passes {

/// A report as it goes into a file.
struct EphemerisOutput {
  QStringList Lines;
  std::vector<PassDetails> Passes;
  QString Station;         ///< where it holds: StationText
  orbit::TDateTime Saved;  ///< UTC
};

/// Replaces the file by the report. The extension decides on the form: ".csv" and ".ics", letters in any
/// case, else text in code page 1252. Raises FileError, and the earlier file stays.
void SaveEphemeris(const QString& path, const EphemerisOutput& report);

/// Whether a file of this name becomes a calendar, which has to have an event at least.
bool IsCalendarFile(const QString& path);

/// Comma-separated values: a line of column names, then a pass a line in the order of their rise; UTF-8, CR
/// LF.
QByteArray EphemerisCsv(std::vector<PassDetails> passes);

/// A calendar (RFC 5545) with an event per pass, in the order of their rise. A pass keeps its event's
/// identifier when it is computed again, also from other elements that move it by some seconds.
QByteArray EphemerisCalendar(const EphemerisOutput& report);

/// A content line of a calendar, folded so that no line has more than 75 bytes, with its CR LF.
QByteArray FoldedLine(const QByteArray& line);

}  // namespace pelorin::passes
