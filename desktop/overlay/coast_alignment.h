#pragma once

#include <QImage>
#include <QObject>
#include <functional>
#include <vector>

#include "align/picture_alignment.h"
#include "session/prompts.h"

class QKeyEvent;

namespace pelorin::desktop {

class SearchThread;
class TAlignBar;

/// What is aligned on a thread; what Ground borrows must outlive the alignment.
struct PictureToAlign {
  swath::Recording Recording;
  /// Reads the channels, as they are stored; called on the thread.
  std::function<std::vector<QImage>()> Channels;
  align::Ground Ground;
};

/// The alignment of a picture by its coasts, from the beginning of the search to what the user does with the
/// result. What is shown and corrected is its owner's affair.
class TCoastAlignment : public QObject {
  Q_OBJECT

 public:
  /// Both borrowed; the bar is seen unless the stage is Idle.
  TCoastAlignment(session::Prompts& boxes, TAlignBar* bar, QObject* parent);
  /// Ends the search, and waits a fraction of a second until it has ended.
  ~TCoastAlignment() override;

  session::Prompts& Boxes() const { return boxes_; }

  enum class Stage {
    Idle,
    Running,
    Ending,    ///< the search was told to end, and has not ended yet
    Answered,  ///< it has ended; what it has found is not shown yet
    Offered,
    NotFound,
    Taken,
  };
  Stage Now() const { return stage_; }
  /// A search is under way, or its result is to be taken or left.
  bool IsOn() const { return stage_ != Stage::Idle && stage_ != Stage::NotFound && stage_ != Stage::Taken; }

  /// Unless it is on. `isAsked`: by the user, not by a setting.
  void Begin(PictureToAlign picture, bool isAsked);
  bool IsAsked() const { return isAsked_; }
  /// What is aligned, as it was before; of the last one when it is Idle.
  const swath::Recording& Before() const { return before_; }
  /// Valid from Answered on.
  const align::PictureAlignment& Answer() const { return answer_; }
  /// What the recording is while this goes on: the aligned one once it was taken.
  const swath::Recording& Expected() const { return stage_ == Stage::Taken ? answer_.Aligned : before_; }
  /// The offered map is out of sight for the old one.
  bool ShowsOld() const { return showsOld_; }

  /// From Answered on to Offered or NotFound, by what was found.
  void ShowAnswer();
  /// From Answered or Offered.
  void ShowTaken();
  /// Whatever it is at; tells nobody.
  void End();
  /// Old and new change places, while it is offered.
  void Flip();

  /// A key that was pressed anywhere on the page; true when it was meant.
  bool TakeKey(const QKeyEvent& event);

 Q_SIGNALS:
  /// The stage is Answered.
  void Answered();
  /// A search has ended without an answer: another one may begin.
  void Ended();
  void Flipped();
  void TakeWanted();
  void UndoWanted();
  void LeaveWanted();

 private:
  void Progressed(int percent);
  void Finished();
  bool Is(Stage stage) const { return stage_ == stage; }

  session::Prompts& boxes_;
  TAlignBar* bar_;
  SearchThread* thread_;
  Stage stage_ = Stage::Idle;
  bool isAsked_ = false, showsOld_ = false;
  swath::Recording before_;
  align::PictureAlignment answer_;  ///< the thread's, until it has finished
};

}  // namespace pelorin::desktop
