#pragma once

#include <QString>
#include <QStringList>

#include "orbit/date_time.h"

namespace pelorin::app {

/// What the desktop program was started with.
struct CommandLine {
  bool Help = false, Version = false;
  QString UnknownOption;   ///< empty when there is none
  QStringList Parameters;  ///< what is no option; the first names a pass
};

/// `arguments` without the program's name. After "--" everything is a parameter.
CommandLine ReadCommandLine(const QStringList& arguments);

/// How the desktop program is called, line by line.
QString UsageText(const QString& programName);

/// What became of a pass string.
struct PassMatch {
  int Index = -1;         ///< into the pass list; −1 when no pass matches
  QString Key;            ///< the key as last tried
  orbit::TDateTime Time;  ///< the moment that the pass string names
};

/// Finds the pass that a pass string, "mmddhhnnss" or "yyyymmddhhnnss" with or without the seconds, means:
/// the first list entry that begins with it. Receiving programs name a picture by the moment at which
/// recording began, seconds to minutes off the predicted rise; therefore the seconds are given up one digit
/// at a time. A year says nothing here but counts for `Time`; without one it is the year of `now`. Raises
/// ConvertError.
PassMatch FindPassByString(const QString& passString, const QStringList& entries, orbit::TDateTime now);

/// What the user reads when no pass matches.
QString NoMatchText(const QString& passString, const QString& key);

}  // namespace pelorin::app
