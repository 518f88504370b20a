#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "session/unattended_prompts.h"

class QTimer;

namespace pelorin::session {

/// A run that another program has started for the map of one pass, and that has to end whether anybody
/// watches it or not.
///
/// It begins with nothing waiting for a click. Then either the pass is found, its map made, and the window
/// closes; or there is nothing to make, and the user reads why and goes on with the program. Where nobody
/// presses a key or clicks before the waiting time is over, it ends all the same.
class UnattendedRun : public QObject {
  Q_OBJECT

 public:
  /// `passString` is what the program was started with. `attended` are the user's boxes, which must outlive
  /// this object; `tell` reaches who started the program.
  UnattendedRun(const QString& passString, Prompts& attended, std::function<void(const QString&)> tell);

  const QString& PassString() const { return passString_; }
  /// What the run has to say and to ask goes here.
  Prompts& Boxes() { return boxes_; }

  /// The pass was found: its map is to be made, and then the window to be closed.
  void PassFound() { isMaking_ = true; }
  bool IsMaking() const { return isMaking_; }
  /// Makes the map; an error that leaves `work` is why there is none. `work` answers whether it came to its
  /// end.
  void Make(const std::function<bool()>& work);

  /// There is no map to make, for this reason. Shows the user what was said until now and then the reason, in
  /// this kind of box, and returns when both were read, or nobody was there to read them. The waiting time is
  /// brought into a day.
  using Box = void (Prompts::*)(const QString& text);
  void HandOver(const QString& reason, Box box, int waitMinutes);

  /// Why the map was not made or not written; empty if it was, or if a user has taken over.
  const QString& Failure() const { return failure_; }

 Q_SIGNALS:
  /// Nobody was there: the program is to end, boxes included.
  void GivenUp();

 protected:
  /// Of the application, while the run waits for a user.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void StopWaiting();
  void GiveUp();

  const QString passString_;
  UnattendedPrompts boxes_;
  QTimer* timerUntouched_;
  bool isMaking_ = false;
  QString failure_;
};

}  // namespace pelorin::session
