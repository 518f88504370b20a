#pragma once

#include <QDialog>
#include <QPoint>
#include <optional>

#include "session/session.h"

namespace pelorin::session {

/// A dialog of the program. It is made once, and shown again and again: filled anew, in the place and size
/// that the user gave it, with the keyboard in its first control. Enter presses the button that has the
/// keyboard, or else the default one; Escape and the frame's button close it, or do what reject() says. Its
/// help topic is found by its name.
class TForm : public QDialog {
  Q_OBJECT

 public:
  TForm(Session& session, const char* name, const QString& caption, QWidget* parent);

  Prompts& Boxes() const { return session_.Boxes; }

  void setVisible(bool visible) override;

 protected:
  /// Makes the controls, before the dialog is seen for the first time: most runs need few of the dialogs, and
  /// the start waits for none of them.
  virtual void FormCreate() = 0;
  /// Fills the controls, each time before the dialog is seen.
  virtual void FormShow() {}
  virtual QWidget* FirstControl() const = 0;

  Session& session_;

 private:
  bool isCreated_ = false;
  std::optional<QPoint> place_;  ///< of the frame, where the dialog was closed last
};

}  // namespace pelorin::session
