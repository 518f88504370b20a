#include "session/unattended_run.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <utility>

#include "session/controls.h"

namespace pelorin::session {
namespace {

constexpr int kMinuteMs = 60'000;
constexpr int kLongestWaitMinutes = 24 * 60;

/// Somebody sits before the screen. A key that is a menu's shortcut is never pressed as far as controls hear
/// of it.
bool IsTouch(const QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
      return true;
    default:
      return false;
  }
}

}  // namespace

UnattendedRun::UnattendedRun(const QString& passString, Prompts& attended,
                             std::function<void(const QString&)> tell)
    : passString_(passString),
      boxes_(attended, std::move(tell)),
      timerUntouched_(Named(new QTimer(this), "TimerUntouched")),
      failure_(QStringLiteral("the program was closed before the map was made")) {
  timerUntouched_->setSingleShot(true);
  connect(timerUntouched_, &QTimer::timeout, this, &UnattendedRun::GiveUp);
}

void UnattendedRun::Make(const std::function<bool()>& work) {
  try {
    if (work()) failure_.clear();
  } catch (const std::exception& error) {
    failure_ = QString::fromUtf8(error.what());
  }
}

void UnattendedRun::HandOver(const QString& reason, Box box, int waitMinutes) {
  failure_ = reason;
  QCoreApplication::instance()->installEventFilter(this);
  timerUntouched_->start(std::clamp(waitMinutes, 0, kLongestWaitMinutes) * kMinuteMs);
  boxes_.Attend();
  if (boxes_.IsAttended()) (boxes_.*box)(reason);
  // A box that was closed by its frame was closed by somebody, too.
  if (boxes_.IsAttended()) StopWaiting();
}

bool UnattendedRun::eventFilter(QObject*, QEvent* event) {
  if (IsTouch(event)) StopWaiting();
  return false;
}

void UnattendedRun::StopWaiting() {
  timerUntouched_->stop();
  QCoreApplication::instance()->removeEventFilter(this);
  failure_.clear();
}

void UnattendedRun::GiveUp() {
  QCoreApplication::instance()->removeEventFilter(this);
  boxes_.Leave();
  Q_EMIT GivenUp();
}

}  // namespace pelorin::session
