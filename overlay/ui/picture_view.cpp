#include "overlay/ui/picture_view.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cstring>

namespace pelorin::ui {
namespace {

/// Pictures that take more on the screen are scaled where they are seen only.
constexpr qint64 kMostScaledPixels = 32'000'000;

}  // namespace

TPictureView::TPictureView(QWidget* parent) : QWidget(parent) { setAutoFillBackground(true); }

void TPictureView::SetEmptyText(const QString& text) {
  emptyText_ = text;
  setAccessibleDescription(text);
  update();
}

void TPictureView::SetPicture(const QImage& picture) {
  if (!isBeingMade_ && picture.cacheKey() == picture_.cacheKey()) return;
  picture_ = picture;
  scaled_ = QImage();
  isBeingMade_ = false;
  setAttribute(Qt::WA_OpaquePaintEvent, !picture.isNull());
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
  const double scale = static_cast<double>(height()) / picture_.height();
  const int top = static_cast<int>(first * scale) - 1, bottom = static_cast<int>(end * scale) + 1;
  update(0, top, width(), bottom - top + 1);
}

void TPictureView::PaintEmptyText(QPainter& painter) const {
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void TPictureView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (picture_.isNull()) {
    PaintEmptyText(painter);
    return;
  }
  const QSize pixels = size() * devicePixelRatioF();
  if (pixels == picture_.size()) {
    scaled_ = QImage();
    painter.drawImage(rect(), picture_);
    return;
  }
  const bool isSmaller = pixels.width() < picture_.width();
  const bool isModest = qint64{pixels.width()} * pixels.height() <= kMostScaledPixels;
  if (isSmaller && isModest && !isBeingMade_) {
    // Lines of one pixel would break up if pixels were left out: each counts.
    if (scaled_.size() != pixels) {
      scaled_ = picture_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
      scaled_.setDevicePixelRatio(devicePixelRatioF());
    }
    painter.drawImage(0, 0, scaled_);
    return;
  }
  scaled_ = QImage();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QRectF seen = event->rect();
  const double across = static_cast<double>(picture_.width()) / width();
  const double down = static_cast<double>(picture_.height()) / height();
  painter.drawImage(seen, picture_,
                    QRectF(seen.x() * across, seen.y() * down, seen.width() * across, seen.height() * down));
}

}  // namespace pelorin::ui
