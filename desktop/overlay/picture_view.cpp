#include "desktop/overlay/picture_view.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cstring>
#include <utility>

namespace pelorin::desktop {
TPictureView::TPictureView(QWidget* parent) : QWidget(parent) { setAutoFillBackground(true); }

void TPictureView::SetEmptyText(const QString& text) {
  emptyText_ = text;
  setAccessibleDescription(text);
  update();
}

void TPictureView::SetPicture(const QImage& picture) {
  if (!isBeingMade_ && picture.cacheKey() == picture_.cacheKey()) return;
  picture_ = picture;
  below_ = {};
  isBeingMade_ = false;
  setAttribute(Qt::WA_OpaquePaintEvent, !picture.isNull());
  update();
}

void TPictureView::SetLayer(const overlay::MapLayer& layer, int opacityPercent) {
  if (layer.Map.isNull() && layer_.Map.isNull()) return;
  layer_ = layer;
  opacityPercent_ = opacityPercent;
  below_ = {};
  update();
}

void TPictureView::SetMarks(PictureMarks marks) {
  if (marks.IsEmpty() && marks_.IsEmpty()) return;
  marks_ = std::move(marks);
  if (marks_.IsEmpty()) below_ = {};
  update();
}

void TPictureView::Begin(QSize size) {
  QImage black(size, QImage::Format_RGB32);
  black.fill(Qt::black);
  SetPicture(black);
  isBeingMade_ = true;
}

void TPictureView::TakeRows(const QImage& source, int first, int end) {
  if (first >= end || picture_.isNull()) return;
  for (int row = first; row < end; ++row) {
    std::memcpy(picture_.scanLine(row), source.constScanLine(row),
                static_cast<std::size_t>(std::min(picture_.bytesPerLine(), source.bytesPerLine())));
  }
  below_ = {};
  const double scale = static_cast<double>(height()) / picture_.height();
  const int top = static_cast<int>(first * scale) - 1, bottom = static_cast<int>(end * scale) + 1;
  update(0, top, width(), bottom - top + 1);
}

void TPictureView::PaintEmptyText(QPainter& painter) const {
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

QImage TPictureView::Rows(int first, int end) const {
  return overlay::BlendRows(picture_, layer_, opacityPercent_, first, end);
}

void TPictureView::PaintSmaller(QPainter& painter, const QRect& seen) const {
  // Lines of one pixel would break up if pixels were left out: each counts. Bands are always the same ones,
  // or rows would shift against each other while the picture is scrolled.
  constexpr int bandHeight = 64;
  const double ratio = devicePixelRatioF();
  const auto rowAt = [this](int y) { return static_cast<int>(qint64{y} * picture_.height() / height()); };
  for (int top = seen.top() / bandHeight * bandHeight; top <= seen.bottom(); top += bandHeight) {
    const int bottom = std::min(top + bandHeight, height());
    const int first = rowAt(top), end = std::max(first + 1, rowAt(bottom));
    QImage band = Rows(first, end)
                      .scaled(qRound(width() * ratio), qRound((bottom - top) * ratio), Qt::IgnoreAspectRatio,
                              Qt::SmoothTransformation);
    band.setDevicePixelRatio(ratio);
    painter.drawImage(0, top, band);
  }
}

void TPictureView::PaintPlain(QPainter& painter, const QRect& seen) const {
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const double across = static_cast<double>(picture_.width()) / width();
  const double down = static_cast<double>(picture_.height()) / height();
  // Enlarged rows take in their neighbours.
  const int first = std::max(0, static_cast<int>(seen.top() * down) - 1);
  const int end = std::min(picture_.height(), static_cast<int>((seen.bottom() + 1) * down) + 2);
  painter.drawImage(
      QRectF(seen), Rows(first, end),
      QRectF(seen.x() * across, seen.y() * down - first, seen.width() * across, seen.height() * down));
}

void TPictureView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (picture_.isNull()) {
    PaintEmptyText(painter);
    return;
  }
  const QRect seen = event->rect() & rect();
  if (marks_.IsEmpty()) return PaintPicture(painter, seen);
  PaintBelowMarks(painter, seen);
  PaintMarks(painter, marks_, Scale(), seen);
}

void TPictureView::resizeEvent(QResizeEvent*) { below_ = {}; }

void TPictureView::PaintBelowMarks(QPainter& painter, const QRect& seen) {
  // To scale a picture takes longer than to draw all lines.
  if (below_.isNull() || !belowIs_.contains(seen)) {
    belowIs_ = visibleRegion().boundingRect() | seen;
    const double ratio = devicePixelRatioF();
    below_ = QImage(belowIs_.size() * ratio, QImage::Format_RGB32);
    below_.setDevicePixelRatio(ratio);
    QPainter below(&below_);
    below.translate(-belowIs_.topLeft());
    PaintPicture(below, belowIs_);
  }
  painter.drawImage(belowIs_.topLeft(), below_);
}

void TPictureView::PaintPicture(QPainter& painter, const QRect& seen) const {
  const bool isSmaller = width() * devicePixelRatioF() < picture_.width();
  if (isSmaller && !isBeingMade_) {
    PaintSmaller(painter, seen);
  } else {
    PaintPlain(painter, seen);
  }
}

}  // namespace pelorin::desktop
