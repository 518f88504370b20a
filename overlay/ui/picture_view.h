#pragma once

#include <QImage>
#include <QWidget>

namespace pelorin::ui {

/// Shows a picture, stretched to its own size; without one, a text that says how to get one.
class TPictureView : public QWidget {
  Q_OBJECT

 public:
  explicit TPictureView(QWidget* parent = nullptr);

  void SetEmptyText(const QString& text);
  /// Null for none.
  void SetPicture(const QImage& picture);
  const QImage& Picture() const { return picture_; }

  /// The picture is about to get its rows bit by bit; it is black until then.
  void Begin(QSize size);
  /// Takes over rows of a picture that is being made, of the size that was begun with, up to `end`.
  void TakeRows(const QImage& source, int first, int end);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintEmptyText(QPainter& painter) const;

  QString emptyText_;
  QImage picture_;
  QImage scaled_;  ///< as last shown at a size not its own; null when it is to be made
  bool isBeingMade_ = false;
};

}  // namespace pelorin::ui
