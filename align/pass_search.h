#pragma once

#include <QImage>
#include <QSize>
#include <optional>
#include <span>
#include <vector>

#include "align/picture_alignment.h"
#include "orbit/observer.h"
#include "orbit/satellite.h"
#include "swath/scanner_table.h"

/// Which pass a picture is of, by its coasts.
namespace pelorin::align {

/// A pass that a picture may be of.
struct PassCandidate {
  /// Of the picture, if it were of this pass; its start is when the satellite rises (or what is known).
  swath::Recording Recording;
  double LengthS = 0;  ///< of the pass
  double MarginS =
      240;  ///< the first line may be so long before the rise, the last one so long after the set
};

/// The best place of a picture in a pass, stored in one way.
struct PassPlace {
  std::size_t Candidate = 0;
  swath::Stored Lies;
  double TimeS = 0;  ///< to be added to the candidate's start
  /// How far the place stands out from all places of all passes: in deviations (half of the places are less
  /// than one from their middle).
  double Score = 0;
};

struct PassSearch {
  std::vector<PassPlace> Places;  ///< one for each pass and way, best first; empty when it was ended
  /// The best score, as a multiple of the best one of another pass or way.
  double Margin = 0;
  /// The best place aligned, when it stands out by kClearMargin at least; its chance peaks are those of all
  /// passes together.
  std::optional<PictureAlignment> Best;

  /// The picture is of the best place's pass: no other comes near, and it is aligned there.
  bool IsClear() const;
};
inline constexpr double kClearMargin = 1.6;

/// The passes of satellites over a station that a picture may be of: those of satellites that are known to
/// send pictures of its width. In days from 00:00 UTC of a date on, in the order of the satellites.
std::vector<PassCandidate> CandidatesOf(QSize picture, std::span<const orbit::TSatellite> satellites,
                                        const swath::ScannerTable& scanners, const orbit::Observer& station,
                                        orbit::TDateTime from, int days);

/// Looks for the pictures of one recording, its channels, in all candidates, stored in each of the ways.
/// Works on two threads; `afterStep` is called on the caller's own.
PassSearch FindPass(std::span<const PassCandidate> candidates, std::span<const swath::Stored> ways,
                    std::span<const QImage> channels, const Ground& ground, const AfterStep& afterStep);

/// The same, as received and turned; where none is clear also with left and right exchanged.
PassSearch FindPassAndWay(std::span<const PassCandidate> candidates, std::span<const QImage> channels,
                          const Ground& ground, const AfterStep& afterStep);

/// AlignPicture; and of a picture that is not found though coasts are below it, whether it would be if it
/// were stored turned, or with left and right exchanged.
PictureAlignment AlignInAnyWay(const swath::Recording& recording, std::span<const QImage> channels,
                               const Ground& ground, const SearchRange& range, const AfterStep& afterStep);

}  // namespace pelorin::align
