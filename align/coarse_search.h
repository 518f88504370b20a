#pragma once

#include <optional>
#include <span>

#include "align/coast_votes.h"
#include "align/sample_mesh.h"
#include "swath/surface.h"

namespace pelorin::align {

/// Where a picture lies along the flight, to a cell or so, and how sure that is.
struct CoarsePlace {
  double TimeS = 0;  ///< to be added to the recording's start
  double YawCells = 0;
  AcrossMove Across;
  /// How many peaks like this one chance would bring forth within the range; at most the number of places.
  double ChancePeaks = 0;
  bool HalvesAgree = false, IsAtEnd = false;
  int CoastWindows = 0;

  /// Chance is ruled out; peaks far off the middle across the track are more often chance's.
  bool IsSure() const;
};

/// Searches `rangeS` either way. Nothing when the work was ended.
std::optional<CoarsePlace> SearchAlong(const SampleMesh& mesh, std::span<const PictureCells> pictures,
                                       const swath::SurfaceOfLine& surfacesOf, double rangeS,
                                       const AfterStep& afterStep);

/// What is tried across and in yaw for a recording.
VoteGrid GridFor(const swath::Recording& recording, const SampleMesh& mesh);

}  // namespace pelorin::align
