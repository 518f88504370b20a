// What the main window's menu items do.

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QMenu>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTabWidget>
#include <algorithm>

#include "desktop/about_box.h"
#include "desktop/form_main.h"
#include "desktop/help/help.h"
#include "desktop/map/tab_sheet_map.h"
#include "desktop/overlay/form_alignments.h"
#include "desktop/overlay/form_overlay_text_options.h"
#include "desktop/overlay/tab_sheet_flight.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "desktop/passes/form_ephemeris.h"
#include "desktop/passes/form_sat_keps_summary.h"
#include "desktop/passes/form_update_keplers.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

/// None, when the value is of no item.
void CheckItemOf(const QActionGroup* group, int value) {
  for (QAction* item : group->actions()) item->setChecked(item->data().toInt() == value);
}

}  // namespace

void TFormMain::ConnectMenus() {
  using session::Handle;
  Handle(ui_.Open1, &QAction::triggered, this, &TFormMain::Open1Click);
  Handle(ui_.OpenFolder1, &QAction::triggered, this, &TFormMain::OpenFolder1Click);
  Handle(ui_.MenuOpenRecent, &QMenu::aboutToShow, this, &TFormMain::MenuOpenRecentShow);
  Handle(ui_.MenuOpenRecent, &QMenu::triggered, this, &TFormMain::RecentPictureChosen);
  Handle(ui_.FilePrintImage, &QAction::triggered, this, &TFormMain::FilePrintImageClick);
  Handle(ui_.FilePrintPassList, &QAction::triggered, this, &TFormMain::FilePrintPassListClick);
  Handle(ui_.FilePrintSetup, &QAction::triggered, this, &TFormMain::FilePrintSetupClick);
  Handle(ui_.Exit1, &QAction::triggered, this, &TFormMain::Exit1Click);
  Handle(ui_.FootprintGroup, &QActionGroup::triggered, this, &TFormMain::FootprintChanged);
  Handle(ui_.IntervalGroup, &QActionGroup::triggered, this, &TFormMain::IntervalChanged);
  Handle(ui_.AlignGroup, &QActionGroup::triggered, this,
         [](TFormMain* form, QAction* item) { form->settings_.AlignOpened.Value = item->data().toInt(); });
  Handle(ui_.MenuSavePassDetails, &QAction::triggered, this, &TFormMain::MenuSavePassDetailsClick);
  Handle(ui_.MenuShowOverlay, &QAction::triggered, this, &TFormMain::MenuShowOverlayClick);
  Handle(ui_.MenuOverlayLinesOnly, &QAction::triggered, this, &TFormMain::MenuOverlayLinesOnlyClick);
  Handle(ui_.OptionsTextOverlay, &QAction::triggered, this, &TFormMain::OptionsTextOverlayClick);
  Handle(ui_.OptionsUpdateKeplers, &QAction::triggered, this, &TFormMain::OptionsUpdateKeplersClick);
  Handle(ui_.ViewSatelliteData, &QAction::triggered, this, &TFormMain::ViewSatelliteDataClick);
  Handle(ui_.ViewAlignments, &QAction::triggered, this, &TFormMain::ViewAlignmentsClick);
  Handle(ui_.LookGroup, &QActionGroup::triggered, this, &TFormMain::LookChanged);
  Handle(ui_.HelpIntroduction, &QAction::triggered, this, &TFormMain::HelpIntroductionClick);
  Handle(ui_.HelpContents, &QAction::triggered, this, &TFormMain::HelpContentsClick);
  Handle(ui_.HelpIndex, &QAction::triggered, this, &TFormMain::HelpIndexClick);
  Handle(ui_.HelpFAQs, &QAction::triggered, this, &TFormMain::HelpFAQsClick);
  Handle(ui_.HelpPage, &QAction::triggered, this, &TFormMain::HelpPageClick);
  Handle(ui_.HelpAbout, &QAction::triggered, this, &TFormMain::HelpAboutClick);
  Handle(ui_.ShowDebug, &QAction::triggered, this,
         [](TFormMain* form) { form->ShowPage(session::Page::Debug); });
}

void TFormMain::RestoreMenus() {
  ui_.MenuSavePassDetails->setChecked(settings_.SavePassDetails.Value);
  ui_.MenuShowOverlay->setChecked(settings_.ShowOverlay.Value);
  ui_.MenuOverlayLinesOnly->setChecked(settings_.OverlayLinesOnly.Value);
  CheckItemOf(ui_.FootprintGroup, settings_.FootprintShowLevel.Value);
  CheckItemOf(ui_.IntervalGroup, settings_.UpdateInterval.Value);
  CheckItemOf(ui_.AlignGroup, settings_.AlignOpened.Value);
  CheckItemOf(ui_.LookGroup, settings_.WindowColours.Value);
  TabSheetMap->IntervalChanged();
}

void TFormMain::Open1Click() { TabSheetGroundPath->Open1Click(); }

void TFormMain::OpenFolder1Click() { TabSheetGroundPath->OpenFolder1Click(); }

void TFormMain::MenuOpenRecentShow() {
  ui_.MenuOpenRecent->clear();
  for (const QString& path : app::FromCommaText(settings_.RecentPictures.Value)) {
    if (!QFileInfo::exists(path)) continue;
    // Pictures of two passes are called alike, and so are the folders of their instrument; the pass's differ.
    constexpr qsizetype told = 3;
    const QStringList parts = QDir::cleanPath(path).split(u'/', Qt::SkipEmptyParts);
    QString name = parts.mid(std::max<qsizetype>(parts.size() - told, 0)).join(u'/');
    QAction* item = ui_.MenuOpenRecent->addAction(name.replace(u'&', QStringLiteral("&&")));
    item->setData(path);
  }
  if (ui_.MenuOpenRecent->isEmpty()) {
    ui_.MenuOpenRecent->addAction(QStringLiteral("No picture yet"))->setEnabled(false);
  }
}

void TFormMain::RecentPictureChosen(QAction* item) { TabSheetGroundPath->OpenPath(item->data().toString()); }

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
  settings_.FootprintShowLevel.Value = item->data().toInt();
  TabSheetMap->FootprintLevelChanged();
}

void TFormMain::IntervalChanged(QAction* item) {
  settings_.UpdateInterval.Value = item->data().toInt();
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

void TFormMain::ViewAlignmentsClick() {
  FormAlignments->exec();
  TabSheetGroundPath->AlignmentLogChanged();
}

void TFormMain::LookChanged(QAction* item) {
  settings_.WindowColours.Value = item->data().toInt();
  if (surroundings_.ApplyLook) surroundings_.ApplyLook(static_cast<Look>(settings_.WindowColours.Value));
}

void TFormMain::HelpIntroductionClick() { Boxes().Help(kHelpIntroduction); }

void TFormMain::HelpContentsClick() { Boxes().Help(session::kHelpContents); }

void TFormMain::HelpIndexClick() { Boxes().Help(session::kHelpIndex); }

void TFormMain::HelpFAQsClick() { Boxes().Help(kHelpFaqs); }

void TFormMain::HelpPageClick() { Boxes().Help(HelpTopicOf(ui_.PageControl->currentWidget()->objectName())); }

void TFormMain::HelpAboutClick() { AboutBoxQuillfen->exec(); }

}  // namespace pelorin::desktop
