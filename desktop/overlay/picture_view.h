#pragma once

#include <QImage>
#include <QWidget>

#include "desktop/overlay/picture_marks.h"
#include "overlay/picture_blend.h"

namespace pelorin::desktop {

/// Shows a picture, stretched to its own size, and what lies over it; without one, a text that says how to
/// get one. Pictures may be many screens high: only what is seen of them is blended and scaled.
class TPictureView : public QWidget {
  Q_OBJECT

 public:
  explicit TPictureView(QWidget* parent = nullptr);

  void SetEmptyText(const QString& text);
  /// Null for none.
  void SetPicture(const QImage& picture);
  const QImage& Picture() const { return picture_; }
  /// Lies over the picture; one without a map for nothing.
  void SetLayer(const overlay::MapLayer& layer, int opacityPercent);
  /// Drawn over all of it, as often as the screen changes; nothing for none.
  void SetMarks(PictureMarks marks);
  const PictureMarks& Marks() const { return marks_; }
  ViewScale Scale() const { return {picture_.size(), size()}; }

  /// The picture is about to get its rows bit by bit; it is black until then.
  void Begin(QSize size);
  /// Takes over rows of a picture that is being made, of the size that was begun with, up to `end`.
  void TakeRows(const QImage& source, int first, int end);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void PaintEmptyText(QPainter& painter) const;
  void PaintPicture(QPainter& painter, const QRect& seen) const;
  void PaintBelowMarks(QPainter& painter, const QRect& seen);
  void PaintSmaller(QPainter& painter, const QRect& seen) const;
  void PaintPlain(QPainter& painter, const QRect& seen) const;
  QImage Rows(int first, int end) const;

  QString emptyText_;
  QImage picture_;
  overlay::MapLayer layer_;
  int opacityPercent_ = 0;
  bool isBeingMade_ = false;
  PictureMarks marks_;
  /// The part of the picture that is seen, kept while marks move over it, and where that is.
  QImage below_;
  QRect belowIs_;
};

}  // namespace pelorin::desktop
