// What the main window's menu items do.

#include <QAction>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTabWidget>

#include "desktop/about_box.h"
#include "desktop/form_main.h"
#include "desktop/help/help.h"
#include "desktop/map/tab_sheet_map.h"
#include "desktop/overlay/form_overlay_text_options.h"
#include "desktop/overlay/tab_sheet_flight.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "desktop/passes/form_ephemeris.h"
#include "desktop/passes/form_sat_keps_summary.h"
#include "desktop/passes/form_update_keplers.h"
#include "map/map_clock.h"

namespace pelorin::desktop {

void TFormMain::Open1Click() { TabSheetGroundPath->Open1Click(); }

void TFormMain::FilePrintImageClick() { TabSheetGroundPath->PrintImageClick(); }

void TFormMain::FilePrintPassListClick() {
  UpdateObserverDetails();
  FormEphemeris->exec();
}

void TFormMain::FilePrintSetupClick() {
  if (QPrinterInfo::availablePrinterNames().isEmpty()) {
    QPageSetupDialog(&Printer(), this).exec();
  } else {
    QPrintDialog dialog(&Printer(), this);
    dialog.setWindowTitle(QStringLiteral("Print setup"));
    dialog.exec();
  }
}

void TFormMain::Exit1Click() { close(); }

void TFormMain::FootprintChanged(QAction* item) {
  for (std::size_t level = 0; level < ui_.MenuFootprint.size(); ++level) {
    if (ui_.MenuFootprint[level] == item) settings_.FootprintShowLevel.Value = static_cast<int>(level);
  }
  TabSheetMap->FootprintLevelChanged();
}

void TFormMain::IntervalChanged(QAction* item) {
  for (std::size_t index = 0; index < ui_.MenuInterval.size(); ++index) {
    if (ui_.MenuInterval[index] == item) settings_.UpdateInterval.Value = map::kUpdateIntervals[index];
  }
  TabSheetMap->IntervalChanged();
}

void TFormMain::MenuSavePassDetailsClick() {
  settings_.SavePassDetails.Value = ui_.MenuSavePassDetails->isChecked();
}

void TFormMain::MenuShowOverlayClick() {
  settings_.ShowOverlay.Value = ui_.MenuShowOverlay->isChecked();
  TabSheetGroundPath->OverlayMarksChanged();
  TabSheetFlight->OverlayMarksChanged();
}

void TFormMain::MenuOverlayLinesOnlyClick() {
  settings_.OverlayLinesOnly.Value = ui_.MenuOverlayLinesOnly->isChecked();
  TabSheetGroundPath->OverlayMarksChanged();
  TabSheetFlight->OverlayMarksChanged();
}

void TFormMain::OptionsTextOverlayClick() { FormOverlayTextOptions->Run(); }

void TFormMain::OptionsUpdateKeplersClick() { FormUpdateKeplers->exec(); }

void TFormMain::ViewSatelliteDataClick() { FormSatKepsSummary->exec(); }

void TFormMain::LookChanged(QAction* item) {
  for (std::size_t index = 0; index < ui_.MenuLook.size(); ++index) {
    if (ui_.MenuLook[index] == item) settings_.WindowColours.Value = static_cast<int>(index);
  }
  if (surroundings_.ApplyLook) surroundings_.ApplyLook(static_cast<Look>(settings_.WindowColours.Value));
}

void TFormMain::HelpIntroductionClick() { Boxes().Help(kHelpIntroduction); }

void TFormMain::HelpContentsClick() { Boxes().Help(session::kHelpContents); }

void TFormMain::HelpIndexClick() { Boxes().Help(session::kHelpIndex); }

void TFormMain::HelpFAQsClick() { Boxes().Help(kHelpFaqs); }

void TFormMain::HelpPageClick() { Boxes().Help(HelpTopicOf(ui_.PageControl->currentWidget()->objectName())); }

void TFormMain::HelpAboutClick() { AboutBoxQuillfen->exec(); }

}  // namespace pelorin::desktop
