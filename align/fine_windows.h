#pragma once

#include <functional>
#include <span>
#include <vector>

#include "align/fine_land.h"
#include "align/plane.h"

/// Small windows of a picture, and how well the land fits each when it is moved a little.
namespace pelorin::align {

/// In samples of the frame.
struct WindowLayout {
  int Rows = 40, Columns = 56;          ///< of a window; neighbours share half of each other
  int RowReach = 14, ColumnReach = 12;  ///< how far the land is moved
  /// A vote counts as far as it is so many times more than the window's mean.
  double Backgrounds = 2;
  double MostVote = 1.2;  ///< of one window
  int Most = 400;         ///< windows; those with most of a coast are taken
};

/// The votes of a window for moves of the land, a cubic spline between whole ones.
class FineWindow {
 public:
  /// `votes`: rows and columns of moves, from −reach to reach.
  FineWindow(swath::PixelPoint middle, Raster<double> votes);

  /// Of the window, in the frame.
  const swath::PixelPoint& Middle() const { return middle_; }
  /// How well the picture shows at the window's place what the map has so many rows and columns farther on;
  /// 0 beyond the reach.
  double Votes(double rows, double columns) const;
  /// The votes themselves.
  const Raster<double>& Whole() const { return votes_; }

 private:
  swath::PixelPoint middle_;
  Raster<double> votes_, spline_;
};

/// How much a window with its middle there can be hoped to show its coast.
using Promise = std::function<double(swath::PixelPoint middle)>;

/// The windows of pictures of a frame that have a coast in them and vote for something. `land` has a margin
/// of `margin` samples, which is both reaches at least. `contrasts` are as large as the frame, `seen` alike.
/// Of too many windows those are taken that have most of a coast, times what `promise` says of them, if it
/// says anything. `afterWindow` is called now and then; what it raises ends the work.
std::vector<FineWindow> WindowsWithCoasts(std::span<const Plane> contrasts, const GreyPlane& seen,
                                          const Plane& land, int margin, const WindowLayout& layout,
                                          const Promise& promise, const std::function<void()>& afterWindow);

}  // namespace pelorin::align
