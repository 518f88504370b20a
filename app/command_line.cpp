#include "app/command_line.h"

namespace pelorin::app {

CommandLine ReadCommandLine(const QStringList& arguments) {
  CommandLine line;
  bool onlyParameters = false;
  for (const QString& argument : arguments) {
    if (onlyParameters || !argument.startsWith(u'-')) {
      line.Parameters.append(argument);
    } else if (argument == QStringLiteral("--")) {
      onlyParameters = true;
    } else if (argument == QStringLiteral("--help") || argument == QStringLiteral("-h")) {
      line.Help = true;
    } else if (argument == QStringLiteral("--version") || argument == QStringLiteral("-v")) {
      line.Version = true;
    } else if (line.UnknownOption.isEmpty()) {
      line.UnknownOption = argument;
    }
  }
  return line;
}

QString UsageText(const QString& programName) {
  return QStringLiteral(
             "Usage: %1 [PASS]\n"
             "Shows where weather satellites are and when they pass, and makes the map of a\n"
             "received picture.\n"
             "\n"
             "PASS is the time in UTC at which a pass begins, as mmddhhnn or mmddhhnnss, with\n"
             "or without the year before it, for example 0412183045. The program looks for it\n"
             "in the pass list of that day; the seconds need not be right, the minute must. It\n"
             "makes the map of the pass, writes the results and ends. If there is no such pass\n"
             "it says so, and ends after ten minutes unless somebody presses a key or clicks.\n"
             "The exit status is 0 when the map was made.\n"
             "\n"
             "  -h, --help      this text\n"
             "  -v, --version   the program's version\n"
             "\n"
             "Without a window and with more choices: pelorin-cli --help\n")
      .arg(programName);
}

}  // namespace pelorin::app
