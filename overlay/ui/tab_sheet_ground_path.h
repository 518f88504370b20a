#pragma once

#include "app/session/tab_sheet.h"
#include "overlay/overlay_generator.h"

namespace pelorin::ui {

/// The page on which the received picture of a pass lies beside its map.
class TTabSheetGroundPath : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetGroundPath(session::Session& session, QWidget* parent);

  /// What maps are made from; borrowed for the page's life.
  void SetSources(const overlay::OverlaySources& sources);

  /// Turns both pickers to a moment, and looks for no picture.
  void SetPassTime(orbit::TDateTime moment);
  /// By its place among the active satellites.
  void ChooseSatellite(int index);
  /// Takes over a moment and a satellite and looks for the picture. When the program was started with a pass,
  /// the picture or the map follows a little later.
  void ShowFor(orbit::TDateTime moment, int satellite);

  /// A map is being made.
  bool IsBusy() const { return false; }

  void ButtonGenTopoClick();
  void Open1Click();
  void PrintImageClick();

 private:
  overlay::OverlaySources sources_;
};

}  // namespace pelorin::ui
