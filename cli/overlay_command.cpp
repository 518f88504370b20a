#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/overlay_sources.h"
#include "cli/table.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "orbit/time_stamp.h"
#include "overlay/overlay_outputs.h"
#include "overlay/overlay_text.h"
#include "passes/chosen_pass.h"
#include "passes/pass_lookup.h"
#include "picture/picture_file.h"
#include "swath/clock_corrections.h"

namespace pelorin::cli {
namespace {

using overlay::OverlayRequest;

/// The names that a pass string is matched against: those given, else the settings' active satellites, else
/// all.
QStringList NamesForPass(const Arguments& arguments, elements::KnownSets& known) {
  QStringList names = arguments.Texts(QStringLiteral("satellite"));
  if (names.isEmpty()) {
    // An active satellite may have left the element files since.
    for (const QString& name : app::FromCommaText(arguments.Settings().SatelliteList.Value)) {
      if (known.Find(name.toStdString()) != nullptr) names.append(name);
    }
  }
  if (names.isEmpty()) {
    const elements::TSatelliteList& list = known.Satellites();
    for (int index = 0; index < list.Count(); ++index) names.append(QString::fromStdString(list.Name(index)));
  }
  return names;
}

/// Finds the pass as the desktop does for its pass string.
passes::ChosenPass FindPass(const Arguments& arguments, elements::KnownSets& known,
                            const app::Station& station) {
  const QString passString = arguments.Text(QStringLiteral("pass"));
  const orbit::TDateTime time = [&] {
    try {
      return orbit::ParseTimeString(passString.toStdString());
    } catch (const orbit::ConvertError& error) {
      throw UsageError(QStringLiteral("--pass wants [YYYY]MMDDHHMM[SS]: ") + QString::fromUtf8(error.what()));
    }
  }();
  std::vector<orbit::TSatellite> satellites;
  for (const QString& name : NamesForPass(arguments, known)) {
    satellites.push_back(FindSet(known, name, orbit::JulianDateOfDateTime(time), arguments));
  }
  const passes::PassMatch match =
      passes::FindPassByString(passString, satellites, station.Place, station.MinElevationDeg, time);
  if (match.Entry.isEmpty()) {
    throw Failure(
        passes::NoMatchText(passString, match.Key) +
        QStringLiteral(". Searched: passes of %1 satellites that rise on %2; a year goes before the month")
            .arg(satellites.size())
            .arg(QString::fromStdString(orbit::FormatDateTime("yyyy-mm-dd", time))));
  }
  Say(QStringLiteral(
          "Pass: %1; its map begins at the whole minute. When the second is known, --start lays it exactly.")
          .arg(match.Entry));
  return match.Pass;
}

/// Start, length, direction and elements of the pass, however it was named.
/// A map of `lines` rows, if that is not 0, is as many minutes long as they take.
OverlayRequest DescribePass(const Arguments& arguments, const app::Station& station, int lines) {
  const auto known = arguments.ElementSets();
  OverlayRequest request;
  request.Station = station.Place;
  const QString direction =
      arguments.Choice(QStringLiteral("direction"),
                       {QStringLiteral("auto"), QStringLiteral("north"), QStringLiteral("south")});
  QString name;
  if (arguments.Has(QStringLiteral("pass"))) {
    const passes::ChosenPass pass = FindPass(arguments, *known, station);
    name = pass.SatelliteName;
    request.Start = pass.PassStart;
    request.SouthBound = pass.SouthBound;
    request.DurationMinutes =
        arguments.Whole(QStringLiteral("minutes"), std::min(pass.PassDurationMinutes, 30), 1, 30);
  } else {
    name = arguments.Required(QStringLiteral("satellite"));
    request.Start = ParseStart(arguments.Required(QStringLiteral("start")));
    const int linesPerMinute =
        FindSet(*known, name, orbit::JulianDateOfDateTime(request.Start), arguments).LinesPerMinute;
    const int usual = lines > 0 ? std::clamp((lines + linesPerMinute - 1) / linesPerMinute, 1, 30) : 15;
    request.DurationMinutes = arguments.Whole(QStringLiteral("minutes"), usual, 1, 30);
  }
  const orbit::TDateTime middle{request.Start.Days + request.DurationMinutes / 2.0 / orbit::kMinutesPerDay};
  request.Satellite = ChooseSet(*known, name, orbit::JulianDateOfDateTime(middle), arguments);
  if (direction != QStringLiteral("auto")) {
    request.SouthBound = direction == QStringLiteral("south");
  } else if (!arguments.Has(QStringLiteral("pass"))) {
    request.SouthBound = overlay::IsSouthBoundAt(request.Satellite, middle);
  }
  return request;
}

/// The second at which the recording began by its own clock, which --start tells, or the picture's name where
/// it is of the pass's minute; nothing if neither does.
std::optional<int> RecordedSecond(const Arguments& arguments, orbit::TDateTime start) {
  if (arguments.Has(QStringLiteral("start"))) return 0;
  const std::string name = QFileInfo(arguments.Text(QStringLiteral("picture"))).fileName().toStdString();
  return name.starts_with(orbit::StampOf(start)) ? orbit::SecondsOfStamp(name) : std::nullopt;
}

/// Seconds to add to the start: those asked for, or else what the window would begin with.
double CorrectionS(const Arguments& arguments, const OverlayRequest& request) {
  const QString option = QStringLiteral("time-correction");
  if (arguments.Has(option)) return arguments.Number(option, 0, -swath::kOffsetLimitS, swath::kOffsetLimitS);
  const std::optional<int> second = RecordedSecond(arguments, request.Start);
  if (!second) return 0;
  swath::Recording recording;
  recording.Satellite = QString::fromStdString(request.Satellite.Name);
  recording.StartIsFrom = swath::StartFrom::NameSecond;
  const double seconds =
      *second + swath::ClockCorrections(arguments.Settings().ClockCorrections.Value).OffsetOf(recording);
  if (seconds != 0) {
    Say(QStringLiteral("Time correction: %1 s, from the picture's name and the settings' clock of %2")
            .arg(seconds, 0, 'f', 1)
            .arg(recording.Satellite));
  }
  return seconds;
}

overlay::Marks MarksOf(const Arguments& arguments) {
  const bool wantsAll = arguments.Has(QStringLiteral("show-overlay"));
  const app::Settings& settings = arguments.Settings();
  return overlay::ChosenMarks(
      arguments.Has(QStringLiteral("lines-only")) || (settings.OverlayLinesOnly.Value && !wantsAll),
      settings.ShowOverlay.Value || wantsAll);
}

/// A received picture; what is wrong with it is said.
QImage LoadReceived(const QString& path) {
  const picture::LoadedPicture loaded = picture::LoadRecording(path);
  if (!loaded.Damage.isEmpty()) Say(loaded.Damage);
  return loaded.Image;
}

/// Says which of a map's files in the results folder are not this map's.
void TellOfOlderFiles(const QString& folder, const QStringList& written) {
  for (const QString& name :
       {QStringLiteral("ovl.bmp"), QStringLiteral("pass.dat"), QStringLiteral("ovl.txt")}) {
    const QString path = QDir(folder).filePath(name);
    if (!written.contains(path) && QFileInfo::exists(path)) {
      Say(QStringLiteral("%1 is of an earlier map and was left as it is").arg(path));
    }
  }
}

}  // namespace

void RunOverlay(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("overlay"),
      QStringLiteral("Makes the map that lies on the received picture of a pass and writes Result.jpg and "
                     "ovl.bmp, with pass details "
                     "also pass.dat and ovl.txt. The pass is named by satellite and start, or found with "
                     "--pass in the day's list."),
      {ElementsOption(),
       {QStringLiteral("satellite"), QStringLiteral("NAME"),
        QStringLiteral("The satellite. With --pass several may be given; default: the settings' active ones, "
                       "else all.")},
       {QStringLiteral("start"), QStringLiteral("YYYYMMDDHHMMSS[.fff]"),
        QStringLiteral("When the first line was received, UTC.")},
       {QStringLiteral("pass"), QStringLiteral("[YYYY]MMDDHHMM[SS]"),
        QStringLiteral("The pass that rose then, UTC; implies --pass-details.")},
       {QStringLiteral("time-correction"), QStringLiteral("SECONDS"),
        QStringLiteral(
            "Added to the start, -900 to 900: what the recorder's clock was off. Default: what the "
            "settings remember of the satellite's recorder, where --start or the picture's name tells "
            "the second.")},
       {QStringLiteral("minutes"), QStringLiteral("N"),
        QStringLiteral(
            "Length of the map, 1 to 30. Default: as long as the pass, the rows or the picture, else 15.")},
       {QStringLiteral("direction"), QStringLiteral("auto|north|south"),
        QStringLiteral("North-bound maps are turned by 180 degrees. Default: auto, as the satellite moves.")},
       StationOption(),
       {QStringLiteral("min-elevation"), QStringLiteral("DEG"),
        QStringLiteral("With --pass: elevation from which a satellite counts as risen, 0 to 10.")},
       {QStringLiteral("lines"), QStringLiteral("N"),
        QStringLiteral("Rows of the map. Default: as many as the pass has lines.")},
       {QStringLiteral("picture"), QStringLiteral("FILE"),
        QStringLiteral("The received picture: the map gets its number of rows, and with --pass the second of "
                       "its name MMDDHHMMSS.")},
       {QStringLiteral("show-overlay"),
        {},
        QStringLiteral(
            "Draw land, coasts, borders and grid over the ground. Default: as ticked in the desktop "
            "program.")},
       {QStringLiteral("lines-only"),
        {},
        QStringLiteral(
            "Draw coasts, borders and grid only, over the ground's own colours. Default: as ticked there.")},
       TopographyOption(),
       MasterOption(),
       {QStringLiteral("results"), QStringLiteral("DIR"),
        QStringLiteral("Where the files go. Default: the settings' folder.")},
       {QStringLiteral("pass-details"), {}, QStringLiteral("Write pass.dat and ovl.txt, too.")},
       NewestOption()},
      list);
  if (arguments.Has(QStringLiteral("pass")) == arguments.Has(QStringLiteral("start"))) {
    throw UsageError(QStringLiteral("Name the pass by either --start or --pass"));
  }
  if (arguments.Has(QStringLiteral("lines")) && arguments.Has(QStringLiteral("picture"))) {
    throw UsageError(QStringLiteral("--lines and --picture exclude each other"));
  }
  const app::Settings& settings = arguments.Settings();
  int lines = arguments.Whole(QStringLiteral("lines"), 0, 1, 20000);
  int width = overlay::kUsualLineWidth;
  if (arguments.Has(QStringLiteral("picture"))) {
    const QImage picture = LoadReceived(arguments.Text(QStringLiteral("picture")));
    lines = picture.height();
    width = std::max(picture.width(), width);
  }
  OverlayRequest request = DescribePass(arguments, arguments.Station(), lines);
  request.Start.Days += CorrectionS(arguments, request) / orbit::kSecondsPerDay;
  request.LineLimit = lines;
  request.Width = width;
  request.Overlay = MarksOf(arguments);
  request.PassDetails = settings.SavePassDetails.Value || arguments.Has(QStringLiteral("pass-details")) ||
                        arguments.Has(QStringLiteral("pass"));
  for (std::size_t i = 0; i < request.TextItems.size(); ++i) {
    request.TextItems[i] = overlay::MaskItems(settings.OvlTextLine[i].Value);
  }
  const QString results = arguments.Text(QStringLiteral("results"), settings.ResultsPath.Value);
  if (!QDir(results).exists()) {
    throw Failure(QStringLiteral("There is no results folder %1; make it, or name another with --results")
                      .arg(results));
  }
  const overlay::MapSources sources = OpenSources(arguments);
  const overlay::OverlayResult result = overlay::GenerateOverlay(request, sources.Borrowed());
  Say(QStringLiteral("Map: %1 lines of %2, %3-bound, from %4 UTC.")
          .arg(result.LinesMade)
          .arg(result.Map.height())
          .arg(request.SouthBound ? QStringLiteral("south") : QStringLiteral("north"),
               QString::fromStdString(orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", request.Start))));
  const QStringList written = overlay::WriteOverlayOutputs(result, request.PassDetails, results);
  for (const QString& path : written) PrintOut(path + QLatin1Char('\n'));
  TellOfOlderFiles(results, written);
}

}  // namespace pelorin::cli
