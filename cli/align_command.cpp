#include "align/alignment_text.h"
#include "cli/commands.h"
#include "cli/json_text.h"
#include "cli/overlay_request.h"
#include "cli/overlay_sources.h"
#include "cli/picture_aligner.h"
#include "cli/recording_options.h"
#include "cli/table.h"
#include "orbit/julian_date.h"
#include "swath/recording_text.h"

namespace pelorin::cli {
namespace {

using swath::Recording;

const char* NameOf(align::Finding finding) {
  switch (finding) {
    case align::Finding::Found:
      return "found";
    case align::Finding::Roughly:
      return "roughly";
    default:
      return "not found";
  }
}

/// Why there is nothing, or nothing better.
QString ReasonOf(const align::PictureAlignment& alignment) {
  if (alignment.StoredAs) {
    return QStringLiteral("The picture is stored %1.").arg(swath::WordsOf(*alignment.StoredAs));
  }
  if (alignment.Is == align::Finding::NotFound) return align::TextOf(alignment.Reason);
  if (alignment.Is == align::Finding::Found) return {};
  return (QStringLiteral("To about 2 s, please check. ") + alignment.NoShores).trimmed();
}

/// What is to be added to a recording, beyond what another has already.
ordered_json OffsetsOf(const Recording& recording, const Recording& beyond) {
  return {{"time_s", JsonRounded(recording.OffsetS - beyond.OffsetS)},
          {"shift_columns", JsonRounded(recording.ShiftColumns - beyond.ShiftColumns)},
          {"roll_deg", JsonRounded(recording.Offsets.RollDeg - beyond.Offsets.RollDeg)},
          {"pitch_deg", JsonRounded(recording.Offsets.PitchDeg - beyond.Offsets.PitchDeg)},
          {"yaw_deg", JsonRounded(recording.Offsets.YawDeg - beyond.Offsets.YawDeg)}};
}

ordered_json WindowsOf(const align::PictureAlignment& alignment) {
  ordered_json windows = ordered_json::array();
  for (const align::VotingWindow& window : alignment.Windows) {
    windows.push_back({{"column", JsonRounded(window.Middle.Column)},
                       {"row", JsonRounded(window.Middle.Row)},
                       {"columns", 2 * window.HalfColumns},
                       {"rows", 2 * window.HalfRows},
                       {"misfit_columns", JsonRounded(window.MisfitColumns)},
                       {"misfit_rows", JsonRounded(window.MisfitRows)},
                       {"votes", JsonRounded(window.Votes, 1000)}});
  }
  return windows;
}

ordered_json ToJson(const overlay::OpenedPicture& opened, const AlignedPicture& aligned) {
  const align::PictureAlignment& alignment = aligned.Alignment;
  const Recording& recording = alignment.Aligned;
  const orbit::TSatellite& set = *recording.Elements;
  return {{"picture", opened.Channel.Path.toStdString()},
          {"channels", aligned.Channels},
          {"satellite", recording.Satellite.toStdString()},
          {"catalogue_number", set.CatalogueNumber},
          {"epoch_utc", JsonUtc(orbit::DateTimeOfJulianDate(set.Epoch))},
          {"start_utc", JsonUtc(recording.Start)},
          {"aligned_start_utc", JsonUtc(recording.FirstLine())},
          {"result", NameOf(alignment.Is)},
          {"reason", ReasonOf(alignment).toStdString()},
          {"offsets", OffsetsOf(recording, {})},
          {"changes", OffsetsOf(recording, aligned.Known)},
          {"chance_peaks", alignment.ChancePeaks},
          {"halves_agree", alignment.HalvesAgree},
          {"gate", JsonRounded(alignment.Gate)},
          {"windows", WindowsOf(alignment)},
          {"milliseconds", aligned.Milliseconds}};
}

QString ToText(const AlignedPicture& aligned) {
  const align::PictureAlignment& alignment = aligned.Alignment;
  QString text = align::TextOf(alignment, aligned.Known) + u'\n';
  if (alignment.Is != align::Finding::NotFound) {
    text += QStringLiteral("in all: %1\n").arg(align::MovedText({}, alignment.Aligned));
  }
  return text;
}

}  // namespace

void RunAlign(const QStringList& list) {
  std::vector<Option> options = RecordingOptions();
  for (const Option& option : AlignOptions()) options.push_back(option);
  options.push_back(MasterOption());
  options.push_back(
      {QStringLiteral("format"), QStringLiteral("json|text"), QStringLiteral("Default: json.")});
  const Arguments arguments(
      QStringLiteral("align"),
      QStringLiteral("Finds where a received picture lies, by its coasts: by how much its time is off, how "
                     "its lines were cut, roll and yaw. The result is \"found\" (to a line and a column), "
                     "\"roughly\" (to about 2 s, please check) or \"not found\", and why; the exit status is "
                     "0 in all three. All channels of the recording are looked at together."),
      options, list);
  arguments.Required(QStringLiteral("picture"));
  CheckRecordingOptions(arguments);
  const bool isJson =
      arguments.Choice(QStringLiteral("format"), {QStringLiteral("json"), QStringLiteral("text")}) ==
      QStringLiteral("json");
  const auto opened = OpenReceived(arguments);
  const Recording known = DescribeMap(arguments, opened, 0).Picture;
  const overlay::MapSources sources = OpenMasterAlone(arguments);
  const AlignedPicture aligned = AlignReceived(arguments, *opened, known, sources);
  PrintOut(isJson ? JsonText(ToJson(*opened, aligned)) : ToText(aligned));
  RequireAlignment(arguments, aligned);
  RememberAlignment(arguments, *opened, aligned);
}

}  // namespace pelorin::cli
