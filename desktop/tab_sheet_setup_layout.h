#pragma once

class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QToolButton;
class QWidget;

namespace pelorin::session {
class TListBox;
}

namespace pelorin::desktop {

/// The set-up page's controls: satellites at the left, station and passes at the right, folders below.
struct TabSheetSetupLayout {
  session::TListBox* ListBoxAvailable;
  session::TListBox* ListBoxActive;
  QToolButton* ButtonActivate;
  QToolButton* ButtonDeactivate;
  QComboBox* ComboBoxRenewal;  ///< items in the order of elements::Renewal
  QSpinBox* SpinEditRenewalDays;

  QLineEdit* EditLatitude;
  QLineEdit* EditLongitude;
  QLineEdit* EditHeight;
  QLineEdit* EditMinPassElev;

  QLineEdit* EditSatelliteDataPath;
  QPushButton* ButtonBrowseSatDataPath;
  QLineEdit* EditResultsPath;
  QPushButton* ButtonBrowseResultsPath;
  session::TListBox* ListBoxImagePath;
  QPushButton* ButtonAddPath;
  QPushButton* ButtonRemovePath;

  /// `passListRow` goes into the observer group, below the boxes; `groupBoxPasses` below that group.
  void Build(QWidget* page, QWidget* passListRow, QWidget* groupBoxPasses);

 private:
  QWidget* BuildSatellites(QWidget* page);
  QWidget* BuildObserver(QWidget* page, QWidget* passListRow);
  QWidget* BuildFolders(QWidget* page);
};

}  // namespace pelorin::desktop
