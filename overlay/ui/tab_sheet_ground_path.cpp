#include "overlay/ui/tab_sheet_ground_path.h"

namespace pelorin::ui {

TTabSheetGroundPath::TTabSheetGroundPath(session::Session& session, QWidget* parent)
    : TTabSheet(session, parent) {
  setObjectName(QStringLiteral("TabSheetGroundPath"));
}

void TTabSheetGroundPath::SetSources(const overlay::OverlaySources& sources) { sources_ = sources; }
void TTabSheetGroundPath::SetPassTime(orbit::TDateTime) {}
void TTabSheetGroundPath::ChooseSatellite(int) {}
void TTabSheetGroundPath::ShowFor(orbit::TDateTime, int) {}
void TTabSheetGroundPath::ButtonGenTopoClick() {}
void TTabSheetGroundPath::Open1Click() {}
void TTabSheetGroundPath::PrintImageClick() {}

}  // namespace pelorin::ui
