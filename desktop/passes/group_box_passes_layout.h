#pragma once

class QDateEdit;
class QGroupBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QWidget;

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

  QWidget* MakePassListRow = nullptr;  ///< to be placed among the station's controls
  QPushButton* ButtonRegenPasses = nullptr;
  QSpinBox* UpDownDaysAhead = nullptr;
  QPushButton* ButtonEphemeris = nullptr;

  void Build(QGroupBox* box);

 private:
  void BuildMakePassListRow(QGroupBox* box);
};

}  // namespace pelorin::desktop
