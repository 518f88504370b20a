#pragma once

#include "session/form.h"

namespace pelorin::desktop {

/// What the program is, and whose work it stands on.
class TAboutBoxQuillfen : public session::TForm {
  Q_OBJECT

 public:
  TAboutBoxQuillfen(session::Session& session, QWidget* parent);

 private:
  void FormCreate() override;
  QWidget* FirstControl() const override { return buttonOK_; }

  QWidget* buttonOK_ = nullptr;
};

}  // namespace pelorin::desktop
