#pragma once

#include <QObject>
#include <QThread>
#include <exception>
#include <functional>
#include <memory>

#include "align/coast_votes.h"

namespace pelorin::desktop {

/// Long work on a thread of its own, one at a time, while the window lives on.
class SearchThread : public QObject {
  Q_OBJECT

 public:
  explicit SearchThread(QObject* parent) : QObject(parent) {}
  /// Waits for the thread, which hears at its next step that it is to end: a fraction of a second.
  ~SearchThread() override;

  /// Nothing must be under way. What `work` reads must be its own, or outlive this object; what it writes
  /// must not be looked at before Finished.
  void Begin(std::function<void(const align::AfterStep&)> work);
  /// The thread is to end; Finished tells when it has.
  void End();
  /// Until it has ended, whether it was told to or not.
  bool IsRunning() const { return thread_ != nullptr; }
  /// Raises what the work has met, once; false when it was told to end.
  bool TakeOutcome();

 Q_SIGNALS:
  /// 0 … 100.
  void Progressed(int percent);
  /// The thread is gone; the next one may begin.
  void Finished();

 private:
  void ThreadFinished();

  std::unique_ptr<QThread> thread_;  ///< null while nothing is under way
  bool isEnded_ = false;
  std::exception_ptr trouble_;
};

}  // namespace pelorin::desktop
