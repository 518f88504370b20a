#pragma once

#include <QImage>

#include "app/session/tab_sheet.h"

class QComboBox;
class QPushButton;

namespace pelorin::ui {

/// The page of the world map.
class TTabSheetMap : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetMap(session::Session& session, QWidget* parent);

  /// Plate carrée, already turned for a Pacific-centred map; null for none.
  void SetBackdrop(const QImage& picture);
  void SetTimeframe(session::Timeframe mode);
  /// As if the user had turned the pickers.
  void SetMapTime(orbit::TDateTime moment);
  void FocusMakePicture();
  void ButtonMapToPictureClick();
  /// The settings of update rate or footprints have changed.
  void IntervalChanged();
  void FootprintLevelChanged();

 private:
  void ComboBoxSatForMapChange();

  QComboBox* ComboBoxSatForMap;
  QPushButton* ButtonMapToPicture;
};

}  // namespace pelorin::ui
