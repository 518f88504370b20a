#pragma once

#include <QWidget>

#include "session/session.h"

namespace pelorin::session {

/// A page of the main window. It tells when it comes to the front and when it leaves it; being covered by
/// another program's window is neither.
class TTabSheet : public QWidget {
  Q_OBJECT

 public:
  TTabSheet(Session& session, QWidget* parent);

  Prompts& Boxes() const { return session_.Boxes; }

 Q_SIGNALS:
  void Shown();
  void Hidden();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

  Session& session_;
};

}  // namespace pelorin::session
