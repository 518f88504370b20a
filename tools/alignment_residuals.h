#pragma once

#include <QImage>
#include <array>
#include <vector>

#include "tools/alignment_pictures.h"

/// How far coasts in a picture lie from those of its map, window by window.
namespace pelorin::tools {

/// A window that tells its own place: no other place round it fits nearly as well.
struct CoastResidual {
  swath::PixelPoint Middle;      ///< in the file
  double Position = 0;           ///< of its middle, as a column from the middle of the scanner's line
  double Columns = 0, Rows = 0;  ///< how far from the map's coast the picture's lies, in the file
  double Votes = 0;              ///< at its best place
};

/// Of a picture against the map of a recording; all channels.
std::vector<CoastResidual> ResidualsOf(const swath::Recording& recording, const std::vector<QImage>& channels,
                                       const align::Ground& ground);

/// Medians of the windows in each fifth of the line, from the file's left to its right.
struct FifthOfLine {
  int Windows = 0;
  double Columns = 0, Rows = 0;
};
inline constexpr int kFifths = 5;
std::array<FifthOfLine, kFifths> FifthsOf(const swath::Recording& recording,
                                          const std::vector<CoastResidual>& residuals);

/// The map's coasts with the windows and their residuals, `times` as long as they are: green within half a
/// pixel, orange within one, red beyond. Nothing of the picture is in it.
QImage DrawResiduals(const swath::Recording& recording, const std::vector<CoastResidual>& residuals,
                     const lines::FineLines& shores, double times);

}  // namespace pelorin::tools
