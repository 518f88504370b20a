#pragma once

#include "session/form.h"

namespace pelorin::desktop {

/// What the program is, and whose work it stands on.
class TAboutBoxQuillfen : public session::TForm {
  Q_OBJECT

 public:
  TAboutBoxQuillfen(session::Session& session, QWidget* parent);

 private:
  QWidget* FirstControl() const override { return buttonOK_; }

  QWidget* buttonOK_;
};

}  // namespace pelorin::desktop
