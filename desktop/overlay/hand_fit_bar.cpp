#include "desktop/overlay/hand_fit_bar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "session/controls.h"

namespace pelorin::desktop {

using session::Hinted;
using session::Named;

THandFitBar::THandFitBar(QWidget* parent)
    : QWidget(parent),
      LabelHandFit(Named(new QLabel(this), "LabelHandFit")),
      ComboBoxThird(Hinted(Named(new QComboBox(this), "ComboBoxThird"),
                           QStringLiteral("What two or more points tell beside time and shift: how the "
                                          "spacecraft is turned, or how the recorder's clock runs"))) {
  setObjectName(QStringLiteral("HandFitBar"));
  LabelHandFit->setWordWrap(true);
  LabelHandFit->setTextFormat(Qt::PlainText);
  LabelHandFit->setMinimumHeight(2 * LabelHandFit->fontMetrics().lineSpacing());
  ComboBoxThird->addItems({QStringLiteral("and yaw"), QStringLiteral("and clock drift")});
  ComboBoxThird->setFocusPolicy(Qt::TabFocus);
  connect(ComboBoxThird, &QComboBox::activated, this,
          [this](int index) { Q_EMIT ThirdWanted(index == 0 ? align::Third::Yaw : align::Third::Drift); });
  ButtonHandTake =
      NewButton(QStringLiteral("Take"), "ButtonHandTake",
                QStringLiteral("Correct the picture so; the map follows (Return)"), &THandFitBar::TakeWanted);
  ButtonHandUndo = NewButton(QStringLiteral("Undo"), "ButtonHandUndo",
                             QStringLiteral("Take the last step back (Ctrl+Z; Ctrl+Shift+Z takes it again)"),
                             &THandFitBar::UndoWanted);
  ButtonHandRemove =
      NewButton(QStringLiteral("Remove"), "ButtonHandRemove",
                QStringLiteral("Take the chosen point away (Delete)"), &THandFitBar::RemoveWanted);
  ButtonHandCancel =
      NewButton(QStringLiteral("Cancel"), "ButtonHandCancel",
                QStringLiteral("Leave everything as it was (Escape)"), &THandFitBar::CancelWanted);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(LabelHandFit, 1);
  for (QWidget* control : {static_cast<QWidget*>(ComboBoxThird), static_cast<QWidget*>(ButtonHandUndo),
                           static_cast<QWidget*>(ButtonHandRemove), static_cast<QWidget*>(ButtonHandTake),
                           static_cast<QWidget*>(ButtonHandCancel)}) {
    row->addWidget(control);
  }
}

QPushButton* THandFitBar::NewButton(const QString& caption, const char* name, const QString& hint,
                                    void (THandFitBar::*wanted)()) {
  auto* button = Hinted(Named(new QPushButton(caption, this), name), hint);
  // A click leaves the keyboard with the picture, where points are moved.
  button->setFocusPolicy(Qt::TabFocus);
  button->setAutoDefault(false);
  // Without a style's usual least width: the words beside it need the room.
  button->setFixedWidth(button->fontMetrics().horizontalAdvance(caption) + 20);
  connect(button, &QPushButton::clicked, this, wanted);
  return button;
}

void THandFitBar::ShowOf(const align::DraggedPoints& points) {
  LabelHandFit->setText(points.Told());
  session::SelectQuietly(ComboBoxThird, points.ThirdWanted() == align::Third::Yaw ? 0 : 1);
  ButtonHandTake->setEnabled(points.CanUndo());
  ButtonHandUndo->setEnabled(points.CanUndo());
  ButtonHandRemove->setEnabled(points.Chosen() >= 0);
}

}  // namespace pelorin::desktop
