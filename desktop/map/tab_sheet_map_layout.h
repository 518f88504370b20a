#pragma once

class QBoxLayout;
class QButtonGroup;
class QComboBox;
class QDateEdit;
class QFrame;
class QPushButton;
class QTimer;
class QWidget;

namespace pelorin::session {
class TTimePicker;
}

namespace pelorin::desktop {

class TPaintBoxGrid;
class TPaintBoxSats;

/// The controls of the world-map page: the map, and a strip of controls below it.
struct TabSheetMapLayout {
  QFrame* PanelWorldMap = nullptr;
  TPaintBoxGrid* PaintBoxGrid = nullptr;  ///< this and the next lie over each other inside the panel's bevel
  TPaintBoxSats* PaintBoxSats = nullptr;
  QButtonGroup* RadioGroupTimeframe = nullptr;  ///< the buttons' ids are those of session::Timeframe
  QDateEdit* DateTimePickerMapDate = nullptr;
  session::TTimePicker* DateTimePickerMapTime = nullptr;
  QComboBox* ComboBoxSatForMap = nullptr;
  QPushButton* ButtonMapToPicture = nullptr;
  QTimer* TimerStep = nullptr;

  void Build(QWidget* page);

 private:
  QFrame* BuildMap(QWidget* page);
  QWidget* BuildTimeframe(QWidget* page);
  QBoxLayout* BuildStrip(QWidget* page);
};

}  // namespace pelorin::desktop
