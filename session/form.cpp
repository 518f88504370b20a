#include "session/form.h"

#include <QGuiApplication>
#include <utility>

#include "session/controls.h"

namespace pelorin::session {

TForm::TForm(Session& session, const char* name, const QString& caption, QWidget* parent)
    : QDialog(parent), session_(session) {
  Named(this, name);
  setWindowTitle(caption);
}

void TForm::setVisible(bool visible) {
  if (visible && !isVisible()) {
    if (!std::exchange(isCreated_, true)) FormCreate();
    ensurePolished();
    Guarded(Boxes(), [this] { FormShow(); });
    FirstControl()->setFocus();
    // The toolkit centres a dialog over its window each time that it is shown.
    if (place_ && QGuiApplication::screenAt(*place_) != nullptr) move(*place_);
  } else if (!visible && isVisible()) {
    place_ = pos();
  }
  QDialog::setVisible(visible);
}

}  // namespace pelorin::session
