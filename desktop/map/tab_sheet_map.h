#pragma once

#include <QImage>
#include <optional>
#include <vector>

#include "desktop/map/tab_sheet_map_layout.h"
#include "map/map_projection.h"
#include "map/sky.h"
#include "session/tab_sheet.h"

namespace pelorin::desktop {

/// The page of the world map: the satellites at one moment, which comes from the clock, from a picture's name
/// or from the pickers.
class TTabSheetMap : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetMap(session::Session& session, QWidget* parent);

  /// Plate carrée, already turned for a Pacific-centred map; null for none.
  void SetBackdrop(const QImage& picture);
  /// From file, the user is asked for the file. Raises ConvertError when its name tells no time.
  void SetTimeframe(session::Timeframe mode);
  /// As if the user had turned the pickers.
  void SetMapTime(orbit::TDateTime moment);
  void FocusMakePicture();
  void ButtonMapToPictureClick();
  /// The settings of update rate or footprints have changed.
  void IntervalChanged();
  void FootprintLevelChanged();

 private:
  void ConnectHandlers();

  void TabSheetMapShow();
  void TabSheetMapHide();
  void PanelWorldMapResize();
  void RadioGroupTimeframeClick(int item);
  void TimerStepTimer();
  void DateTimePickerMapDateChange();
  void DateTimePickerMapDateClick();
  /// A digit is about to be typed into either picker.
  void DateTimePickerMapKeyPress();
  /// The date picker was left, or its calendar closed.
  void DateTimePickerMapDateExit();
  void ComboBoxSatForMapChange();
  void PaintBoxSatsMouseUp(QPoint position);
  void ActiveSatellitesChanged();
  void SatelliteChosen();

  /// Selects without asking for a file.
  void SelectTimeframe(session::Timeframe mode);
  void AskForFile();
  /// The moment that the map shows from now on; pickers and hints follow.
  void TurnTo(orbit::TDateTime moment);
  /// A moment that the user has set.
  void SetManualTime(orbit::TDateTime moment);
  /// Works out the satellite layer and the selected satellite's texts, if they can be seen.
  void RepaintSatellites();
  void ShowInfo(const map::Sky& sky);
  /// The active satellites in their order, each with the set for the day that the map shows.
  const std::vector<orbit::TSatellite>& SetsOfDay();
  /// That of the selected satellite, or null.
  const orbit::TSatellite* SelectedOfDay();

  TabSheetMapLayout ui_;
  map::MapFrame frame_;
  map::SkyKeeper keeper_;
  std::vector<orbit::TSatellite> sets_;
  std::optional<orbit::TDateTime> setsDay_;  ///< for which they are; nothing if there are other satellites
};

}  // namespace pelorin::desktop
