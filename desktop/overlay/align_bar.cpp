#include "desktop/overlay/align_bar.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "desktop/overlay/picture_marks.h"
#include "session/controls.h"

namespace pelorin::desktop {

using session::Hinted;
using session::Named;

TAlignBar::TAlignBar(QWidget* parent)
    : QWidget(parent),
      LabelAlign(Named(new QLabel(this), "LabelAlign")),
      ProgressBarAlign(Named(new QProgressBar(this), "ProgressBarAlign")),
      CheckBoxAlignWindows(
          Hinted(Named(new QCheckBox(QStringLiteral("&Windows"), this), "CheckBoxAlignWindows"),
                 QStringLiteral("Draw the parts of the picture that were recognised, each with an arrow from "
                                "where the new map has the coast to where the picture has it, %1 times as "
                                "long: green below half a pixel, yellow below one, red above")
                     .arg(kMisfitEnlarged))) {
  setObjectName(QStringLiteral("AlignBar"));
  setFocusPolicy(Qt::ClickFocus);
  LabelAlign->setWordWrap(true);
  LabelAlign->setTextFormat(Qt::PlainText);
  LabelAlign->setMinimumHeight(2 * LabelAlign->fontMetrics().lineSpacing());
  ProgressBarAlign->setTextVisible(false);
  CheckBoxAlignWindows->setFocusPolicy(Qt::TabFocus);
  connect(CheckBoxAlignWindows, &QCheckBox::toggled, this, &TAlignBar::WindowsToggled);
  ButtonAlignFlip = NewButton("ButtonAlignFlip", &TAlignBar::FlipWanted);
  ButtonAlignFlip->setText(QStringLiteral("Old map (F6)"));
  ButtonAlignFlip->setCheckable(true);
  Hinted(ButtonAlignFlip,
         QStringLiteral("See the map as it was, and the new one again; hold F6 to let them change places"));
  ButtonAlignTake = NewButton("ButtonAlignTake", &TAlignBar::TakeWanted);
  ButtonAlignTake->setText(QStringLiteral("Take"));
  Hinted(ButtonAlignTake, QStringLiteral("Correct the picture so; the map follows (Return)"));
  ButtonAlignUndo = NewButton("ButtonAlignUndo", &TAlignBar::UndoWanted);
  ButtonAlignUndo->setText(QStringLiteral("Undo"));
  Hinted(ButtonAlignUndo, QStringLiteral("Back to what was before (Ctrl+Z)"));
  ButtonAlignLeave = NewButton("ButtonAlignLeave", &TAlignBar::LeaveWanted);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(LabelAlign, 1);
  for (QWidget* control :
       std::initializer_list<QWidget*>{ProgressBarAlign, CheckBoxAlignWindows, ButtonAlignFlip,
                                       ButtonAlignTake, ButtonAlignUndo, ButtonAlignLeave}) {
    row->addWidget(control);
  }
  hide();
}

QPushButton* TAlignBar::NewButton(const char* name, void (TAlignBar::*wanted)()) {
  auto* button = Named(new QPushButton(this), name);
  button->setFocusPolicy(Qt::TabFocus);
  button->setAutoDefault(true);
  connect(button, &QPushButton::clicked, this, wanted);
  return button;
}

void TAlignBar::ShowStage(const QString& text, const QString& leave, const QString& leaveHint) {
  LabelAlign->setText(text);
  ButtonAlignLeave->setText(leave);
  Hinted(ButtonAlignLeave, leaveHint);
  for (QWidget* control : std::initializer_list<QWidget*>{
           ProgressBarAlign, CheckBoxAlignWindows, ButtonAlignFlip, ButtonAlignTake, ButtonAlignUndo}) {
    control->hide();
  }
  ButtonAlignLeave->setEnabled(true);
  show();
}

void TAlignBar::ShowRunning() {
  ShowStage(QStringLiteral("Looking for the coasts of the picture..."), QStringLiteral("Cancel"),
            QStringLiteral("Leave everything as it is (Escape)"));
  ProgressBarAlign->setValue(0);
  ProgressBarAlign->show();
  TakeKeyboard();
}

void TAlignBar::SetProgress(int percent) { ProgressBarAlign->setValue(percent); }

void TAlignBar::ShowEnding() {
  LabelAlign->setText(QStringLiteral("Ending..."));
  ButtonAlignLeave->setEnabled(false);
}

void TAlignBar::ShowOffer(const QString& text, bool hasWindows) {
  ShowStage(text, QStringLiteral("Leave"), QStringLiteral("Leave everything as it was (Escape)"));
  CheckBoxAlignWindows->setVisible(hasWindows);
  SetFlipped(false);
  ButtonAlignFlip->show();
  ButtonAlignTake->show();
  TakeKeyboard();
}

void TAlignBar::ShowNotFound(const QString& text) {
  ShowStage(text, QStringLiteral("Close"), QStringLiteral("Take this line away (Escape)"));
  TakeKeyboard();
}

void TAlignBar::ShowTaken(const QString& text) {
  ShowStage(text, QStringLiteral("Close"), QStringLiteral("Take this line away, and keep the map (Escape)"));
  ButtonAlignUndo->show();
  TakeKeyboard();
}

void TAlignBar::SetFlipped(bool isOld) { ButtonAlignFlip->setChecked(isOld); }

bool TAlignBar::DrawsWindows() const {
  return CheckBoxAlignWindows->isVisibleTo(this) && CheckBoxAlignWindows->isChecked();
}

void TAlignBar::TakeKeyboard() {
  const QWidget* now = QApplication::focusWidget();
  if (now == nullptr || qobject_cast<const QAbstractButton*>(now) != nullptr) setFocus();
}

}  // namespace pelorin::desktop
