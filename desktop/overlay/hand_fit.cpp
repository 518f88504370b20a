#include "desktop/overlay/hand_fit.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <cmath>

#include "desktop/overlay/hand_fit_bar.h"
#include "desktop/overlay/picture_view.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Handle;

PictureMarks MarksOf(const align::DraggedPoints& points) {
  PictureMarks marks;
  marks.Lines = points.Lines();
  const align::PointFit& fit = points.Fit();
  for (std::size_t i = 0; i < points.Points().size(); ++i) {
    QString text = QString::number(i + 1);
    if (std::isfinite(fit.MisfitPixels[i])) {
      text += QStringLiteral("  %1 px").arg(fit.MisfitPixels[i], 0, 'f', 1);
    }
    marks.Points.push_back(
        {points.Points()[i].Pixel, text, static_cast<int>(i) == points.Chosen(), fit.IsLeftOut[i]});
  }
  return marks;
}

}  // namespace

THandFit::THandFit(session::Prompts& boxes, TPictureView* view, THandFitBar* bar, QObject* parent)
    : QObject(parent), boxes_(boxes), view_(view), bar_(bar) {
  bar_->hide();
  view_->installEventFilter(this);
  Handle(bar_, &THandFitBar::ThirdWanted, this, &THandFit::ThirdWanted);
  Handle(bar_, &THandFitBar::TakeWanted, this, &THandFit::Take);
  Handle(bar_, &THandFitBar::UndoWanted, this, &THandFit::Undo);
  Handle(bar_, &THandFitBar::RemoveWanted, this, &THandFit::Remove);
  Handle(bar_, &THandFitBar::CancelWanted, this, &THandFit::Cancel);
}

THandFit::~THandFit() = default;

void THandFit::Begin(const swath::Recording& recording, const lines::FineLines& lines) {
  points_ = std::make_unique<align::DraggedPoints>(recording, lines);
  recording_ = recording;
  view_->setMouseTracking(true);
  view_->setFocusPolicy(Qt::StrongFocus);
  view_->setFocus();
  bar_->show();
  ShowAll();
}

void THandFit::End() {
  if (!IsOn()) return;
  points_.reset();
  bar_->hide();
  view_->SetMarks({});
  view_->unsetCursor();
  view_->setMouseTracking(false);
  view_->setFocusPolicy(Qt::NoFocus);
}

void THandFit::ThirdWanted(align::Third third) {
  if (!IsOn()) return;
  points_->SetThird(third);
  ShowAll();
}

void THandFit::Take() {
  if (!IsOn() || points_->IsDragging() || !points_->CanUndo()) return;
  const swath::Recording fitted = points_->Fit().Fitted;
  End();
  Q_EMIT Taken(fitted);
}

void THandFit::Cancel() {
  if (!IsOn()) return;
  End();
  Q_EMIT Cancelled();
}

void THandFit::Undo() {
  if (!IsOn()) return;
  points_->Undo();
  ShowAll();
}

void THandFit::Remove() {
  if (!IsOn()) return;
  points_->Remove();
  ShowAll();
}

void THandFit::ShowAll() {
  view_->SetMarks(MarksOf(*points_));
  bar_->ShowOf(*points_);
}

align::ScreenScale THandFit::Scale() const {
  const ViewScale scale = view_->Scale();
  return {scale.Across(), scale.Down()};
}

void THandFit::ShowCursor(swath::PixelPoint at) {
  if (points_->IsDragging()) {
    view_->setCursor(Qt::ClosedHandCursor);
  } else if (points_->PointAt(at, Scale()) >= 0 || points_->LineAt(at, Scale())) {
    view_->setCursor(Qt::OpenHandCursor);
  } else {
    view_->unsetCursor();
  }
}

bool THandFit::eventFilter(QObject* watched, QEvent* event) {
  if (watched != view_ || !IsOn()) return false;
  bool isTaken = false;
  session::Guarded(boxes_, [&] { isTaken = TakeEvent(event); });
  return isTaken;
}

bool THandFit::TakeEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
      return TakeMouse(*static_cast<QMouseEvent*>(event));
    case QEvent::KeyPress: {
      const auto& key = *static_cast<QKeyEvent*>(event);
      return TakeArrow(key) || TakeKey(key);
    }
    default:
      return false;
  }
}

bool THandFit::TakeMouse(const QMouseEvent& event) {
  const swath::PixelPoint at = view_->Scale().InPicture(event.position());
  if (event.type() == QEvent::MouseMove) {
    points_->DragTo(at);
    if (points_->IsDragging()) ShowAll();
  } else if (event.button() != Qt::LeftButton) {
    return false;
  } else if (event.type() == QEvent::MouseButtonRelease) {
    points_->Drop();
    ShowAll();
  } else {
    points_->Grab(at, Scale());
    ShowAll();
  }
  ShowCursor(at);
  return true;
}

bool THandFit::TakeArrow(const QKeyEvent& event) {
  const auto move = [this](double columns, double rows) {
    points_->Nudge(columns, rows);
    ShowAll();
    return true;
  };
  switch (event.key()) {
    case Qt::Key_Left:
      return move(-1, 0);
    case Qt::Key_Right:
      return move(1, 0);
    case Qt::Key_Up:
      return move(0, -1);
    case Qt::Key_Down:
      return move(0, 1);
    default:
      return false;
  }
}

bool THandFit::TakeKey(const QKeyEvent& event) {
  if (!IsOn()) return false;
  switch (event.key()) {
    case Qt::Key_Escape:
      if (!points_->IsDragging()) {
        Cancel();
        return true;
      }
      points_->GiveUp();
      ShowAll();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Take();
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      Remove();
      return true;
    case Qt::Key_Z:
      if (!event.modifiers().testFlag(Qt::ControlModifier)) return false;
      if (event.modifiers().testFlag(Qt::ShiftModifier)) {
        points_->Redo();
      } else {
        points_->Undo();
      }
      ShowAll();
      return true;
    default:
      return false;
  }
}

}  // namespace pelorin::desktop
