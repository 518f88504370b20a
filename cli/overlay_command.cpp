#include <QDir>
#include <QFileInfo>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/overlay_request.h"
#include "cli/overlay_sources.h"
#include "cli/table.h"
#include "overlay/overlay_outputs.h"
#include "overlay/overlay_text.h"

namespace pelorin::cli {
namespace {

using overlay::OverlayRequest;

overlay::Marks MarksOf(const Arguments& arguments) {
  const bool wantsAll = arguments.Has(QStringLiteral("show-overlay"));
  const app::Settings& settings = arguments.Settings();
  return overlay::ChosenMarks(
      arguments.Has(QStringLiteral("lines-only")) || (settings.OverlayLinesOnly.Value && !wantsAll),
      settings.ShowOverlay.Value || wantsAll);
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
      QStringLiteral(
          "Makes the map that lies on the received picture of a pass and writes Result.jpg and "
          "ovl.bmp, with pass details also pass.dat and ovl.txt. Satellite and time are told by the "
          "picture's name or its decoder's folder, or given; or the pass is found with --pass in "
          "the day's list."),
      {ElementsOption(),
       {QStringLiteral("satellite"), QStringLiteral("NAME"),
        QStringLiteral("The satellite. Default: as the picture tells. With --pass several may be given; "
                       "default: the settings' active ones, else all.")},
       {QStringLiteral("start"), QStringLiteral("YYYYMMDDHHMMSS[.fff]"),
        QStringLiteral("When the first line was received, UTC. Default: as the picture tells.")},
       {QStringLiteral("pass"), QStringLiteral("[YYYY]MMDDHHMM[SS]"),
        QStringLiteral("The pass that rose then, UTC; implies --pass-details.")},
       {QStringLiteral("time-correction"), QStringLiteral("SECONDS"),
        QStringLiteral(
            "Added to the start, -900 to 900: what the recorder's clock was off. Default: what the "
            "settings remember of the satellite's recorder, where --start or the picture's name tells "
            "the second.")},
       {QStringLiteral("minute-marks"),
        {},
        QStringLiteral("Begin as the minute marks in the picture's space band tell, where there are any. "
                       "Otherwise that is only said.")},
       {QStringLiteral("minutes"), QStringLiteral("N"),
        QStringLiteral(
            "Length of the map, 1 to 30. Default: as long as the pass, the rows or the picture, else 15.")},
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
       {QStringLiteral("lines"), QStringLiteral("N"),
        QStringLiteral("Rows of the map. Default: as many as the pass has lines.")},
       {QStringLiteral("picture"), QStringLiteral("FILE|FOLDER"),
        QStringLiteral(
            "The received picture, or a decoder's folder: the map gets its size. Its name or product "
            "file tells satellite and time where they are not given; with --pass it begins at the "
            "time in its name, from 2 minutes before the pass to 9 after.")},
       {QStringLiteral("stored"), QStringLiteral("auto|received|turned|mirrored|turned-mirrored"),
        QStringLiteral("How the picture lies in its file. Default: auto, as its product or its kind of name "
                       "has it.")},
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
  const bool isOfPass = arguments.Has(QStringLiteral("pass"));
  const bool hasStart = arguments.Has(QStringLiteral("start"));
  if (isOfPass ? hasStart : !hasStart && !arguments.Has(QStringLiteral("picture"))) {
    throw UsageError(
        QStringLiteral("Name the pass by either --start or --pass, or give a --picture that tells its time"));
  }
  if (arguments.Has(QStringLiteral("lines")) && arguments.Has(QStringLiteral("picture"))) {
    throw UsageError(QStringLiteral("--lines and --picture exclude each other"));
  }
  if (arguments.Has(QStringLiteral("minute-marks")) && arguments.Has(QStringLiteral("time-correction"))) {
    throw UsageError(QStringLiteral("--minute-marks and --time-correction exclude each other"));
  }
  const app::Settings& settings = arguments.Settings();
  std::optional<overlay::OpenedPicture> opened = OpenReceived(arguments);
  const int rows = arguments.Whole(QStringLiteral("lines"), 0, 1, 20000);
  OverlayRequest request = isOfPass ? DescribePass(arguments, arguments.Station(), opened, rows)
                                    : DescribePicture(arguments, arguments.Station(), opened, rows);
  // Its pixels are as many again as the map's, and have told what they know.
  opened.reset();
  request.Overlay = MarksOf(arguments);
  request.PassDetails =
      settings.SavePassDetails.Value || arguments.Has(QStringLiteral("pass-details")) || isOfPass;
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
