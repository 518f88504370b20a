#pragma once

#include "app/session/tab_sheet.h"
#include "overlay/overlay_generator.h"

namespace pelorin::ui {

/// The page on which a pass is replayed line by line, as if it were being received.
class TTabSheetFlight : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetFlight(session::Session& session, QWidget* parent);

  /// What lines are made from; borrowed for the page's life.
  void SetSources(const overlay::OverlaySources& sources);

  /// Ends a running flight; it has ended when this returns.
  void StopFlight();
  /// Gives the keyboard to the start button.
  void FocusRunFlight();

 private:
  overlay::OverlaySources sources_;
};

}  // namespace pelorin::ui
