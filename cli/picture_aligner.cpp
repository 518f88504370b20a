#include "cli/picture_aligner.h"

#include "align/alignment_log.h"
#include "align/alignment_text.h"
#include "align/pass_search.h"
#include "app/program_paths.h"
#include "cli/coast_ground.h"
#include "cli/progress_line.h"
#include "overlay/recording_channels.h"

namespace pelorin::cli {
namespace {

const QString kRange = QStringLiteral("range"), kRemember = QStringLiteral("remember"),
              kRequire = QStringLiteral("require-align");
constexpr double kLeastRangeS = 10, kMostRangeS = 900;

}  // namespace

std::vector<Option> AlignOptions() {
  return {{kRange, QStringLiteral("SECONDS"),
           QStringLiteral("How far the time may be off either way, 10 to 900. Default: 600.")},
          {kRemember,
           {},
           QStringLiteral("Write the alignment into the log of alignments: the picture then opens aligned.")},
          {kRequire, {}, QStringLiteral("Fail, with status 4, when no alignment is found.")}};
}

AlignedPicture AlignReceived(const Arguments& arguments, const overlay::OpenedPicture& opened,
                             const swath::Recording& known, const overlay::MapSources& sources) {
  const CoastGround ground(sources);
  const align::SearchRange range{
      arguments.Number(kRange, align::SearchRange().TimeS, kLeastRangeS, kMostRangeS)};
  const std::vector<QImage> channels = overlay::ChannelsOfRecording(opened, Say);

  AlignedPicture aligned{known, {}, static_cast<int>(channels.size()), 0};
  ProgressLine progress(QStringLiteral("Aligning"));
  aligned.Alignment =
      align::AlignInAnyWay(known, channels, ground.Borrowed(), range, [&progress](double share) {
        progress.Show(share);
        return true;
      });
  aligned.Milliseconds = progress.Milliseconds();
  return aligned;
}

void RequireAlignment(const Arguments& arguments, const AlignedPicture& aligned) {
  if (aligned.Alignment.Is != align::Finding::NotFound || !arguments.Has(kRequire)) return;
  throw NotAligned(align::TextOf(aligned.Alignment, aligned.Known));
}

void RememberAlignment(const Arguments& arguments, const overlay::OpenedPicture& opened,
                       const AlignedPicture& aligned) {
  const align::PictureAlignment& alignment = aligned.Alignment;
  if (alignment.Is == align::Finding::NotFound || !arguments.Has(kRemember)) return;
  align::AlignmentLog log(app::AlignmentLogFile());
  log.Add(align::Logged(
      alignment.Aligned, opened.Channel.Path,
      alignment.Is == align::Finding::Found ? align::FoundBy::Coasts : align::FoundBy::CoastsRoughly,
      alignment.ChancePeaks, orbit::NowUTC()));
  Say(QStringLiteral("Remembered in %1").arg(log.Path()));
}

}  // namespace pelorin::cli
