#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "app/time_zone.h"
#include "cli/commands.h"
#include "cli/known_scanners.h"
#include "cli/options.h"
#include "cli/overlay_sources.h"
#include "cli/table.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "overlay/overlay_outputs.h"
#include "overlay/overlay_text.h"
#include "passes/chosen_pass.h"
#include "passes/pass_lookup.h"
#include "picture/picture_file.h"
#include "swath/clock_corrections.h"
#include "swath/picture_lookup.h"
#include "swath/picture_of_pass.h"
#include "swath/scanner_match.h"

namespace pelorin::cli {
namespace {

using overlay::OverlayRequest;

constexpr int kMostMinutes = 30;

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

/// What finds a satellite's sets again: names may be those of several.
QString NumberOf(const orbit::TSatellite& set) {
  return QString::fromStdString(set.CatalogueNumber.empty() ? set.Name : set.CatalogueNumber);
}

/// A pass, and what its satellite is known by.
struct FoundPass {
  passes::ChosenPass Pass;
  QString SatelliteNumber;
};

/// Finds the pass as the desktop does for its pass string.
FoundPass FindPass(const Arguments& arguments, elements::KnownSets& known, const app::Station& station) {
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
  Say(QStringLiteral("Pass: %1").arg(match.Entry));
  const auto found =
      std::ranges::find(satellites, match.Pass.SatelliteName.toStdString(), &orbit::TSatellite::Name);
  return {match.Pass, found == satellites.end() ? match.Pass.SatelliteName : NumberOf(*found)};
}

/// The recording of a pass: its first line is of the time in the picture's name where that is of the pass, or
/// else of the minute in which the pass rises.
swath::Recording RecordingOfPass(const Arguments& arguments, const passes::ChosenPass& pass) {
  swath::PictureOfPass picture(arguments.Settings().ClockCorrections.Value);
  picture.SetSatellite(pass.SatelliteName);
  picture.SetPass(pass.PassStart);
  if (arguments.Has(QStringLiteral("picture"))) {
    const QString path = arguments.Text(QStringLiteral("picture"));
    const app::YearOffsets local = app::LocalTimeZone().OffsetsIn(TakeApart(pass.PassStart).Year);
    if (const auto found =
            swath::PictureNamedFor(path, picture.Pass(), local.StandardMinutes, local.DaylightMinutes)) {
      picture.Seek(*found);
    } else {
      Say(QStringLiteral("%1 is not named by a time of this pass").arg(path));
    }
  }
  const swath::Recording recording = picture.ForMap(pass.SouthBound);
  if (recording.StartIsFrom != swath::StartFrom::NameSecond) {
    Say(QStringLiteral(
        "The map begins at a whole minute; when the second is known, --start lays it exactly"));
  }
  return recording;
}

/// The recording whose first line was received at --start.
swath::Recording RecordingFromStart(const Arguments& arguments, const std::string& satellite) {
  swath::Recording recording;
  recording.Start = ParseStart(arguments.Required(QStringLiteral("start")));
  recording.StartIsFrom = swath::StartFrom::NameSecond;
  recording.Satellite = QString::fromStdString(satellite);
  recording.OffsetS =
      swath::ClockCorrections(arguments.Settings().ClockCorrections.Value).OffsetOf(recording);
  return recording;
}

/// Sets the seconds to add to the start: those asked for, or else what the window would begin with.
void CorrectClock(const Arguments& arguments, swath::Recording& recording) {
  const QString option = QStringLiteral("time-correction");
  if (arguments.Has(option)) {
    recording.OffsetS = arguments.Number(option, 0, -swath::kOffsetLimitS, swath::kOffsetLimitS);
  } else if (recording.OffsetS != 0) {
    Say(QStringLiteral("Time correction: %1 s, the settings' clock of %2")
            .arg(recording.OffsetS, 0, 'f', 1)
            .arg(recording.Satellite));
  }
}

/// Sets the attitude that was asked for.
void TurnAttitude(const Arguments& arguments, swath::Recording& recording) {
  const struct {
    QString Option;
    double& Value;
  } angles[] = {{QStringLiteral("roll"), recording.Offsets.RollDeg},
                {QStringLiteral("pitch"), recording.Offsets.PitchDeg},
                {QStringLiteral("yaw"), recording.Offsets.YawDeg}};
  for (const auto& [option, value] : angles) {
    if (!arguments.Has(option)) continue;
    value = arguments.Number(option, 0, -swath::kMostTurnedDeg, swath::kMostTurnedDeg);
    recording.OffsetsAreFrom = swath::KnownFrom::User;
  }
}

/// Minutes that so many rows take.
int MinutesOfRows(const swath::Recording& recording) {
  const double minutes = recording.Rows / (recording.SeenBy.RowsPerSecond * 60);
  return std::clamp(static_cast<int>(std::ceil(minutes)), 1, kMostMinutes);
}

/// Start, length, direction, elements and scanner of the pass, however it was named, on the rows of a picture
/// if there is one. A map of so many rows from a start is as many minutes long as they take.
OverlayRequest DescribePass(const Arguments& arguments, const app::Station& station, QSize pictureSize) {
  const auto known = arguments.ElementSets();
  const swath::ScannerTable scanners = KnownScanners();
  const QString direction =
      arguments.Choice(QStringLiteral("direction"),
                       {QStringLiteral("auto"), QStringLiteral("north"), QStringLiteral("south")});
  swath::Recording recording;
  QString satellite;
  int usualMinutes = 15;
  const bool isOfPass = arguments.Has(QStringLiteral("pass"));
  if (isOfPass) {
    const FoundPass found = FindPass(arguments, *known, station);
    recording = RecordingOfPass(arguments, found.Pass);
    satellite = found.SatelliteNumber;
    usualMinutes = std::min(found.Pass.PassDurationMinutes, kMostMinutes);
  } else {
    satellite = arguments.Required(QStringLiteral("satellite"));
    const double start = orbit::JulianDateOfDateTime(ParseStart(arguments.Required(QStringLiteral("start"))));
    recording = RecordingFromStart(arguments, FindSet(*known, satellite, start, arguments).Name);
  }
  CorrectClock(arguments, recording);
  recording.Rows = pictureSize.height();
  recording.Columns = pictureSize.width();
  const auto takeSet = [&](const orbit::TSatellite& set) {
    const swath::ScannerMatch match = swath::TakeElements(set, scanners, recording);
    if (!match.Problem.isEmpty()) throw Failure(match.Problem);
    return match.Note;
  };
  const auto middle = [&](int minutes) {
    return orbit::TDateTime{recording.FirstLine().Days + minutes / 2.0 / orbit::kMinutesPerDay};
  };
  if (!isOfPass && recording.Rows > 0) {
    takeSet(FindSet(*known, satellite, orbit::JulianDateOfDateTime(middle(usualMinutes)), arguments));
    usualMinutes = MinutesOfRows(recording);
  }
  OverlayRequest request;
  request.Station = station.Place;
  const int minutes = arguments.Whole(QStringLiteral("minutes"), usualMinutes, 1, kMostMinutes);
  request.DurationMinutes = minutes;
  const QString note =
      takeSet(ChooseSet(*known, satellite, orbit::JulianDateOfDateTime(middle(minutes)), arguments));
  if (!note.isEmpty()) Say(note);
  TurnAttitude(arguments, recording);
  if (direction != QStringLiteral("auto")) {
    recording.SouthBound = direction == QStringLiteral("south");
  } else if (!isOfPass) {
    recording.SouthBound = overlay::IsSouthBoundAt(*recording.Elements, middle(minutes));
  }
  recording.Lies.Turned = !recording.SouthBound;
  request.Picture = recording;
  return request;
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

/// Where the files go. A folder that nobody chose is made when it is missing.
QString ResultsFolder(const Arguments& arguments) {
  const app::Settings& settings = arguments.Settings();
  const QString folder = arguments.Text(QStringLiteral("results"), settings.ResultsPath.Value);
  if (folder == settings.Defaults.Results) QDir().mkpath(folder);
  if (!QDir(folder).exists()) {
    throw Failure(
        QStringLiteral("There is no results folder %1; make it, or name another with --results").arg(folder));
  }
  return folder;
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
       {QStringLiteral("roll"), QStringLiteral("DEG"),
        QStringLiteral(
            "The line moved to the left of the flight, -10 to 10. Default, as for the next two: the "
            "spacecraft's, as \"pelorin-cli scanners\" lists them.")},
       {QStringLiteral("pitch"), QStringLiteral("DEG"), QStringLiteral("The line moved forward.")},
       {QStringLiteral("yaw"), QStringLiteral("DEG"), QStringLiteral("The line's left end turned forward.")},
       StationOption(),
       {QStringLiteral("min-elevation"), QStringLiteral("DEG"),
        QStringLiteral("With --pass: elevation from which a satellite counts as risen, 0 to 10.")},
       {QStringLiteral("lines"), QStringLiteral("N"),
        QStringLiteral("Rows of the map. Default: as many as the pass has lines.")},
       {QStringLiteral("picture"), QStringLiteral("FILE"),
        QStringLiteral("The received picture: the map gets its number of rows, and with --pass begins at the "
                       "time in its name, MMDDHHMM[SS], from 2 minutes before the pass to 9 after.")},
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
  const QSize pictureSize = arguments.Has(QStringLiteral("picture"))
                                ? LoadReceived(arguments.Text(QStringLiteral("picture"))).size()
                                : QSize(0, arguments.Whole(QStringLiteral("lines"), 0, 1, 20000));
  OverlayRequest request = DescribePass(arguments, arguments.Station(), pictureSize);
  request.Overlay = MarksOf(arguments);
  request.PassDetails = settings.SavePassDetails.Value || arguments.Has(QStringLiteral("pass-details")) ||
                        arguments.Has(QStringLiteral("pass"));
  for (std::size_t i = 0; i < request.TextItems.size(); ++i) {
    request.TextItems[i] = overlay::MaskItems(settings.OvlTextLine[i].Value);
  }
  const QString results = ResultsFolder(arguments);
  const overlay::MapSources sources = OpenSources(arguments);
  const overlay::OverlayResult result = overlay::GenerateOverlay(request, sources.Borrowed());
  Say(QStringLiteral("Map: %1 lines of %2, %3-bound, from %4 UTC.")
          .arg(result.LinesMade)
          .arg(result.Map.height())
          .arg(request.Picture.SouthBound ? QStringLiteral("south") : QStringLiteral("north"),
               QString::fromStdString(
                   orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", request.Picture.FirstLine()))));
  const QStringList written = overlay::WriteOverlayOutputs(result, request.PassDetails, results);
  for (const QString& path : written) PrintOut(path + QLatin1Char('\n'));
  TellOfOlderFiles(results, written);
}

}  // namespace pelorin::cli
