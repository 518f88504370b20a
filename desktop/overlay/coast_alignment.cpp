#include "desktop/overlay/coast_alignment.h"

#include <QKeyEvent>
#include <utility>

#include "align/alignment_text.h"
#include "align/pass_search.h"
#include "desktop/overlay/align_bar.h"
#include "desktop/overlay/search_thread.h"
#include "session/controls.h"

namespace pelorin::desktop {

using session::Handle;

TCoastAlignment::TCoastAlignment(session::Prompts& boxes, TAlignBar* bar, QObject* parent)
    : QObject(parent), boxes_(boxes), bar_(bar), thread_(new SearchThread(this)) {
  Handle(thread_, &SearchThread::Progressed, this, &TCoastAlignment::Progressed);
  Handle(thread_, &SearchThread::Finished, this, &TCoastAlignment::Finished);
  Handle(bar_, &TAlignBar::FlipWanted, this, &TCoastAlignment::Flip);
  connect(bar_, &TAlignBar::TakeWanted, this, &TCoastAlignment::TakeWanted);
  connect(bar_, &TAlignBar::UndoWanted, this, &TCoastAlignment::UndoWanted);
  connect(bar_, &TAlignBar::LeaveWanted, this, &TCoastAlignment::LeaveWanted);
}

TCoastAlignment::~TCoastAlignment() {
  // Before the answer, which the thread writes.
  delete thread_;
}

void TCoastAlignment::Begin(PictureToAlign picture, bool isAsked) {
  if (IsOn()) return;
  before_ = picture.Recording;
  isAsked_ = isAsked;
  showsOld_ = false;
  stage_ = Stage::Running;
  thread_->Begin([this, picture = std::move(picture)](const align::AfterStep& afterStep) {
    const std::vector<QImage> channels = picture.Channels();
    if (!afterStep(0)) return;
    answer_ = align::AlignInAnyWay(picture.Recording, channels, picture.Ground, {}, afterStep);
  });
  bar_->ShowRunning();
}

void TCoastAlignment::Progressed(int percent) {
  if (Is(Stage::Running)) bar_->SetProgress(percent);
}

void TCoastAlignment::Finished() {
  const bool isWanted = std::exchange(stage_, Stage::Idle) == Stage::Running;
  if (session::Guarded(boxes_, [this] { thread_->TakeOutcome(); }) && isWanted) {
    stage_ = Stage::Answered;
    Q_EMIT Answered();
    return;
  }
  bar_->hide();
  Q_EMIT Ended();
}

void TCoastAlignment::ShowAnswer() {
  if (!Is(Stage::Answered)) return;
  QString text = align::TextOf(answer_, before_);
  if (!answer_.NoShores.isEmpty()) text += u' ' + answer_.NoShores;
  if (answer_.Is == align::Finding::NotFound) {
    stage_ = Stage::NotFound;
    bar_->ShowNotFound(text);
  } else {
    stage_ = Stage::Offered;
    bar_->ShowOffer(text, !answer_.Windows.empty());
  }
}

void TCoastAlignment::ShowTaken() {
  stage_ = Stage::Taken;
  showsOld_ = false;
  bar_->ShowTaken(QStringLiteral("Taken: %1.").arg(align::MovedText(before_, answer_.Aligned)));
}

void TCoastAlignment::End() {
  if (thread_->IsRunning()) {
    stage_ = Stage::Ending;
    bar_->ShowEnding();
    thread_->End();
  } else {
    stage_ = Stage::Idle;
    showsOld_ = false;
    bar_->hide();
  }
}

void TCoastAlignment::Flip() {
  if (!Is(Stage::Offered)) return;
  showsOld_ = !showsOld_;
  bar_->SetFlipped(showsOld_);
  Q_EMIT Flipped();
}

bool TCoastAlignment::TakeKey(const QKeyEvent& event) {
  if (event.isAutoRepeat()) return false;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!Is(Stage::Offered)) return false;
      Q_EMIT TakeWanted();
      return true;
    case Qt::Key_Escape:
      if (Is(Stage::Idle) || Is(Stage::Answered)) return false;
      Q_EMIT LeaveWanted();
      return true;
    case Qt::Key_Z:
      if (!Is(Stage::Taken) || event.modifiers() != Qt::ControlModifier) return false;
      Q_EMIT UndoWanted();
      return true;
    default:
      return false;
  }
}

}  // namespace pelorin::desktop
