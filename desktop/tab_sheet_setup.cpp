#include "desktop/tab_sheet_setup.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <algorithm>

#include "app/program_paths.h"
#include "desktop/folder_marks.h"
#include "desktop/full_text_delegate.h"
#include "desktop/passes/group_box_passes.h"
#include "elements/element_renewal.h"
#include "session/controls.h"
#include "session/list_box.h"

namespace pelorin::desktop {
namespace {

using session::Handle;
using session::TListBox;

/// One without elements can only be taken off the list: Available would not show it.
void MarkMissingSatellites(TListBox* list, const session::ActiveSatellites& following) {
  for (int row = 0; row < list->count(); ++row) {
    QListWidgetItem* item = list->item(row);
    if (!following.IsMissing(item->text())) continue;
    item->setData(kMissingRole, QStringLiteral("no elements"));
    item->setToolTip(QStringLiteral("No element file holds this satellite now. It is back when one does."));
    item->setFlags(item->flags() & ~Qt::ItemIsDragEnabled);
  }
}

/// A path may be broken into lines behind its separators.
QString Breakable(QString path) {
  const QChar zeroWidthSpace(0x200B);
  return path.replace(u'/', QString(u'/') + zeroWidthSpace).replace(u'\\', QString(u'\\') + zeroWidthSpace);
}

/// Leaves the cursor where it is when the text stays.
void SetTextOf(QLineEdit* box, const QString& text) {
  if (box->text() != text) box->setText(text);
}

/// Shows a path from its start, whatever its length.
void SetPathOf(QLineEdit* box, const QString& path) {
  box->setText(path);
  box->setCursorPosition(0);
  MarkMissingFolder(box);
}

}  // namespace

TTabSheetSetup::TTabSheetSetup(session::Session& session, QWidget* parent)
    : TTabSheet(session, parent), passes_(new TGroupBoxPasses(session, this)) {
  setObjectName(QStringLiteral("TabSheetSetup"));
  ui_.Build(this, passes_->MakePassListRow(), passes_);

  Handle(this, &TTabSheet::Shown, this, &TTabSheetSetup::TabSheetSetupShow);
  Handle(ui_.ListBoxActive, &TListBox::DragDrop, this, &TTabSheetSetup::ListBoxActiveDragDrop);
  Handle(ui_.ListBoxAvailable, &TListBox::DragDrop, this, &TTabSheetSetup::ListBoxAvailableDragDrop);
  Handle(ui_.ListBoxAvailable, &TListBox::Chosen, this, &TTabSheetSetup::ButtonActivateClick);
  Handle(ui_.ListBoxActive, &TListBox::Chosen, this, &TTabSheetSetup::ButtonDeactivateClick);
  Handle(ui_.ButtonActivate, &QToolButton::clicked, this, &TTabSheetSetup::ButtonActivateClick);
  Handle(ui_.ButtonDeactivate, &QToolButton::clicked, this, &TTabSheetSetup::ButtonDeactivateClick);
  Handle(ui_.ListBoxAvailable, &TListBox::itemSelectionChanged, this, &TTabSheetSetup::EnableArrows);
  Handle(ui_.ListBoxActive, &TListBox::itemSelectionChanged, this, &TTabSheetSetup::EnableArrows);
  Handle(&session, &session::Session::ActiveSatellitesChanged, this, &TTabSheetSetup::ShowSatellites);
  Handle(ui_.ButtonBrowseSatDataPath, &QPushButton::clicked, this,
         &TTabSheetSetup::ButtonBrowseSatDataPathClick);
  Handle(ui_.ButtonBrowseResultsPath, &QPushButton::clicked, this,
         &TTabSheetSetup::ButtonBrowseResultsPathClick);
  Handle(ui_.EditResultsPath, &QLineEdit::editingFinished, this, &TTabSheetSetup::EditResultsPathExit);
  Handle(ui_.ButtonAddPath, &QPushButton::clicked, this, &TTabSheetSetup::ButtonAddPathClick);
  Handle(ui_.ButtonRemovePath, &QPushButton::clicked, this, &TTabSheetSetup::ButtonRemovePathClick);
  Handle(ui_.ListBoxImagePath, &TListBox::itemSelectionChanged, this, &TTabSheetSetup::ListBoxImagePathClick);
  Handle(ui_.ComboBoxRenewal, &QComboBox::currentIndexChanged, this, &TTabSheetSetup::ComboBoxRenewalChange);
  Handle(ui_.SpinEditRenewalDays, &QSpinBox::valueChanged, this, &TTabSheetSetup::SpinEditRenewalDaysChange);
  session::OnKey(ui_.ListBoxActive, Qt::Key_Delete, Boxes(), [this] { ButtonDeactivateClick(); });
  session::OnKey(ui_.ListBoxImagePath, Qt::Key_Delete, Boxes(), [this] { ButtonRemovePathClick(); });

  // A box that goes with the page loses the keyboard when the page itself is no more.
  const auto update = [page = QPointer<TTabSheetSetup>(this)] {
    if (page != nullptr) page->UpdateObserverDetails();
  };
  for (QLineEdit* box : {ui_.EditLatitude, ui_.EditLongitude, ui_.EditHeight, ui_.EditMinPassElev}) {
    session::OnFocusIn(box, Boxes(), update);
    session::OnFocusOut(box, Boxes(), update);
    Handle(box, &QLineEdit::returnPressed, this, &TTabSheetSetup::UpdateObserverDetails);
  }
}

void TTabSheetSetup::Restore() {
  const app::Settings& settings = session_.Settings;
  ui_.EditLatitude->setText(settings.ObserverLatitude.Value);
  ui_.EditLongitude->setText(settings.ObserverLongitude.Value);
  ui_.EditHeight->setText(settings.ObserverHeight.Value);
  ui_.EditMinPassElev->setText(settings.MinPassElevation.Value);
  UpdateObserverDetails();
  SetPathOf(ui_.EditSatelliteDataPath, settings.TwoLineDataPath.Value);
  SetPathOf(ui_.EditResultsPath, settings.ResultsPath.Value);
  ui_.ListBoxImagePath->SetItems(app::FromCommaText(settings.ImagePathList.Value));
  MarkMissingFolders(ui_.ListBoxImagePath);
  ListBoxImagePathClick();
  ui_.ComboBoxRenewal->setCurrentIndex(
      std::clamp(settings.ElementRenewal.Value, 0, ui_.ComboBoxRenewal->count() - 1));
  ComboBoxRenewalChange(ui_.ComboBoxRenewal->currentIndex());
  ui_.SpinEditRenewalDays->setValue(settings.RenewalDays.Value);
  ShowSatellites();
}

void TTabSheetSetup::Store() {
  app::Settings& settings = session_.Settings;
  settings.ObserverLatitude.Value = ui_.EditLatitude->text();
  settings.ObserverLongitude.Value = ui_.EditLongitude->text();
  settings.ObserverHeight.Value = ui_.EditHeight->text();
  settings.MinPassElevation.Value = ui_.EditMinPassElev->text();
  StoreImagePaths();
}

void TTabSheetSetup::StoreImagePaths() {
  session_.Settings.ImagePathList.Value = app::ToCommaText(ui_.ListBoxImagePath->Items());
}

void TTabSheetSetup::UpdateObserverDetails() {
  session_.Station = app::EnterStation({ui_.EditLatitude->text(), ui_.EditLongitude->text(),
                                        ui_.EditHeight->text(), ui_.EditMinPassElev->text()});
  const app::StationTexts& understood = session_.Station.Texts;
  const struct {
    QLineEdit* Box;
    QString What, Understood;
  } entries[] = {{ui_.EditLatitude, QStringLiteral("latitude"), understood.Latitude},
                 {ui_.EditLongitude, QStringLiteral("longitude"), understood.Longitude},
                 {ui_.EditHeight, QStringLiteral("height"), understood.Height},
                 {ui_.EditMinPassElev, QStringLiteral("minimum elevation"), understood.MinElevation}};
  for (const auto& entry : entries) {
    const QString typed = entry.Box->text();
    SetTextOf(entry.Box, entry.Understood);
    if (app::IsSameNumber(typed, entry.Understood)) continue;
    session_.Window.SetStatus(
        QStringLiteral("\"%1\" cannot be used as %2: it is %3 now").arg(typed, entry.What, entry.Understood));
  }
}

void TTabSheetSetup::ShowSatellites() {
  ui_.ListBoxAvailable->SetItems(NamesOf(session_.Following().Available()));
  ui_.ListBoxActive->SetItems(session_.Following().Followed());
  MarkMissingSatellites(ui_.ListBoxActive, session_.Following());
  ExplainEmptyLists();
  EnableArrows();
}

void TTabSheetSetup::ComboBoxRenewalChange(int renewal) {
  session_.Settings.ElementRenewal.Value = renewal;
  ui_.SpinEditRenewalDays->setEnabled(renewal != static_cast<int>(elements::Renewal::WhenTold));
}

void TTabSheetSetup::SpinEditRenewalDaysChange(int days) { session_.Settings.RenewalDays.Value = days; }

void TTabSheetSetup::EnableArrows() {
  ui_.ButtonActivate->setEnabled(!ui_.ListBoxAvailable->SelectedText().isEmpty());
  ui_.ButtonDeactivate->setEnabled(!ui_.ListBoxActive->SelectedText().isEmpty());
}

void TTabSheetSetup::ExplainEmptyLists() {
  if (session_.Satellites().Count() > 0) {
    ui_.ListBoxAvailable->SetEmptyText(QStringLiteral("All satellites are active."));
    ui_.ListBoxActive->SetEmptyText(
        QStringLiteral("Drag here the satellites to follow, or double click them."));
    return;
  }
  ui_.ListBoxAvailable->SetEmptyText(
      QStringLiteral("No satellites.\n\nPut element files (*.2LI or *.TLE) into the folder\n%1\n"
                     "and start Pelorin again.")
          .arg(Breakable(session_.Settings.TwoLineDataPath.Value)));
  ui_.ListBoxActive->SetEmptyText(QString());
}

void TTabSheetSetup::ListBoxActiveDragDrop(TListBox* source) {
  if (source == ui_.ListBoxAvailable) ButtonActivateClick();
}

void TTabSheetSetup::ListBoxAvailableDragDrop(TListBox* source) {
  if (source == ui_.ListBoxActive) ButtonDeactivateClick();
}

void TTabSheetSetup::ButtonActivateClick() { session_.Activate(ui_.ListBoxAvailable->SelectedText()); }

void TTabSheetSetup::ButtonDeactivateClick() { session_.Deactivate(ui_.ListBoxActive->SelectedText()); }

void TTabSheetSetup::TakeFolder(const QString& folder, QLineEdit* box, app::TRegistryString& setting) {
  setting.Value = app::WithSeparator(folder);
  SetPathOf(box, setting.Value);
}

void TTabSheetSetup::ButtonBrowseSatDataPathClick() {
  const std::optional<QString> chosen = Boxes().ChooseFolder(
      QStringLiteral("Find path for two-line element data files"), ui_.EditSatelliteDataPath->text());
  if (!chosen) return;
  TakeFolder(*chosen, ui_.EditSatelliteDataPath, session_.Settings.TwoLineDataPath);
  ExplainEmptyLists();
  session_.Window.SetStatus(
      QStringLiteral("The satellites of this folder are loaded when Pelorin is started again."));
}

void TTabSheetSetup::ButtonBrowseResultsPathClick() {
  const std::optional<QString> chosen =
      Boxes().ChooseFolder(QStringLiteral("Set path for results output files"), ui_.EditResultsPath->text());
  if (chosen) TakeFolder(*chosen, ui_.EditResultsPath, session_.Settings.ResultsPath);
}

void TTabSheetSetup::EditResultsPathExit() {
  const QString typed = ui_.EditResultsPath->text().trimmed();
  app::TRegistryString& setting = session_.Settings.ResultsPath;
  // Results must go somewhere: an emptied box shows the folder again. One below the working folder is meant
  // to stay the same when the program is started elsewhere.
  const QString folder = typed.isEmpty() || typed == setting.Value
                             ? setting.Value
                             : QDir::toNativeSeparators(QDir::current().absoluteFilePath(typed));
  TakeFolder(folder, ui_.EditResultsPath, setting);
}

void TTabSheetSetup::ButtonAddPathClick() {
  const std::optional<QString> chosen = Boxes().ChooseFolder(
      QStringLiteral("Find path for satellite image files"), ui_.ListBoxImagePath->SelectedText());
  if (!chosen) return;
  ui_.ListBoxImagePath->addItem(*chosen);
  MarkMissingFolders(ui_.ListBoxImagePath);
  StoreImagePaths();
}

void TTabSheetSetup::ButtonRemovePathClick() {
  if (!ui_.ListBoxImagePath->SelectedText().isEmpty()) {
    delete ui_.ListBoxImagePath->takeItem(ui_.ListBoxImagePath->currentRow());
    StoreImagePaths();
  }
  ListBoxImagePathClick();
}

void TTabSheetSetup::ListBoxImagePathClick() {
  ui_.ButtonRemovePath->setEnabled(!ui_.ListBoxImagePath->SelectedText().isEmpty());
}

void TTabSheetSetup::TabSheetSetupShow() {
  session_.Window.SetStatus(QString());
  session_.Window.SetTitle(QStringLiteral("Pelorin - setup"));
  MarkMissingFolder(ui_.EditSatelliteDataPath);
  MarkMissingFolder(ui_.EditResultsPath);
  MarkMissingFolders(ui_.ListBoxImagePath);
}

}  // namespace pelorin::desktop
