#include "desktop/overlay/picture_panes.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>
#include <algorithm>

#include "desktop/overlay/picture_view.h"
#include "overlay/picture_fit.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Named;

constexpr int kTitleGap = 2;

/// Without a frame, so that a fitted picture and the scroll bar fill it to the pixel.
QScrollArea* NewScrollBox(const char* name, TPictureView* view, QWidget* parent) {
  auto* box = Named(new QScrollArea(parent), name);
  box->setFrameShape(QFrame::NoFrame);
  box->setBackgroundRole(QPalette::Base);
  box->setWidget(view);
  view->setBackgroundRole(QPalette::Base);
  return box;
}

QLabel* NewTitle(const char* name, QWidget* parent) {
  auto* title = Named(new QLabel(parent), name);
  title->setTextFormat(Qt::PlainText);
  return title;
}

/// A view's size in its box; one without a picture fills the box and shows its text.
void Place(QScrollArea* box, TPictureView* view, QSize size, bool isZoomed) {
  const bool isEmpty = view->Picture().isNull();
  const auto bar = [](bool isShown) { return isShown ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff; };
  box->setHorizontalScrollBarPolicy(bar(isZoomed && !isEmpty));
  box->setVerticalScrollBarPolicy(bar(!isEmpty));
  view->resize(isEmpty ? box->size() : size);
}

}  // namespace

TPicturePanes::TPicturePanes(QWidget* parent)
    : QWidget(parent),
      LabelMapTitle(NewTitle("LabelMapTitle", this)),
      LabelPictureTitle(NewTitle("LabelPictureTitle", this)),
      ImageTopo(Named(new TPictureView, "ImageTopo")),
      ImagePicture(Named(new TPictureView, "ImagePicture")),
      TimerSyncScroll(Named(new QTimer(this), "TimerSyncScroll")),
      mapTitle_(QStringLiteral("Map")),
      pictureTitle_(QStringLiteral("Picture")) {
  setObjectName(QStringLiteral("PicturePanes"));
  ScrollBoxTopo = NewScrollBox("ScrollBoxTopo", ImageTopo, this);
  ScrollBoxPicture = NewScrollBox("ScrollBoxPicture", ImagePicture, this);
  ShowWhatToDo();
  ImagePicture->SetEmptyText(
      QStringLiteral("No picture yet.\n\n\"Load picture\" looks in the picture folders of the Setup page for "
                     "one that is named by the time of the pass; File > Open... takes any."));
  setMinimumSize(300, 120);
  constexpr int syncMs = 100;
  connect(TimerSyncScroll, &QTimer::timeout, this, &TPicturePanes::TimerSyncScrollTimer);
  TimerSyncScroll->start(syncMs);
}

void TPicturePanes::ShowWhatToDo() {
  ImageTopo->SetEmptyText(
      picture_.isNull()
          ? QStringLiteral(
                "No map yet.\n\nChoose the satellite and the time at which the pass began, then press "
                "\"Make map\". The pass list of the Setup page fills in both.")
          : QStringLiteral("No map yet.\n\nPress \"Make map\" to see what lies below the picture."));
}

void TPicturePanes::SetPicture(const QImage& picture, const QString& path) {
  picture_ = picture;
  ShowWhatToDo();
  ImagePicture->setToolTip(path);
  ShowPictureSide();
  Fit();
}

void TPicturePanes::SetPictureTitle(const QString& title) {
  pictureTitle_ = title;
  FitTitles();
}

void TPicturePanes::BeginMap(QSize size, const QString& title) {
  isMaking_ = true;
  shownLines_ = 0;
  layer_ = {};
  mapTitle_ = title;
  ImageTopo->Begin(size);
  ShowPictureSide();
  Fit();
}

void TPicturePanes::ShowProgress(const QImage& map, bool southBound, int lines) {
  const int height = map.height();
  if (southBound) {
    ImageTopo->TakeRows(map, shownLines_, lines);
  } else {
    ImageTopo->TakeRows(map, height - lines, height - shownLines_);
  }
  shownLines_ = lines;
}

void TPicturePanes::SetMap(const overlay::MapLayer& layer, const QString& title) {
  isMaking_ = false;
  layer_ = layer;
  mapTitle_ = title;
  ImageTopo->SetPicture(layer.Map);
  ShowPictureSide();
  Fit();
}

void TPicturePanes::SetZoom(bool isOn) {
  isZoomed_ = isOn;
  Fit();
}

void TPicturePanes::SetLevel(bool isOn) {
  if (isOn == isLevel_) return;
  isLevel_ = isOn;
  Fit();
}

void TPicturePanes::SetOverlaid(bool isOn) {
  if (isOn == isOverlaid_) return;
  isOverlaid_ = isOn;
  ShowPictureSide();
  Fit();
}

void TPicturePanes::SetOpacity(int percent) {
  opacityPercent_ = percent;
  if (ShowsBlend()) ShowPictureSide();
}

void TPicturePanes::SetMapHidden(bool isHidden) {
  isMapHidden_ = isHidden;
  if (ShowsBlend()) ShowPictureSide();
}

QImage TPicturePanes::Blend() const {
  if (picture_.isNull() || layer_.Map.isNull()) return QImage();
  return overlay::BlendPicture(picture_, layer_, opacityPercent_);
}

bool TPicturePanes::ShowsBlend() const {
  return isOverlaid_ && !isMaking_ && !picture_.isNull() && !layer_.Map.isNull();
}

void TPicturePanes::ShowPictureSide() {
  ImagePicture->SetPicture(picture_);
  ImagePicture->SetLayer(ShowsBlend() && !isMapHidden_ ? layer_ : overlay::MapLayer{}, opacityPercent_);
}

int TPicturePanes::FittedWidth(int boxWidth) const {
  return std::max(1, boxWidth - style()->pixelMetric(QStyle::PM_ScrollBarExtent));
}

void TPicturePanes::Fit() {
  const int titleHeight = LabelMapTitle->sizeHint().height() + kTitleGap;
  const QSize area(width(), std::max(0, height() - titleHeight));
  overlay::PaneBoxes boxes = overlay::BoxesSideBySide(area);
  if (ShowsBlend()) boxes.Picture = QRect(QPoint(), area);
  ScrollBoxTopo->setVisible(!ShowsBlend());
  ScrollBoxTopo->setGeometry(boxes.Map.translated(0, titleHeight));
  ScrollBoxPicture->setGeometry(boxes.Picture.translated(0, titleHeight));

  const QSize map = ImageTopo->Picture().size();
  QSize mapSize = map, pictureSize = picture_.size();
  if (!isZoomed_) {
    const int fitted = FittedWidth(boxes.Map.width());
    if (!map.isEmpty()) mapSize = QSize(fitted, overlay::FittedMapHeight(map, fitted));
    if (ShowsBlend()) {
      const int whole = FittedWidth(boxes.Picture.width());
      pictureSize = QSize(whole, overlay::FittedMapHeight(picture_.size(), whole));
    } else if (!picture_.isNull()) {
      // A map of other lines may be of other columns, too.
      const bool isAlike = isLevel_ || isMaking_ || map.width() == picture_.width();
      const QSize scaledAs = !map.isEmpty() && isAlike ? map : picture_.size();
      pictureSize = QSize(fitted, overlay::FittedPictureHeight(picture_.size(), scaledAs, fitted));
    }
  }
  Place(ScrollBoxTopo, ImageTopo, mapSize, isZoomed_);
  Place(ScrollBoxPicture, ImagePicture, pictureSize, isZoomed_);
  FitTitles();
}

void TPicturePanes::FitTitles() {
  const auto place = [](QLabel* label, const QString& text, int left, int width) {
    label->setGeometry(left, 0, width, label->sizeHint().height());
    label->setText(label->fontMetrics().elidedText(text, Qt::ElideMiddle, width));
    label->setToolTip(label->text() == text ? QString() : text);
  };
  const QRect mapBox = ScrollBoxTopo->geometry();
  const int left = mapBox.right() + 1 + overlay::kPaneGap;
  place(LabelMapTitle, mapTitle_, 0, mapBox.width());
  place(LabelPictureTitle, pictureTitle_, left, std::max(0, width() - left));
}

void TPicturePanes::resizeEvent(QResizeEvent*) { Fit(); }

void TPicturePanes::TimerSyncScrollTimer() {
  QScrollBar *across = ScrollBoxTopo->horizontalScrollBar(), *down = ScrollBoxTopo->verticalScrollBar();
  const QPoint now(across->value(), down->value());
  if (scrollsBoth_) {
    if (now.x() != mapScroll_.x()) ScrollBoxPicture->horizontalScrollBar()->setValue(now.x());
    if (now.y() != mapScroll_.y()) ScrollBoxPicture->verticalScrollBar()->setValue(now.y());
  }
  mapScroll_ = now;
}

}  // namespace pelorin::desktop
