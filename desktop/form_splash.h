#pragma once

#include <QWidget>

class QLabel;

namespace pelorin::desktop {

/// Tells what start-up is doing, before the message loop runs. It is the start-up's window only: nothing can
/// be done with it.
class TFormSplash : public QWidget {
  Q_OBJECT

 public:
  TFormSplash();

  /// Shows the window in the middle of the desktop. The start does not wait for the window system to put it
  /// there.
  void Open();
  /// Replaces the text, which is painted at once where the window is on the screen.
  void ShowStatus(const QString& text);

 protected:
  /// Some window managers put a closing button on every window; only the program closes this one.
  void closeEvent(QCloseEvent* event) override;

 private:
  /// Start-up keeps the thread to itself, so what is to be seen must be brought to the screen by hand. Keys
  /// and mouse wait.
  void RepaintNow();

  QLabel* status_;
};

}  // namespace pelorin::desktop
