#pragma once

#include "overlay/flight_replay.h"
#include "session/doubt_label.h"
#include "session/tab_sheet.h"
#include "swath/scanner_table.h"

class QComboBox;
class QPushButton;
class QScrollArea;
class QTimer;

namespace pelorin::desktop {

class TFlightView;

/// The page on which a pass is replayed line by line, as if it were being received.
class TTabSheetFlight : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetFlight(session::Session& session, QWidget* parent);

  /// What lines are made from; borrowed for the page's life.
  void SetSources(const overlay::OverlaySources& sources, const swath::ScannerTable& scanners);

  /// The user wants to see more or less of the overlay: from the next line on.
  void OverlayMarksChanged();
  /// Ends a running flight; it has ended when this returns.
  void StopFlight();
  /// Gives the keyboard to the start button.
  void FocusRunFlight();

 private:
  void Build();
  void TabSheetFlightShow();
  void TabSheetFlightHide();
  void ActiveSatellitesChanged();
  void SatelliteChosen();
  void PassDirectionChanged();

  void ComboBoxSatForFlightChange(int index);
  void ButtonRunFlightClick();
  void ButtonRunFlightKeyPress();
  void ButtonFlightDirectionClick();
  void ButtonSetFlightTimeClick();
  void TimerFlightTimer();

  orbit::TDateTime FlightTime() const;
  void StartFlight();
  void ShowState();
  void ScrollToLine();
  /// After lines were drawn, the first of them to `rowBefore`.
  void ScrollAlong(int rowBefore);

  QComboBox* ComboBoxSatForFlight;
  QPushButton *ButtonFlightDirection, *ButtonRunFlight, *ButtonSetFlightTime;
  session::TDoubtLabel* LabelElementAge;
  QScrollArea* ScrollBoxFlight;
  TFlightView* ImageFlight;
  QTimer* TimerFlight;

  overlay::OverlaySources sources_;
  const swath::ScannerTable* scanners_ = nullptr;
  overlay::FlightReplay flight_;
};

}  // namespace pelorin::desktop
