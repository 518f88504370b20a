#include "cli/recording_options.h"

#include <algorithm>

namespace pelorin::cli {
namespace {

const struct {
  QString Word;
  swath::Stored Lies;
} kWays[] = {{QStringLiteral("received"), {}},
             {QStringLiteral("turned"), {true, false}},
             {QStringLiteral("mirrored"), {false, true}},
             {QStringLiteral("turned-mirrored"), {true, true}}};

}  // namespace

std::vector<Option> RecordingOptions() {
  return {
      ElementsOption(),
      {QStringLiteral("satellite"), QStringLiteral("NAME"),
       QStringLiteral("The satellite. Default: as the picture tells. With --pass several may be given; "
                      "default: the settings' active ones, else all.")},
      {QStringLiteral("start"), QStringLiteral("YYYYMMDDHHMMSS[.fff]"),
       QStringLiteral("When the first line was received, UTC. Default: as the picture tells.")},
      {QStringLiteral("pass"), QStringLiteral("[YYYY]MMDDHHMM[SS]"),
       QStringLiteral("The pass that rose then, UTC; a map then comes with --pass-details.")},
      {QStringLiteral("time-correction"), QStringLiteral("SECONDS"),
       QStringLiteral(
           "Added to the start, -900 to 900: what the recorder's clock was off. Default: what the "
           "settings remember of the satellite's recorder, where --start or the picture's name tells "
           "the second.")},
      {QStringLiteral("minute-marks"),
       {},
       QStringLiteral("Begin as the minute marks in the picture's space band tell, where there are any. "
                      "Otherwise that is only said.")},
      {QStringLiteral("direction"), QStringLiteral("auto|north|south"),
       QStringLiteral(
           "Whether the satellite moved north or south. North is up in the map where nothing tells "
           "how its picture is stored. Default: auto, as the satellite moves.")},
      {QStringLiteral("roll"), QStringLiteral("DEG"),
       QStringLiteral(
           "The line moved to the left of the flight, -10 to 10. Default, as for the next two: what the "
           "settings remember as yours for this satellite and scanner, else the product file's, else the "
           "spacecraft's, as \"pelorin-cli scanners\" lists them.")},
      {QStringLiteral("pitch"), QStringLiteral("DEG"), QStringLiteral("The line moved forward.")},
      {QStringLiteral("yaw"), QStringLiteral("DEG"), QStringLiteral("The line's left end turned forward.")},
      StationOption(),
      {QStringLiteral("min-elevation"), QStringLiteral("DEG"),
       QStringLiteral("With --pass: elevation from which a satellite counts as risen, 0 to 10.")},
      {QStringLiteral("picture"), QStringLiteral("FILE|FOLDER"),
       QStringLiteral(
           "The received picture, or a decoder's folder: the map gets its size. Its name or product "
           "file tells satellite and time where they are not given; with --pass it begins at the "
           "time in its name, from 2 minutes before the pass to 9 after.")},
      StoredOption(),
      NewestOption()};
}

void CheckRecordingOptions(const Arguments& arguments) {
  const bool isOfPass = arguments.Has(QStringLiteral("pass"));
  const bool hasStart = arguments.Has(QStringLiteral("start"));
  if (isOfPass ? hasStart : !hasStart && !arguments.Has(QStringLiteral("picture"))) {
    throw UsageError(
        QStringLiteral("Name the pass by either --start or --pass, or give a --picture that tells its time"));
  }
  if (arguments.Has(QStringLiteral("minute-marks")) && arguments.Has(QStringLiteral("time-correction"))) {
    throw UsageError(QStringLiteral("--minute-marks and --time-correction exclude each other"));
  }
}

Option StoredOption() {
  return {
      QStringLiteral("stored"), QStringLiteral("auto|received|turned|mirrored|turned-mirrored"),
      QStringLiteral("How the picture lies in its file. Default: auto, as its product or its kind of name "
                     "has it.")};
}

std::optional<swath::Stored> StoredAsTold(const Arguments& arguments) {
  QStringList words{QStringLiteral("auto")};
  for (const auto& way : kWays) words.append(way.Word);
  const qsizetype chosen = words.indexOf(arguments.Choice(QStringLiteral("stored"), words));
  return chosen == 0 ? std::nullopt : std::optional(kWays[chosen - 1].Lies);
}

QString StoredWord(swath::Stored lies) {
  return std::ranges::find_if(kWays, [&](const auto& way) { return way.Lies == lies; })->Word;
}

}  // namespace pelorin::cli
