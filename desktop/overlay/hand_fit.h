#pragma once

#include <QObject>
#include <memory>

#include "align/dragged_points.h"
#include "session/prompts.h"

class QKeyEvent;
class QMouseEvent;

namespace pelorin::desktop {

class THandFitBar;
class TPictureView;

/// Takes mouse and keyboard over a picture while it is fitted by hand: lines are pulled, points chosen, moved
/// and removed.
class THandFit : public QObject {
  Q_OBJECT

 public:
  /// All borrowed; the bar is seen while the picture is being fitted.
  THandFit(session::Prompts& boxes, TPictureView* view, THandFitBar* bar, QObject* parent);
  ~THandFit() override;

  session::Prompts& Boxes() const { return boxes_; }

  /// Of a recording that is as its picture is shown; `lines` is borrowed. A damaged tile raises FileError,
  /// and nothing has begun.
  void Begin(const swath::Recording& recording, const lines::FineLines& lines);
  bool IsOn() const { return points_ != nullptr; }
  /// Of the picture that is being fitted, as it was when that began.
  const swath::Recording& Recording() const { return recording_; }
  /// Leaves no trace; tells nobody.
  void End();

  /// A key that was pressed beside the picture; true when it was for the fit.
  bool TakeKey(const QKeyEvent& event);

 Q_SIGNALS:
  /// The user wants the picture corrected like this. The fit is at its end.
  void Taken(const swath::Recording& fitted);
  /// The user wants nothing of it. The fit is at its end.
  void Cancelled();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool TakeEvent(QEvent* event);
  bool TakeMouse(const QMouseEvent& event);
  bool TakeArrow(const QKeyEvent& event);
  void ThirdWanted(align::Third third);
  void Take();
  void Cancel();
  void Undo();
  void Remove();
  void ShowAll();
  void ShowCursor(swath::PixelPoint at);
  align::ScreenScale Scale() const;

  session::Prompts& boxes_;
  TPictureView* view_;
  THandFitBar* bar_;
  swath::Recording recording_;
  std::unique_ptr<align::DraggedPoints> points_;
};

}  // namespace pelorin::desktop
