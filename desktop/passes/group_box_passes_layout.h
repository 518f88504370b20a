#pragma once

#include <QPointer>
#include <QWidget>

class QDateEdit;
class QGroupBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace pelorin::session {
class TListBox;
}

namespace pelorin::desktop {

/// The controls of the pass generator.
struct GroupBoxPassesLayout {
  QDateEdit* DateTimePickerPasses = nullptr;
  QLabel* LabelPassDate = nullptr;
  session::TListBox* ListBoxPasses = nullptr;
  QPushButton* ButtonNextPass = nullptr;
  QPushButton* ButtonMapFromPass = nullptr;
  QPushButton* ButtonPicFromPass = nullptr;
  QPushButton* ButtonFlightFromPass = nullptr;

  /// Stands among the station's controls; without a parent until it is placed there.
  QPointer<QWidget> MakePassListRow;
  QPushButton* ButtonRegenPasses = nullptr;
  QSpinBox* UpDownDaysAhead = nullptr;
  QPushButton* ButtonEphemeris = nullptr;

  void Build(QGroupBox* box);

 private:
  void BuildMakePassListRow();
};

}  // namespace pelorin::desktop
