#include "desktop/map/paint_box_grid.h"

#include <QEvent>
#include <QPainter>

#include "map/map_grid.h"
#include "map/satellite_plot.h"

namespace pelorin::desktop {

TPaintBoxGrid::TPaintBoxGrid(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }

void TPaintBoxGrid::SetBackdrop(const QImage& picture) {
  backdrop_ = picture;
  Redraw();
}

void TPaintBoxGrid::SetFrame(const map::MapFrame& frame) {
  if (frame == frame_) return;
  frame_ = frame;
  Redraw();
}

void TPaintBoxGrid::Redraw() {
  layer_ = QPixmap();
  update();
}

void TPaintBoxGrid::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    pictures_.Clear();
    Redraw();
  }
}

void TPaintBoxGrid::paintEvent(QPaintEvent*) {
  if (frame_.IsEmpty()) return;
  QPainter painter(this);
  const DevicePixels pixels(painter);
  if (layer_.isNull() || layerRatio_ != pixels.Ratio()) layer_ = DrawLayer(pixels.Ratio());
  painter.drawPixmap(0, 0, layer_);
}

QPixmap TPaintBoxGrid::DrawLayer(double ratio) {
  const DevicePixels pixels(ratio);
  layerRatio_ = ratio;
  QPixmap layer(pixels.Size({frame_.Width, frame_.Height}));
  layer.fill(palette().color(QPalette::Window));
  QPainter painter(&layer);
  if (!backdrop_.isNull()) {
    painter.drawImage(0, 0, backdrop_.scaled(layer.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  const map::MapGrid grid = map::GridOf(frame_, pictures_.Measure());
  const auto drawLines = [&](const std::vector<map::Stroke>& lines, Qt::PenStyle style, Qt::PenCapStyle cap) {
    painter.setPen(QPen(Qt::white, pixels.LineWidth(), style, cap));
    for (const map::Stroke& line : lines) {
      painter.drawLine(pixels.Middle(line.front()), pixels.Middle(line.back()));
    }
  };
  drawLines(grid.Lines, Qt::SolidLine, Qt::SquareCap);
  drawLines(grid.Tropics, Qt::DotLine, Qt::FlatCap);
  // The backdrop is no darker in dark colours; without it the labels stand on the page's own ground.
  const QRgb textColour =
      backdrop_.isNull() ? palette().color(QPalette::WindowText).rgb() : map::kOtherColour;
  for (const map::PlacedText& label : grid.Labels) pictures_.DrawText(painter, pixels, label, textColour);
  return layer;
}

}  // namespace pelorin::desktop
