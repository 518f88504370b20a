#include "map/ui/paint_box_sats.h"

#include <QIcon>
#include <QMouseEvent>
#include <QPainter>
#include <QVarLengthArray>
#include <utility>

namespace pelorin::ui {
namespace {

using Sign = RimmedPictures::Sign;

constexpr int kSunSide = 32;

void DrawStrokes(QPainter& painter, const DevicePixels& pixels, const std::vector<map::Stroke>& strokes,
                 QRgb colour, Qt::PenStyle style) {
  if (strokes.empty()) return;
  painter.setPen(QPen(QColor(colour), pixels.LineWidth(), style, Qt::FlatCap));
  QVarLengthArray<QPointF, 64> points;
  for (const map::Stroke& stroke : strokes) {
    points.clear();
    for (const QPoint point : stroke) points.append(pixels.Middle(point));
    painter.drawPolyline(points.constData(), static_cast<int>(points.size()));
  }
}

}  // namespace

TPaintBoxSats::TPaintBoxSats(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::ClickFocus); }

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
  DrawStrokes(painter, pixels, drawing.Footprint, drawing.FootprintColour, Qt::SolidLine);
  DrawStrokes(painter, pixels, drawing.ScanLine, drawing.Colour, Qt::DotLine);
}

void TPaintBoxSats::DrawSun(QPainter& painter, const DevicePixels& pixels) const {
  // In device pixels already.
  QPixmap icon = window()->windowIcon().pixmap(QSize(kSunSide, kSunSide), pixels.Ratio());
  icon.setDevicePixelRatio(1);
  painter.drawPixmap(pixels.Centred(plot_.Sun, icon.size()), icon);
  DrawStrokes(painter, pixels, plot_.Terminator, map::kTerminatorColour, Qt::DashLine);
}

}  // namespace pelorin::ui
