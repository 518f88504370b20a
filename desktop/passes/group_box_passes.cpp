#include "desktop/passes/group_box_passes.h"

#include <QApplication>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QSpinBox>
#include <algorithm>

#include "elements/set_ageing.h"
#include "orbit/scalar_math.h"
#include "passes/pass_list.h"
#include "passes/pass_list_file.h"
#include "session/controls.h"
#include "session/hourglass.h"
#include "session/list_box.h"
#include "session/picker_time.h"

namespace pelorin::desktop {
namespace {

constexpr int kFirstSettlingMs = 100;
/// Whoever scrolls through the dates wants one list at the end, not one at every step.
constexpr int kSettlingMs = 500;

QString NoListYetText() {
  return QStringLiteral("No pass list yet.\n\nMake satellites active, then press \"Make pass list\".");
}

QString NoPassesText() {
  return QStringLiteral(
      "No passes.\n\nShow another date, make a list of more days, choose more satellites or lower the "
      "minimum "
      "elevation.");
}

}  // namespace

TGroupBoxPasses::TGroupBoxPasses(session::Session& session, QWidget* parent)
    : QGroupBox(parent), session_(session) {
  session::Named(this, "GroupBoxPasses");
  ui_.Build(this);
  ui_.ListBoxPasses->SetEmptyText(NoListYetText());
  timerPassDateChanging_ = session::Named(new QTimer(this), "TimerPassDateChanging");
  timerPassDateChanging_->setInterval(kFirstSettlingMs);

  using session::Handle;
  Handle(ui_.DateTimePickerPasses, &QDateEdit::dateChanged, this,
         &TGroupBoxPasses::DateTimePickerPassesChange);
  Handle(timerPassDateChanging_, &QTimer::timeout, this, &TGroupBoxPasses::TimerPassDateChangingTimer);
  Handle(ui_.ListBoxPasses, &QListWidget::itemSelectionChanged, this, &TGroupBoxPasses::ListBoxPassesClick);
  Handle(ui_.ListBoxPasses, &session::TListBox::Chosen, this, &TGroupBoxPasses::ListBoxPassesDblClick);
  Handle(ui_.ButtonNextPass, &QPushButton::clicked, this, &TGroupBoxPasses::ButtonNextPassClick);
  Handle(ui_.ButtonMapFromPass, &QPushButton::clicked, this, &TGroupBoxPasses::ButtonMapFromPassClick);
  Handle(ui_.ButtonPicFromPass, &QPushButton::clicked, this, &TGroupBoxPasses::ButtonPicFromPassClick);
  Handle(ui_.ButtonFlightFromPass, &QPushButton::clicked, this, &TGroupBoxPasses::ButtonFlightFromPassClick);
  Handle(ui_.ButtonRegenPasses, &QPushButton::clicked, this, &TGroupBoxPasses::ButtonRegenPassesClick);
  Handle(ui_.UpDownDaysAhead, &QSpinBox::valueChanged, this, &TGroupBoxPasses::UpDownDaysAheadClick);
  Handle(&session, &session::Session::SatellitesReloaded, this, &TGroupBoxPasses::SatellitesReloaded);
  Handle(ui_.ButtonEphemeris, &QPushButton::clicked, this, &TGroupBoxPasses::ButtonEphemerisClick);
}

void TGroupBoxPasses::SetPassDate(orbit::TDateTime moment) {
  session::TurnPicker(ui_.DateTimePickerPasses, DatePart(moment));
}

void TGroupBoxPasses::StartFirstList() {
  session_.Pass.DaysAhead = ui_.UpDownDaysAhead->value();
  timerPassDateChanging_->start();
}

bool TGroupBoxPasses::IsSettled() const { return !timerPassDateChanging_->isActive(); }

QStringList TGroupBoxPasses::Entries() const { return ui_.ListBoxPasses->Items(); }

void TGroupBoxPasses::SelectPass(int index) {
  ui_.ListBoxPasses->setCurrentRow(index);
  EnablePassButtons(IsPassSelected());
}

void TGroupBoxPasses::SatellitesReloaded() {
  if (session_.Run.PassListMade) timerPassDateChanging_->start();
}

void TGroupBoxPasses::DateTimePickerPassesChange() { timerPassDateChanging_->start(); }

void TGroupBoxPasses::TimerPassDateChangingTimer() {
  // A list may have something to say, and a box that is open already is read first.
  if (QApplication::activeModalWidget() != nullptr) return;
  timerPassDateChanging_->stop();
  timerPassDateChanging_->setInterval(kSettlingMs);
  BuildPassList();
}

void TGroupBoxPasses::UpDownDaysAheadClick(int days) {
  session_.Pass.DaysAhead = days;
  ui_.ButtonRegenPasses->setText(days == 1 ? QStringLiteral("Make pass list")
                                           : QStringLiteral("Make %1 day pass list").arg(days));
}

void TGroupBoxPasses::ButtonRegenPassesClick() {
  // A box of the station may still hold what was just typed.
  session_.Window.UpdateObserverDetails();
  BuildPassList();
}

void TGroupBoxPasses::ButtonEphemerisClick() { session_.Window.PrintPassList(); }

bool TGroupBoxPasses::BuildPassList() {
  // A date that still settles is in this list already.
  timerPassDateChanging_->stop();
  EnablePassButtons(false);
  if (session_.Satellites().Count() == 0) {
    Boxes().Warning(passes::NoSatellitesText(session_.Settings.TwoLineDataPath.Value),
                    passes::kNoSatellitesHelp);
    return false;
  }
  if (session_.Active().empty()) {
    session_.Window.ShowPage(session::Page::Setup);
    Boxes().Message(passes::NoActiveSatellitesText());
    return false;
  }
  const session::Hourglass hourglass;
  ui_.ListBoxPasses->setUpdatesEnabled(false);
  const auto repaint = qScopeGuard([this] { ui_.ListBoxPasses->setUpdatesEnabled(true); });

  ui_.ListBoxPasses->SetItems({});
  session_.Pass.PassListDate = session::PickedDay(ui_.DateTimePickerPasses);
  ui_.LabelPassDate->setText(
      QStringLiteral("Passes for %1  (UTC)")
          .arg(QString::fromStdString(FormatDateTime("yyyy mmm dd", session_.Pass.PassListDate))));
  const std::vector<orbit::TSatellite> sets =
      session_.ActiveSetsFor(session_.Pass.PassListDate, session_.Pass.DaysAhead);
  const QStringList entries = passes::PassListEntries(
      sets, session_.Station.Place,
      {session_.Pass.PassListDate, session_.Pass.DaysAhead, session_.Station.MinElevationDeg});
  ui_.ListBoxPasses->SetEmptyText(NoPassesText());
  ui_.ListBoxPasses->SetItems(entries);
  TellAges(sets);
  if (session_.Unattended == nullptr && !entries.isEmpty()) {
    session_.SaveUnasked(session::Session::Unasked::PassList,
                         [&] { passes::SavePassList(session_.Settings.ResultsPath.Value, entries); });
  }
  session_.Run.PassListMade = true;
  return true;
}

void TGroupBoxPasses::TellAges(const std::vector<orbit::TSatellite>& sets) {
  const QString common = ui_.ListBoxPasses->toolTip();
  for (int row = 0; row < ui_.ListBoxPasses->count(); ++row) {
    QListWidgetItem* item = ui_.ListBoxPasses->item(row);
    const passes::ChosenPass pass = passes::ParseSelectedPass(item->text(), session_.Pass.PassListDate);
    const std::string name = pass.SatelliteName.toStdString();
    const auto set = std::ranges::find(sets, name, &orbit::TSatellite::Name);
    if (set == sets.end()) continue;
    const QString age = elements::DoubtText(session_.DoubtOf(*set, pass.PassStart));
    item->setToolTip(pass.SatelliteName + QStringLiteral(": ") + age + QStringLiteral("\n\n") + common);
  }
}

int TGroupBoxPasses::FindPassAfter(orbit::TDateTime now, orbit::TDateTime day) {
  SetPassDate(day);
  return BuildPassList() ? passes::FindNextPassIndex(Entries(), now) : -1;
}

void TGroupBoxPasses::ButtonNextPassClick() {
  session_.Window.UpdateObserverDetails();
  const orbit::TDateTime now = session_.Now();
  int index = FindPassAfter(now, now);
  // Without satellites tomorrow has no passes either, and the user need not be told twice.
  if (index < 0 && !session_.Active().empty()) index = FindPassAfter(now, {now.Days + 1});
  if (index < 0) return;
  SelectPass(index);
  ui_.ButtonMapFromPass->setFocus();
}

void TGroupBoxPasses::ListBoxPassesClick() { EnablePassButtons(IsPassSelected()); }

void TGroupBoxPasses::ListBoxPassesDblClick() { ui_.ButtonPicFromPass->click(); }

bool TGroupBoxPasses::IsPassSelected() const { return !ui_.ListBoxPasses->SelectedText().isEmpty(); }

void TGroupBoxPasses::EnablePassButtons(bool enabled) {
  ui_.ButtonMapFromPass->setEnabled(enabled);
  ui_.ButtonPicFromPass->setEnabled(enabled);
  ui_.ButtonFlightFromPass->setEnabled(enabled);
}

passes::ChosenPass TGroupBoxPasses::ParseSelectedPass() const {
  return passes::ParseSelectedPass(ui_.ListBoxPasses->SelectedText(), session_.Pass.PassListDate);
}

int TGroupBoxPasses::ActiveIndex(const QString& satelliteName) const {
  const std::vector<session::NamedSatellite>& active = session_.Active();
  for (std::size_t index = 0; index < active.size(); ++index) {
    // The list writes names in upper case, as the satellite itself does.
    if (QString::fromStdString(active[index].Satellite->Name) == satelliteName) {
      return static_cast<int>(index);
    }
  }
  throw orbit::ConvertError(satelliteName.toStdString() +
                            " is no longer active.  Make it active again, or make a new pass list.");
}

void TGroupBoxPasses::TakeOver(const passes::ChosenPass& pass) {
  session_.Pass.PassStart = pass.PassStart;
  session_.Window.SetMapTime(pass.PassStart);
  session_.SetPassDirection(pass.SouthBound);
  session_.SetPassDuration(pass.PassDurationMinutes);
}

void TGroupBoxPasses::ShowOnMap(const passes::ChosenPass& pass) {
  const int satelliteIndex = ActiveIndex(pass.SatelliteName);
  session_.Window.ShowPage(session::Page::WorldMap);
  TakeOver(pass);
  session_.ChooseSatellite(satelliteIndex);
  session_.Window.FocusMakePicture();
}

void TGroupBoxPasses::ButtonMapFromPassClick() {
  if (!IsPassSelected() || session_.RefusesWhileMakingMap()) return;
  ShowOnMap(ParseSelectedPass());
}

void TGroupBoxPasses::ButtonPicFromPassClick() {
  if (!IsPassSelected() || session_.RefusesWhileMakingMap()) return;
  ShowOnMap(ParseSelectedPass());
  session_.Window.MakePictureFromMap();
}

passes::PassMatch TGroupBoxPasses::FindPass(const QString& passString) const {
  const orbit::TDateTime now = session_.Now();
  const orbit::TDateTime day = DatePart(orbit::ParseTimeString(passString.toStdString(), now));
  return passes::FindPassByString(passString, session_.ActiveSetsFor(day, 1), session_.Station.Place,
                                  session_.Station.MinElevationDeg, now);
}

void TGroupBoxPasses::MakePictureOf(const passes::PassMatch& match) {
  if (const qsizetype index = Entries().indexOf(match.Entry); index >= 0) {
    SelectPass(static_cast<int>(index));
  }
  ShowOnMap(match.Pass);
  session_.Window.MakePictureFromMap();
}

void TGroupBoxPasses::ButtonFlightFromPassClick() {
  if (!IsPassSelected() || session_.RefusesWhileMakingMap()) return;
  const passes::ChosenPass pass = ParseSelectedPass();
  const int satelliteIndex = ActiveIndex(pass.SatelliteName);
  session_.Window.ShowPage(session::Page::Flight);
  session_.Window.StopFlight();
  TakeOver(pass);
  session_.Pass.FlightTimeOffset = pass.PassStart.Days - session_.Now().Days;
  session_.ChooseSatellite(satelliteIndex);
  session_.Window.FocusRunFlight();
}

}  // namespace pelorin::desktop
