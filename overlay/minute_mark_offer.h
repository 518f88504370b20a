#pragma once

#include <QImage>
#include <QString>
#include <optional>
#include <vector>

#include "swath/recording.h"

/// What the minute marks of the old picture format tell of a recording's clock.
namespace pelorin::overlay {

/// Lines, from 0 in the order of reception, with which minute marks begin; at least two, or none. Pictures of
/// other formats have none, nor has one that was cut to the image alone. `picture` is as its file has it, the
/// recording's Lies telling how that is.
std::vector<int> FindMinuteMarkLines(const QImage& picture, const swath::Recording& recording);

/// An offset that lays the marks on their second.
struct MinuteMarkOffer {
  double OffsetS = 0;      ///< the recording's, then
  double LaterS = 0;       ///< than the recording begins now; negative for earlier
  bool IsMeasured = true;  ///< when the spacecraft marks is known; otherwise full minutes are assumed
};

/// Nothing where there are no marks, the recording begins as they tell already, or when it began is not known
/// to the minute.
std::optional<MinuteMarkOffer> OfferByMarks(const std::vector<int>& lines, const swath::Recording& recording);

/// For the user: "Minute marks: begin 1.5 s later".
QString TextOf(const MinuteMarkOffer& offer, const QString& satellite);

}  // namespace pelorin::overlay
