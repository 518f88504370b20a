#pragma once

#include <QDialog>

namespace pelorin::desktop {

/// What the program is, and whose work it stands on.
class TAboutBoxQuillfen : public QDialog {
  Q_OBJECT

 public:
  explicit TAboutBoxQuillfen(QWidget* parent = nullptr);
};

}  // namespace pelorin::desktop
