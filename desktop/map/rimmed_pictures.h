#pragma once

#include <QFont>
#include <QHash>
#include <QPixmap>
#include <QRgb>

#include "desktop/map/device_pixels.h"
#include "map/drawing_list.h"

namespace pelorin::desktop {

/// Labels and signs of the map's layers. Each is drawn once, with a thin rim that sets it off against
/// whatever lies below, light for a dark colour and dark for a light one, and then only copied.
class RimmedPictures {
 public:
  enum class Sign {
    Mark,        ///< outline of a square, 5 × 5
    TrailPoint,  ///< a pixel and its four neighbours
  };

  /// The colour of a rim; `opacity` up to 255.
  static QColor RimOf(QRgb colour, int opacity);

  RimmedPictures();

  /// A text's size without its rim, in logical pixels; good while this object lives.
  map::MeasureText Measure() const;

  // For a painter whose unit is a device pixel.
  void DrawText(QPainter& painter, const DevicePixels& pixels, const map::PlacedText& text, QRgb colour);
  void DrawSign(QPainter& painter, const DevicePixels& pixels, Sign sign, QPoint middle, QRgb colour);

  /// Forgets every picture; they are kept until then.
  void Clear();

 private:
  void UseRatio(double ratio);

  QFont font_;
  double ratio_ = 0;  ///< of the pictures at hand
  QHash<QPair<QString, QRgb>, QPixmap> texts_;
  QHash<QPair<int, QRgb>, QPixmap> signs_;
};

}  // namespace pelorin::desktop
