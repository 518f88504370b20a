#pragma once

#include <vector>

#include "align/sightings.h"
#include "lines/fine_lines.h"
#include "lines/pixel_lines.h"
#include "swath/recording.h"

namespace pelorin::align {

/// Lines in the pixels of a picture's file. They may go beyond its edges.
struct MovedLines {
  std::vector<lines::PixelLine> Shores;  ///< of seas and lakes
  std::vector<lines::PixelLine> Borders;
};

/// The lines of the ground that a recording shows, ready to be moved with every step of the mouse.
class MovableLines {
 public:
  /// Of a recording that has its size, scanner and elements. A tile of the file that is damaged raises
  /// FileError.
  MovableLines(const swath::Recording& base, const lines::FineLines& file);

  /// As a corrected recording of the same pass shows them; see Sightings for how exact. They end where lines
  /// of the picture are missing.
  MovedLines In(const swath::Recording& corrected) const;
  /// The same with fewer points, half a pixel beside their place at most, and without the smallest islands:
  /// for every step of the mouse.
  MovedLines QuickIn(const swath::Recording& corrected) const;

  const Sightings& Near() const { return near_; }
  /// The correction is so small that In is exact, and shows all there is.
  bool IsGoodFor(const swath::Recording& corrected) const;

 private:
  using SeenLine = std::vector<Sighting>;
  struct Level {
    std::vector<SeenLine> Shores, Borders;
  };
  /// Thins the lines.
  std::vector<SeenLine> SeenOf(std::vector<lines::PixelLine>& lines, double pixels) const;
  std::vector<lines::PixelLine> Moved(const std::vector<SeenLine>& lines,
                                      const swath::Recording& corrected) const;

  swath::Recording base_;
  Sightings near_;
  Level fine_, coarse_;
};

}  // namespace pelorin::align
