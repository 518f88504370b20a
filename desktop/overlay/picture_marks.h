#pragma once

#include <QPointF>
#include <QString>
#include <memory>
#include <vector>

#include "align/movable_lines.h"
#include "swath/pixel_geometry.h"

class QPainter;
class QRect;
class QSize;

namespace pelorin::desktop {

/// What is drawn over a picture on the screen, in the picture's pixels: nothing of it gets into files.
struct PictureMarks {
  std::shared_ptr<const align::MovedLines> Lines;  ///< null for none

  /// A place that somebody has shown, with what is to be said of it.
  struct Point {
    swath::PixelPoint At;
    QString Text;
    bool IsChosen = false, IsLeftOut = false;
  };
  std::vector<Point> Points;

  /// A part of the picture whose coast was recognised.
  struct Window {
    swath::PixelPoint Middle;
    double HalfColumns = 0, HalfRows = 0;
    /// How far from the map the picture's coast lies in it.
    double MisfitColumns = 0, MisfitRows = 0;
  };
  std::vector<Window> Windows;

  bool IsEmpty() const { return Lines == nullptr && Points.empty() && Windows.empty(); }
};

/// How many times as long as they are misfits are drawn.
inline constexpr int kMisfitEnlarged = 10;

/// Where a picture's pixels lie on a view that shows it stretched.
class ViewScale {
 public:
  ViewScale(const QSize& picture, const QSize& view);

  double Across() const { return across_; }
  double Down() const { return down_; }
  QPointF OnView(const swath::PixelPoint& pixel) const {
    return {(pixel.Column + 0.5) * across_, (pixel.Row + 0.5) * down_};
  }
  swath::PixelPoint InPicture(QPointF place) const {
    return {place.x() / across_ - 0.5, place.y() / down_ - 0.5};
  }

 private:
  double across_, down_;
};

/// Paints what lies in a part of the view: lines with a dark edge, to be seen on every picture.
void PaintMarks(QPainter& painter, const PictureMarks& marks, const ViewScale& scale, const QRect& seen);

}  // namespace pelorin::desktop
