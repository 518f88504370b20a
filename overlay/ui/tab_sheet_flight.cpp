#include "overlay/ui/tab_sheet_flight.h"

namespace pelorin::ui {

TTabSheetFlight::TTabSheetFlight(session::Session& session, QWidget* parent) : TTabSheet(session, parent) {
  setObjectName(QStringLiteral("TabSheetFlight"));
}

void TTabSheetFlight::SetSources(const overlay::OverlaySources& sources) { sources_ = sources; }
void TTabSheetFlight::StopFlight() {}
void TTabSheetFlight::FocusRunFlight() {}

}  // namespace pelorin::ui
