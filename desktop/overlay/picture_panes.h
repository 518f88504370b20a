#pragma once

#include <QWidget>

#include "overlay/picture_blend.h"

class QLabel;
class QScrollArea;
class QTimer;

namespace pelorin::desktop {

class TPictureView;

/// Map and received picture, side by side and line by line, or the one over the other.
class TPicturePanes : public QWidget {
  Q_OBJECT

 public:
  explicit TPicturePanes(QWidget* parent);

  /// Null for none.
  void SetPicture(const QImage& picture, const QString& path);
  void SetPictureTitle(const QString& title);
  const QImage& Picture() const { return picture_; }

  /// A map of this size is about to be made.
  void BeginMap(QSize size, const QString& title);
  /// Shows what was made of it by now, `lines` lines.
  void ShowProgress(const QImage& map, bool southBound, int lines);
  void SetMap(const overlay::MapLayer& layer, const QString& title);
  const overlay::MapLayer& Map() const { return layer_; }

  /// Both in their own size instead of fitted to the page.
  void SetZoom(bool isOn);
  /// Map and picture are of the same lines, and shown at the same scale; otherwise each at its own.
  void SetLevel(bool isOn);
  /// The picture follows when the map is scrolled.
  void SetScrollBoth(bool isOn) { scrollsBoth_ = isOn; }
  /// The map over the picture; side by side until there are both.
  void SetOverlaid(bool isOn);
  void SetOpacity(int percent);
  /// Leaves the map out of the overlaid view for a moment.
  void SetMapHidden(bool isHidden);
  /// The picture with the map over it; null until there are both.
  QImage Blend() const;

  /// Of the picture's side, where marks are drawn; the map lies there, too, when it is laid over the picture.
  TPictureView* PictureSide() const { return ImagePicture; }

  /// Sizes and places everything anew.
  void Fit();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void TimerSyncScrollTimer();
  /// On the map's side, until there is one.
  void ShowWhatToDo();
  bool ShowsBlend() const;
  void ShowPictureSide();
  void FitTitles();
  int FittedWidth(int boxWidth) const;

  QLabel *LabelMapTitle, *LabelPictureTitle;
  QScrollArea *ScrollBoxTopo, *ScrollBoxPicture;
  TPictureView *ImageTopo, *ImagePicture;
  QTimer* TimerSyncScroll;

  QImage picture_;
  overlay::MapLayer layer_;
  QString mapTitle_, pictureTitle_;
  int shownLines_ = 0;  ///< of the map that is being made
  bool isLevel_ = true, isMaking_ = false, isZoomed_ = false, scrollsBoth_ = true, isOverlaid_ = false,
       isMapHidden_ = false;
  int opacityPercent_ = 50;
  QPoint mapScroll_;  ///< at the last tick
};

}  // namespace pelorin::desktop
