#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include "session/session.h"

namespace pelorin::desktop {

/// Reads the elements again when the files of their folder have changed, whoever changed them: soon after
/// the last change, and not while a map is made or a box waits.
class ElementWatch : public QObject {
  Q_OBJECT

 public:
  ElementWatch(session::Session& session, QObject* parent);

  session::Prompts& Boxes() const { return session_.Boxes; }

  /// What lies there now has been read.
  void Watch();

 private:
  void TimerSettledTimer();

  session::Session& session_;
  QFileSystemWatcher watcher_;
  QTimer* timerSettled_;
  QString known_;  ///< names, sizes and times of the files that were read
};

}  // namespace pelorin::desktop
