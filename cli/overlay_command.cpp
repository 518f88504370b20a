#include <QDir>
#include <QFileInfo>

#include "align/alignment_text.h"
#include "cli/commands.h"
#include "cli/options.h"
#include "cli/overlay_request.h"
#include "cli/overlay_sources.h"
#include "cli/picture_aligner.h"
#include "cli/recording_options.h"
#include "cli/table.h"
#include "overlay/overlay_outputs.h"
#include "overlay/overlay_text.h"

namespace pelorin::cli {
namespace {

using overlay::OverlayRequest;

const QString kAlign = QStringLiteral("align");

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

std::vector<Option> MapOptions() {
  std::vector<Option> options = RecordingOptions();
  const Option own[] = {
      {QStringLiteral("minutes"), QStringLiteral("N"),
       QStringLiteral(
           "Length of the map, 1 to 30. Default: as long as the pass, the rows or the picture, else 15.")},
      {QStringLiteral("lines"), QStringLiteral("N"),
       QStringLiteral("Rows of the map. Default: as many as the pass has lines.")},
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
      {kAlign,
       {},
       QStringLiteral(
           "Align the picture by its coasts first, as \"pelorin-cli align\" does. Where that finds "
           "nothing the map is as without it.")}};
  options.insert(options.end(), std::begin(own), std::end(own));
  for (const Option& option : AlignOptions()) {
    options.push_back({option.Name, option.Value, QStringLiteral("With --align: ") + option.Description});
  }
  return options;
}

void CheckOptions(const Arguments& arguments) {
  CheckRecordingOptions(arguments);
  const bool hasPicture = arguments.Has(QStringLiteral("picture"));
  if (arguments.Has(QStringLiteral("lines")) && hasPicture) {
    throw UsageError(QStringLiteral("--lines and --picture exclude each other"));
  }
  const bool aligns = arguments.Has(kAlign);
  if (aligns && !hasPicture) throw UsageError(QStringLiteral("--align goes with --picture"));
  for (const Option& option : AlignOptions()) {
    if (!aligns && arguments.Has(option.Name)) {
      throw UsageError(QStringLiteral("--%1 goes with --align").arg(option.Name));
    }
  }
}

/// The map is of the aligned recording; as it was where none was found.
void Align(const Arguments& arguments, const overlay::OpenedPicture& opened,
           const overlay::MapSources& sources, OverlayRequest& request) {
  const AlignedPicture aligned = AlignReceived(arguments, opened, request.Picture, sources);
  RequireAlignment(arguments, aligned);
  Say(QStringLiteral("Alignment: ") + align::TextOf(aligned.Alignment, aligned.Known));
  RememberAlignment(arguments, opened, aligned);
  request.Picture = aligned.Alignment.Aligned;
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
      MapOptions(), list);
  CheckOptions(arguments);
  const bool isOfPass = arguments.Has(QStringLiteral("pass"));
  const app::Settings& settings = arguments.Settings();
  std::optional<overlay::OpenedPicture> opened = OpenReceived(arguments);
  OverlayRequest request =
      DescribeMap(arguments, opened, arguments.Whole(QStringLiteral("lines"), 0, 1, 20000));
  request.Overlay = MarksOf(arguments);
  request.PassDetails =
      settings.SavePassDetails.Value || arguments.Has(QStringLiteral("pass-details")) || isOfPass;
  for (std::size_t i = 0; i < request.TextItems.size(); ++i) {
    request.TextItems[i] = overlay::MaskItems(settings.OvlTextLine[i].Value);
  }
  const QString results = ResultsFolder(arguments);
  const overlay::MapSources sources = OpenSources(arguments);
  if (arguments.Has(kAlign)) Align(arguments, *opened, sources, request);
  // Its pixels are as many again as the map's, and have told what they know.
  opened.reset();
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
