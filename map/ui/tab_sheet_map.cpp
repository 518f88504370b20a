#include "map/ui/tab_sheet_map.h"

#include <QComboBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/session/controls.h"

namespace pelorin::ui {

using session::Handle;
using session::Named;

TTabSheetMap::TTabSheetMap(session::Session& session, QWidget* parent)
    : TTabSheet(session, parent),
      ComboBoxSatForMap(Named(new QComboBox(this), "ComboBoxSatForMap")),
      ButtonMapToPicture(
          Named(new QPushButton(QStringLiteral("Make picture..."), this), "ButtonMapToPicture")) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(ComboBoxSatForMap);
  layout->addWidget(ButtonMapToPicture);
  Handle(ComboBoxSatForMap, &QComboBox::currentIndexChanged, this, &TTabSheetMap::ComboBoxSatForMapChange);
  Handle(ButtonMapToPicture, &QPushButton::clicked, this, &TTabSheetMap::ButtonMapToPictureClick);
  connect(&session_, &session::Session::ActiveSatellitesChanged, this,
          [this] { session::FillChooser(ComboBoxSatForMap, session_.Active(), session_.SelectedIndex()); });
  connect(&session_, &session::Session::SatelliteChosen, this,
          [this] { session::SelectQuietly(ComboBoxSatForMap, session_.SelectedIndex()); });
}

void TTabSheetMap::SetBackdrop(const QImage&) {}
void TTabSheetMap::SetTimeframe(session::Timeframe mode) { session_.Map.Mode = mode; }
void TTabSheetMap::SetMapTime(orbit::TDateTime moment) { session_.Map.CurrentTime = moment; }
void TTabSheetMap::FocusMakePicture() { ButtonMapToPicture->setFocus(); }
void TTabSheetMap::ButtonMapToPictureClick() {
  session_.Window.ShowGroundPath(session_.Map.CurrentTime, session_.SelectedIndex());
}
void TTabSheetMap::IntervalChanged() {}
void TTabSheetMap::FootprintLevelChanged() {}
void TTabSheetMap::ComboBoxSatForMapChange() { session_.ChooseSatellite(ComboBoxSatForMap->currentIndex()); }

}  // namespace pelorin::ui
