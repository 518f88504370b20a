#pragma once

#include <QWidget>
#include <array>

class QDateEdit;
class QDialog;
class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;
class QTabWidget;

namespace pelorin::session {
class TListBox;
}

namespace pelorin::desktop {

/// A button that sets the number of days.
struct DurationButton {
  QPushButton* Button = nullptr;
  int Days = 0;
};

/// The controls of the ephemeris report.
struct FormEphemerisLayout {
  QTabWidget* PageControl = nullptr;

  QWidget* TabSheetControl = nullptr;
  session::TListBox* ListBoxSatellites = nullptr;
  QPushButton* ButtonSelectAll = nullptr;
  QPushButton* ButtonSelectNone = nullptr;
  QDateEdit* DateTimePickerStart = nullptr;
  QSpinBox* SpinEditNumDays = nullptr;
  std::array<DurationButton, 6> Durations;
  QLabel* LabelStart = nullptr;
  QPushButton* ButtonPredict = nullptr;

  QWidget* TabSheetEphemeris = nullptr;
  session::TListBox* ListBoxPasses = nullptr;
  QPushButton* ButtonPrint = nullptr;
  QPushButton* ButtonSave = nullptr;

  QProgressBar* ProgressBar = nullptr;
  QPushButton* ButtonCancel = nullptr;

  void Build(QDialog* form);

 private:
  QWidget* BuildSatellites();
  QWidget* BuildTime();
  QWidget* BuildDurations(const QString& name, const char* unit, std::size_t first, int daysOfUnit);
  void BuildControlPage();
  void BuildEphemerisPage();
  QWidget* BuildBottomRow(QDialog* form);
};

}  // namespace pelorin::desktop
