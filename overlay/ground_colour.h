#pragma once

#include <QImage>
#include <cstdint>
#include <span>

#include "overlay/master_view.h"
#include "overlay/topography.h"
#include "swath/ground_line.h"

/// From ground points to colours.
namespace pelorin::overlay {

/// Where the ground's own colour comes from: elevations, or a plain map of the world in plate carrée with
/// 180° W at its left edge and the north pole at its upper one. With neither the ground is black. Pictures
/// and mappings are borrowed.
struct GroundSource {
  const Topography* Elevations = nullptr;
  const QImage* BaseImage = nullptr;  ///< of 24 or 32 bits; any other kind gives black
};

/// What of the overlay master covers the ground.
enum class Marks {
  None,
  Lines,  ///< boundaries and grid; land and water are left to the ground's own colours
  All,    ///< everything but the master's background
};

/// What the user's two ticks come to: "Overlay lines only" and "Show overlay".
Marks ChosenMarks(bool linesOnly, bool showOverlay);

/// Colours the points of lines. Everything given must outlive it.
class GroundColours {
 public:
  /// `master` may be null: the index is then the background's everywhere, and nothing covers the ground.
  GroundColours(GroundSource source, const MasterView* master, Marks marks);

  void SetMarks(Marks marks) { marks_ = master_ ? marks : Marks::None; }

  /// One line of points, to colours (0xFFRRGGBB) and master indices, in the order of `line` and of its
  /// length.
  void ColourLine(const swath::GroundLine& line, std::span<std::uint32_t> colours,
                  std::span<std::uint8_t> indices) const;

 private:
  /// The base image's pixels of one row; kept while points stay in the row.
  struct BaseRow {
    int number = -1;
    const QRgb* pixels = nullptr;
  };
  std::uint32_t BaseColour(int southMin, int eastMin, BaseRow& row) const;

  const Topography* elevations_;
  QImage base_;
  const MasterView* master_;
  Marks marks_ = Marks::None;
};

}  // namespace pelorin::overlay
