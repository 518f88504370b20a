#include "session/session.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <exception>
#include <filesystem>
#include <utility>

#include "app/element_address.h"
#include "app/program_paths.h"
#include "orbit/julian_date.h"

namespace pelorin::session {

Session::Session(app::Settings& settings, Prompts& boxes, Shell& window, Clock now, UnattendedRun* unattended)
    : Settings(settings),
      Boxes(boxes),
      Window(window),
      Now(std::move(now)),
      Unattended(unattended),
      known_(std::make_unique<elements::KnownSets>()),
      following_(std::make_unique<session::ActiveSatellites>(known_->Satellites())) {}

orbit::TDateTime Session::LocalNow() const {
  const orbit::TDateTime now = Now();
  return {now.Days + TimeZone.At(now).value_or(app::LocalClock()).OffsetMinutes / orbit::kMinutesPerDay};
}

int Session::SelectedIndex() const {
  const std::vector<NamedSatellite>& active = Active();
  for (std::size_t index = 0; index < active.size(); ++index) {
    if (active[index].Satellite == selected_) return static_cast<int>(index);
  }
  return -1;
}

void Session::LoadSatellites(const QString& folder) {
  auto known = std::make_unique<elements::KnownSets>(std::filesystem::path(folder.toStdU16String()),
                                                     app::ElementArchiveFolder());
  selected_ = nullptr;
  following_ = std::make_unique<session::ActiveSatellites>(known->Satellites());
  known_ = std::move(known);
}

void Session::ReloadSatellites() {
  Run.Reloading = true;
  const auto ended = qScopeGuard([this] { Run.Reloading = false; });
  LoadSatellites(QString::fromStdU16String(Satellites().Folder().u16string()));
  RestoreActive();
  Q_EMIT SatellitesReloaded();
}

std::vector<const orbit::TSatellite*> Session::SatellitesInUse() const {
  std::vector<const orbit::TSatellite*> satellites;
  for (const NamedSatellite& entry : Active()) satellites.push_back(entry.Satellite);
  return satellites;
}

elements::ElementNotes Session::NotesOnElements() const {
  return elements::NotesOn(*known_, following_->Missing(), SatellitesInUse(),
                           orbit::JulianDateOfDateTime(LocalNow()));
}

elements::ElementUpdate Session::UpdateOf(const QStringList& files, const QString& address) const {
  elements::ElementUpdate update;
  update.Files = files;
  update.Folder = app::WithSeparator(QString::fromStdU16String(Satellites().Folder().u16string()));
  update.BaseAddress = address;
  update.PlainFilesToo = !app::IsPublicService(address);
  update.ArchiveFolder = app::ElementArchiveFolder();
  update.Now = Now;
  return update;
}

orbit::TSatellite Session::SetNear(const orbit::TSatellite& satellite, orbit::TDateTime moment) const {
  return known_->Nearest(satellite, orbit::JulianDateOfDateTime(moment));
}

void Session::ShowDoubt(TDoubtLabel* label, const orbit::TSatellite& set, orbit::TDateTime moment) const {
  const elements::SetDoubt doubt = DoubtOf(set, moment);
  label->ShowDoubt(doubt, elements::LevelOf(doubt, Settings.NotableLines.Value, Settings.GraveLines.Value));
}

std::vector<orbit::TSatellite> Session::ActiveSetsFor(orbit::TDateTime firstDay, int days) const {
  const orbit::TDateTime middle{firstDay.Days + days / 2.0};
  const bool isPast = middle.Days < orbit::DatePart(Now()).Days;
  std::vector<orbit::TSatellite> sets;
  for (const NamedSatellite& entry : Active()) {
    sets.push_back(isPast ? SetNear(*entry.Satellite, middle) : *entry.Satellite);
  }
  return sets;
}

void Session::RestoreActive() {
  following_->Restore(Settings.SatelliteList.Value, Settings.SatelliteNumbers.Value);
  Settings.PrimarySatellite.Value = following_->NameNow(Settings.PrimarySatellite.Value);
  RefreshActiveSatellites();
}

void Session::Activate(const QString& name) {
  if (following_->Activate(name)) RefreshActiveSatellites();
}

void Session::Deactivate(const QString& name) {
  if (following_->Deactivate(name)) RefreshActiveSatellites();
}

void Session::RefreshActiveSatellites() {
  Settings.SatelliteList.Value = following_->CommaText();
  Settings.SatelliteNumbers.Value = following_->Numbers();
  const QString primary = Settings.PrimarySatellite.Value;
  Q_EMIT ActiveSatellitesChanged();
  ChooseSatellite(following_->IndexOf(primary));
  // As long as its file is missing, nobody else takes its place.
  if (following_->IsMissing(primary)) Settings.PrimarySatellite.Value = primary;
}

void Session::ChooseSatellite(int index) {
  const bool isChosen = index >= 0 && index < static_cast<int>(Active().size());
  const NamedSatellite chosen = isChosen ? Active()[static_cast<std::size_t>(index)] : NamedSatellite();
  selected_ = chosen.Satellite;
  Settings.PrimarySatellite.Value = chosen.Name;
  Q_EMIT SatelliteChosen();
}

bool Session::RefusesWhileMakingMap() const {
  if (!Run.MakingMap) return false;
  Boxes.Message(QStringLiteral("A map is being made. Wait for its end or press Stop, and try again."));
  return true;
}

void Session::SaveUnasked(Unasked what, const std::function<void()>& write) {
  QString& told = Settings.ResultsTrouble.Value;
  const QString folder = Settings.ResultsPath.Value, missing = QStringLiteral("missing ");
  try {
    write();
    // A list may still find room where a map does not.
    if (what == Unasked::Map || told.startsWith(missing)) told.clear();
  } catch (const std::exception& error) {
    const bool isThere = QFileInfo(folder).isDir();
    const QString reason =
        isThere ? QString::fromUtf8(error.what())
                : QStringLiteral("There is no results folder %1").arg(QDir::toNativeSeparators(folder));
    Window.SetStatus(QStringLiteral("Not saved: ") + reason);
    const QString trouble = isThere ? folder : missing + folder;
    if (std::exchange(told, trouble) == trouble) return;
    Boxes.Error(
        reason +
        QStringLiteral(".\n\nPelorin goes on without saving, and says so in the status bar only. Make the "
                       "folder, or choose another one on the Setup page."));
  }
}

void Session::SetPassDirection(bool southBound) {
  Pass.SouthBound = southBound;
  Q_EMIT PassDirectionChanged();
}

void Session::SetPassDuration(int minutes) {
  Pass.PassDurationMinutes = minutes;
  Q_EMIT PassDurationChanged();
}

}  // namespace pelorin::session
