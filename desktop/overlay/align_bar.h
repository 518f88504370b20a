#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace pelorin::desktop {

/// How far an alignment by coasts has come, what it has found, and what can be done with that.
class TAlignBar : public QWidget {
  Q_OBJECT

 public:
  explicit TAlignBar(QWidget* parent);

  /// Each shows the bar with what belongs to that stage; they tell nobody.
  void ShowRunning();
  void ShowEnding();
  /// `hasWindows`: there is something to draw.
  void ShowOffer(const QString& text, bool hasWindows);
  void ShowNotFound(const QString& text);
  void ShowTaken(const QString& text);

  void SetProgress(int percent);
  void SetFlipped(bool isOld);
  bool DrawsWindows() const;

 Q_SIGNALS:
  /// The user wants to see the old map, or the new one again.
  void FlipWanted();
  void WindowsToggled();
  void TakeWanted();
  void UndoWanted();
  /// The user wants no more of it: ends, leaves or closes, whatever the stage has.
  void LeaveWanted();

 private:
  QPushButton* NewButton(const char* name, void (TAlignBar::*wanted)());
  void ShowStage(const QString& text, const QString& leave, const QString& leaveHint);
  /// From a button, which would take Return for itself; the user may be writing elsewhere.
  void TakeKeyboard();

  QLabel* LabelAlign;
  QProgressBar* ProgressBarAlign;
  QCheckBox* CheckBoxAlignWindows;
  QPushButton *ButtonAlignFlip, *ButtonAlignTake, *ButtonAlignUndo, *ButtonAlignLeave;
};

}  // namespace pelorin::desktop
