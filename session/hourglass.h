#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace pelorin::session {

/// The pointer is an hourglass while this lives.
class Hourglass {
 public:
  Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
};

}  // namespace pelorin::session
