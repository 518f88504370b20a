#pragma once

#include "align/picture_alignment.h"

/// What was found, in words: window and console say the same.
namespace pelorin::align {

/// How probably chance found the place, "fewer than 1 in 10,000" pictures for example.
QString ChanceText(double chancePeaks);

/// How a recording was moved: "1.24 s later, 0.30° less yaw"; "where it lies already" for not at all. Times
/// as exactly as they are shown, to the second `roughly`.
QString MovedText(const swath::Recording& before, const swath::Recording& after, bool roughly = false);

/// The result of an alignment in a sentence or two, of a recording as it was before; empty for one that was
/// stopped.
QString TextOf(const PictureAlignment& alignment, const swath::Recording& before);

}  // namespace pelorin::align
