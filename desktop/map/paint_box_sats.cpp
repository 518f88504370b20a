#include "desktop/map/paint_box_sats.h"

#include <QIcon>
#include <QMouseEvent>
#include <QPainter>
#include <QVarLengthArray>
#include <utility>

namespace pelorin::desktop {
namespace {

using Sign = RimmedPictures::Sign;

constexpr int kSunSide = 32;
/// A dark rim is the stronger one over the map.
constexpr int kLightRimOpacity = 90, kDarkRimOpacity = 45;

void DrawStrokes(QPainter& painter, const DevicePixels& pixels, const std::vector<map::Stroke>& strokes,
                 const QPen& pen) {
  painter.setPen(pen);
  QVarLengthArray<QPointF, 64> points;
  for (const map::Stroke& stroke : strokes) {
    points.clear();
    for (const QPoint point : stroke) points.append(pixels.Middle(point));
    painter.drawPolyline(points.constData(), static_cast<int>(points.size()));
  }
}

/// The few lines that the eye follows over the whole map, with a rim.
void DrawRimmedStrokes(QPainter& painter, const DevicePixels& pixels, const std::vector<map::Stroke>& strokes,
                       QRgb colour, Qt::PenStyle style, int rimOpacity) {
  QPen pen(QColor(colour), pixels.LineWidth(), style, Qt::FlatCap);
  QPen rim = pen;
  rim.setColor(RimmedPictures::RimOf(colour, rimOpacity));
  // Thin lines beside the line take a quarter of the time of a wide one below it.
  const int beside = pixels.LineWidth();
  for (const QPoint offset : {QPoint(beside, 0), QPoint(-beside, 0), QPoint(0, beside), QPoint(0, -beside)}) {
    painter.translate(offset);
    DrawStrokes(painter, pixels, strokes, rim);
    painter.translate(-offset);
  }
  DrawStrokes(painter, pixels, strokes, pen);
}

}  // namespace

TPaintBoxSats::TPaintBoxSats(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::ClickFocus); }

bool TPaintBoxSats::event(QEvent* event) {
  if (event->type() != QEvent::StatusTip) return QWidget::event(event);
  Q_EMIT TipAsked();
  return true;
}

void TPaintBoxSats::SetPlot(map::SatellitePlot plot) {
  plot_ = std::move(plot);
  update();
}

void TPaintBoxSats::Clear() {
  SetPlot({});
  pictures_.Clear();
}

void TPaintBoxSats::mousePressEvent(QMouseEvent* event) { event->accept(); }

void TPaintBoxSats::mouseReleaseEvent(QMouseEvent* event) { Q_EMIT MouseUp(event->position().toPoint()); }

void TPaintBoxSats::paintEvent(QPaintEvent*) {
  if (plot_.Terminator.empty()) return;
  QPainter painter(this);
  const DevicePixels pixels(painter);
  for (const map::SatelliteDrawing& drawing : plot_.Satellites) DrawSatellite(painter, pixels, drawing);
  DrawSun(painter, pixels);
}

void TPaintBoxSats::DrawSatellite(QPainter& painter, const DevicePixels& pixels,
                                  const map::SatelliteDrawing& drawing) {
  for (const QPoint point : drawing.Trail) {
    pictures_.DrawSign(painter, pixels, Sign::TrailPoint, point, drawing.Colour);
  }
  pictures_.DrawSign(painter, pixels, Sign::Mark, drawing.Mark, drawing.Colour);
  pictures_.DrawText(painter, pixels, drawing.Label, drawing.Colour);
  if (drawing.ScanLine.empty()) {
    DrawStrokes(painter, pixels, drawing.Footprint,
                QPen(QColor(drawing.FootprintColour), pixels.LineWidth(), Qt::SolidLine, Qt::FlatCap));
  } else {
    DrawRimmedStrokes(painter, pixels, drawing.Footprint, drawing.FootprintColour, Qt::SolidLine,
                      kLightRimOpacity);
    DrawRimmedStrokes(painter, pixels, drawing.ScanLine, drawing.Colour, Qt::DotLine, kLightRimOpacity);
  }
}

void TPaintBoxSats::DrawSun(QPainter& painter, const DevicePixels& pixels) const {
  // In device pixels already.
  QPixmap icon = window()->windowIcon().pixmap(QSize(kSunSide, kSunSide), pixels.Ratio());
  icon.setDevicePixelRatio(1);
  painter.drawPixmap(pixels.Centred(plot_.Sun, icon.size()), icon);
  DrawRimmedStrokes(painter, pixels, plot_.Terminator, map::kTerminatorColour, Qt::DashLine, kDarkRimOpacity);
}

}  // namespace pelorin::desktop
