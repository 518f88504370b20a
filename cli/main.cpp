#include <QCoreApplication>
#include <clocale>
#include <cstdio>
#include <exception>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"

namespace {

using namespace pelorin::cli;

struct Command {
  const char* name;
  const char* summary;
  void (*run)(const QStringList&);
};

constexpr Command kCommands[] = {
    {"passes", "when satellites pass over a station", RunPasses},
    {"track", "where a satellite is, step by step, and how the station sees it", RunTrack},
    {"overlay", "the map that lies on the received picture of a pass", RunOverlay},
    {"align", "where a received picture lies, by its coasts", RunAlign},
    {"identify", "which pass a received picture is of, by its coasts", RunIdentify},
    {"picture", "the received picture of a pass, looked up by its time", RunPicture},
    {"alignments", "the pictures that were aligned, and what was found", RunAlignments},
    {"elements", "the element sets at hand and their age", RunElements},
    {"update", "fresh element sets from the element service", RunUpdate},
    {"scan", "a scanner's distances from the track, pixel by pixel", RunScan},
    {"line", "the ground points of one scan line", RunLine},
    {"scanners", "the scanners that are known, and the satellites that carry them", RunScanners},
    {"master", "the world map of coasts and borders that overlays are cut from", RunMaster}};

QString Usage() {
  QString text =
      QStringLiteral("Usage: pelorin-cli COMMAND [OPTIONS]\n\nCommands (each with its own --help):\n");
  for (const Command& command : kCommands) {
    text += QStringLiteral("  %1 %2\n")
                .arg(QLatin1StringView(command.name), -10)
                .arg(QLatin1StringView(command.summary));
  }
  return text +
         QStringLiteral(
             "\nResults go to standard output, messages to standard error. Exit status: 0 done, 1 failed, "
             "2 called wrongly, 3 what came was refused, 4 no alignment was found, and one was required.\n");
}

int Run(const QStringList& arguments) {
  const QString name = arguments.value(1);
  if (name == QStringLiteral("--help") || name == QStringLiteral("-h") || name == QStringLiteral("help")) {
    PrintOut(Usage());
    return 0;
  }
  if (name == QStringLiteral("--version")) {
    PrintOut(QStringLiteral("pelorin-cli " PELORIN_VERSION "\n"));
    return 0;
  }
  for (const Command& command : kCommands) {
    if (name != QLatin1StringView(command.name)) continue;
    try {
      command.run(arguments.mid(2));
      if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        throw Failure(QStringLiteral("Standard output takes no more; the results are not complete"));
      }
      return 0;
    } catch (const HelpShown&) {
      return 0;
    } catch (const NotAligned& error) {
      Say(QStringLiteral("pelorin-cli %1: %2").arg(name, QString::fromUtf8(error.what())));
      return 4;
    } catch (const UsageError& error) {
      Say(QStringLiteral("pelorin-cli %1: %2. See \"pelorin-cli %1 --help\".")
              .arg(name, QString::fromUtf8(error.what())));
      return 2;
    } catch (const std::exception& error) {
      Say(QStringLiteral("pelorin-cli %1: %2").arg(name, QString::fromUtf8(error.what())));
      return dynamic_cast<const Implausible*>(&error) != nullptr ? 3 : 1;
    }
  }
  if (!name.isEmpty()) Say(QStringLiteral("pelorin-cli: there is no command \"%1\"").arg(name));
  Say(Usage());
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  // Numbers are written with a point wherever this runs.
  std::setlocale(LC_NUMERIC, "C");
  return Run(QCoreApplication::arguments());
}
