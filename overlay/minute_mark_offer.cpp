#include "overlay/minute_mark_offer.h"

#include <algorithm>
#include <cmath>

#include "orbit/model_constants.h"
#include "overlay/opened_picture.h"
#include "picture/minute_marks.h"
#include "swath/apt_line.h"
#include "swath/clock_corrections.h"

namespace pelorin::overlay {
namespace {

/// Marks are no finer than half a line.
constexpr double kNotableS = 0.25;
/// A start cut to the minute is never too late; so much of an error is the marks'.
constexpr double kMostLateS = 1;

bool CarriesMarks(const swath::Instrument& scanner) {
  return scanner.Line.Law != swath::ScanLaw::EvenAngles &&
         std::lround(scanner.RowsPerSecond * orbit::kSecondsPerMinute) == picture::kMarkedLinesPerMinute;
}

}  // namespace

std::vector<int> FindMinuteMarkLines(const QImage& picture, const swath::Recording& recording) {
  if (!CarriesMarks(recording.SeenBy)) return {};
  const int end = recording.FirstColumn;
  const int begin = std::max(end - (swath::kSpaceEnd - swath::kSyncEnd), 0);
  return picture::FindMinuteMarks(Restored(picture, recording.Lies, {}).convertToFormat(QImage::Format_RGB32),
                                  begin, end - begin);
}

std::optional<MinuteMarkOffer> OfferByMarks(const std::vector<int>& lines,
                                            const swath::Recording& recording) {
  if (recording.StartIsFrom == swath::StartFrom::Pass) return std::nullopt;
  const double rate = recording.SeenBy.RowsPerSecond;
  // As if they followed each other without gaps.
  std::vector<int> rows;
  for (const int line : lines) {
    const double seconds = recording.SecondsOfLine(line);
    if (std::isfinite(seconds)) rows.push_back(static_cast<int>(std::lround(seconds * rate)));
  }
  const double secondOfStart =
      std::fmod(recording.FirstLine().Days * orbit::kSecondsPerDay, orbit::kSecondsPerMinute);
  const auto later =
      picture::ClockOffsetFromMarks(rows, rate, secondOfStart, recording.SeenBy.MarkSecond.value_or(0));
  if (!later) return std::nullopt;
  MinuteMarkOffer offer{0, std::round(*later * 10) / 10, recording.SeenBy.MarkSecond.has_value()};
  const bool isCut = recording.StartIsFrom == swath::StartFrom::NameMinute && recording.OffsetS == 0;
  if (isCut && offer.LaterS < -kMostLateS) offer.LaterS += orbit::kSecondsPerMinute;
  offer.OffsetS = swath::ToOffsetStep(recording.OffsetS + offer.LaterS);
  return std::fabs(offer.LaterS) < kNotableS ? std::nullopt : std::optional(offer);
}

QString TextOf(const MinuteMarkOffer& offer, const QString& satellite) {
  const QString text = QStringLiteral("Minute marks: begin %1 s %2")
                           .arg(std::fabs(offer.LaterS), 0, 'f', 1)
                           .arg(offer.LaterS < 0 ? QStringLiteral("earlier") : QStringLiteral("later"));
  return offer.IsMeasured ? text : text + QStringLiteral(", if %1 marks full minutes").arg(satellite);
}

}  // namespace pelorin::overlay
