#pragma once

#include <QPainter>
#include <QPoint>
#include <QSize>
#include <QtMath>

namespace pelorin::desktop {

/// The map is worked out in logical pixels and painted in those of the device, so that every line is as wide
/// as the next and small pictures are copied pixel by pixel, whatever the ratio between the two.
class DevicePixels {
 public:
  explicit DevicePixels(double ratio) : ratio_(ratio) {}
  /// Of a painter that was just begun on a widget or a pixmap: its unit becomes a device pixel.
  explicit DevicePixels(QPainter& painter) : ratio_(painter.device()->devicePixelRatioF()) {
    painter.scale(1 / ratio_, 1 / ratio_);
  }

  double Ratio() const { return ratio_; }
  /// Width of a line, one pixel.
  int LineWidth() const { return qMax(1, qRound(ratio_)); }
  /// The middle of a pixel, as lines without antialiasing take it.
  QPointF Middle(QPoint pixel) const {
    return {(pixel.x() + 0.5) * ratio_ - 0.5, (pixel.y() + 0.5) * ratio_ - 0.5};
  }
  /// Upper left corner of a picture that is centred on a pixel; its size is in device pixels.
  QPoint Centred(QPoint pixel, QSize size) const {
    return {qFloor((pixel.x() + 0.5) * ratio_ - size.width() / 2.0),
            qFloor((pixel.y() + 0.5) * ratio_ - size.height() / 2.0)};
  }
  QPoint Corner(QPoint pixel) const { return {qRound(pixel.x() * ratio_), qRound(pixel.y() * ratio_)}; }
  QSize Size(QSize size) const { return {qCeil(size.width() * ratio_), qCeil(size.height() * ratio_)}; }

 private:
  double ratio_;
};

}  // namespace pelorin::desktop
