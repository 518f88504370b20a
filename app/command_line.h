#pragma once

#include <QString>
#include <QStringList>

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

}  // namespace pelorin::app
