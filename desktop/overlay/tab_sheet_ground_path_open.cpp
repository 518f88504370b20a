// Opening a picture that the user names.

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>
#include <cmath>

#include "desktop/overlay/form_picture_details.h"
#include "desktop/overlay/picture_panes.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "orbit/model_constants.h"
#include "session/controls.h"
#include "session/hourglass.h"

namespace pelorin::desktop {
namespace {

constexpr qsizetype kRecentPictures = 10;

QString MomentText(orbit::TDateTime moment) {
  return QString::fromStdString(orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", moment));
}

}  // namespace

overlay::ClockOffsets TTabSheetGroundPath::LocalClock(int year) const {
  const app::YearOffsets local = session_.TimeZone.OffsetsIn(year);
  return {local.StandardMinutes, local.DaylightMinutes};
}

std::vector<orbit::TSatellite> TTabSheetGroundPath::PictureSatellites(
    const overlay::OpenedPicture& opened) const {
  std::vector<orbit::TSatellite> satellites;
  const auto add = [&](const orbit::TSatellite& satellite) {
    const bool isThere = std::ranges::any_of(satellites, [&](const orbit::TSatellite& other) {
      return other.Name == satellite.Name && other.CatalogueKey() == satellite.CatalogueKey();
    });
    if (!isThere) satellites.push_back(satellite);
  };
  for (const session::NamedSatellite& active : session_.Active()) add(*active.Satellite);
  const elements::TSatelliteList& loaded = session_.Satellites();
  for (int index = 0; index < loaded.Count(); ++index) {
    const orbit::TSatellite& satellite = loaded.Satellite(index);
    if (overlay::IsOf(opened, satellite) || !scanners_->Of(satellite).empty()) add(satellite);
  }
  if (opened.OwnSet) add(*opened.OwnSet);
  return satellites;
}

/// The told one, or else the one that the page has chosen; −1 when neither is there.
int TTabSheetGroundPath::SatelliteOf(const overlay::OpenedPicture& opened,
                                     const std::vector<orbit::TSatellite>& satellites) const {
  const auto first = [&](const auto& fits) {
    const auto found = std::ranges::find_if(satellites, fits);
    return found == satellites.end() ? -1 : static_cast<int>(found - satellites.begin());
  };
  if (!opened.Satellite.isEmpty() || !opened.CatalogueNumber.isEmpty()) {
    return first([&](const orbit::TSatellite& satellite) { return overlay::IsOf(opened, satellite); });
  }
  const std::string chosen = ui_.ComboBoxSatForPic->currentText().toStdString();
  return first([&](const orbit::TSatellite& satellite) { return satellite.Name == chosen; });
}

std::optional<overlay::PlacedRecording> TTabSheetGroundPath::Place(const overlay::OpenedPicture& opened,
                                                                   const orbit::TSatellite& satellite) const {
  return overlay::PlaceRecording(
      opened, [&](orbit::TDateTime moment) { return std::optional(session_.SetNear(satellite, moment)); },
      *scanners_, session_.Station.Place);
}

void TTabSheetGroundPath::OpenPath(const QString& path, int half, bool isAsked) {
  if (session_.RefusesWhileMakingMap()) return;
  overlay::OpenedPicture opened;
  {
    const session::Hourglass hourglass;
    opened = overlay::OpenPicture(
        path, [this](int year) { return LocalClock(year); }, *scanners_, half);
  }
  const QString file = QFileInfo(opened.Channel.Path).fileName();
  const std::vector<orbit::TSatellite> satellites = PictureSatellites(opened);
  int satellite = SatelliteOf(opened, satellites);
  std::optional<overlay::PlacedRecording> placed;
  QString reason;
  if (!opened.HasStart) {
    reason = QStringLiteral("The name %1 does not tell when the picture was received.").arg(file);
    opened.Known.Start = picture_.Pass();
  } else if (satellite < 0) {
    reason = opened.Satellite.isEmpty()
                 ? QStringLiteral("%1 does not tell which satellite sent it.").arg(file)
                 : QStringLiteral(
                       "%1 is a picture of %2, of which there are no elements. Update Keplers... in "
                       "the Options menu gets them.")
                       .arg(file, opened.Satellite);
  } else {
    placed = Place(opened, satellites[static_cast<std::size_t>(satellite)]);
    const QString name = QString::fromStdString(satellites[static_cast<std::size_t>(satellite)].Name);
    if (!placed->Match.Problem.isEmpty() && opened.Problem.isEmpty()) reason = placed->Match.Problem;
    // Stamps are of the pass itself, whoever received it.
    if (!placed->WasInSight && placed->Recording.StartIsFrom != swath::StartFrom::Stamps) {
      reason =
          QStringLiteral("At %1 UTC %2 was out of sight of your station. Are date and time right%3?")
              .arg(MomentText(placed->Recording.FirstLine()), name,
                   opened.Name.YearIsKnown ? QString()
                                           : QStringLiteral(", and the year, which the name does not tell"));
    }
  }
  if (isAsked && reason.isEmpty()) reason = QStringLiteral("What is known of %1:").arg(file);
  if (!reason.isEmpty()) {
    if (satellites.empty()) {
      Boxes().Message(QStringLiteral("There are no satellites yet that could have sent %1. Please get their "
                                     "elements first: Options, Update Keplers...")
                          .arg(file));
      return;
    }
    PictureDetails details{reason,
                           {},
                           satellite,
                           placed ? placed->Recording.Start : opened.Known.Start,
                           {},
                           -1,
                           placed ? placed->Recording.Lies : opened.Known.Lies};
    for (const orbit::TSatellite& one : satellites)
      details.Satellites.append(QString::fromStdString(one.Name));
    for (const swath::Scanner& one : scanners_->Scanners())
      details.Scanners.append(QString::fromStdString(one.Name));
    const PictureDetails before = details;
    if (!FormPictureDetails->Ask(details)) return;
    satellite = details.Satellite;
    TakeDetails(details, before, opened);
    placed = Place(opened, satellites[static_cast<std::size_t>(satellite)]);
  }
  for (const QString& note : opened.Notes) Boxes().Message(note);
  if (!placed->Match.Problem.isEmpty()) opened.Problem = placed->Match.Problem;
  if (!opened.Problem.isEmpty()) Boxes().Message(opened.Problem);
  TakeOpened(std::move(opened), *placed, satellites[static_cast<std::size_t>(satellite)]);
}

void TTabSheetGroundPath::TakeDetails(const PictureDetails& details, const PictureDetails& before,
                                      overlay::OpenedPicture& opened) const {
  swath::Recording& known = opened.Known;
  if (details.Start != before.Start || !opened.HasStart) {
    known.Start = details.Start;
    // The dialog asks for the second.
    if (known.StartIsFrom != swath::StartFrom::Stamps) known.StartIsFrom = swath::StartFrom::NameSecond;
  }
  opened.HasStart = true;
  opened.OtherStarts.clear();
  known.Lies = details.Lies;
  known.LiesIsFrom = swath::KnownFrom::User;
  if (details.Scanner < 0) return;
  const swath::Scanner& scanner = scanners_->Scanners()[static_cast<std::size_t>(details.Scanner)];
  const auto first = swath::FirstColumnOf(scanner.Line, known.Columns);
  if (!first) {
    opened.Problem = QStringLiteral("A picture of %1 columns is none of %2, which has %3.")
                         .arg(known.Columns)
                         .arg(QString::fromStdString(scanner.Name))
                         .arg(scanner.Line.Columns);
    return;
  }
  known.SeenBy = scanner;
  known.FirstColumn = *first;
  known.ScannerIsFrom = swath::KnownFrom::User;
}

void TTabSheetGroundPath::TakeOpened(overlay::OpenedPicture opened, const overlay::PlacedRecording& placed,
                                     const orbit::TSatellite& satellite) {
  const QString path = opened.Channel.Path;
  QStringList recent = app::FromCommaText(session_.Settings.RecentPictures.Value);
  recent.removeAll(path);
  recent.prepend(path);
  session_.Settings.RecentPictures.Value = app::ToCommaText(recent.mid(0, kRecentPictures));
  opened_ = std::move(opened);
  guest_ = satellite;
  FillSatellites(QString::fromStdString(satellite.Name));
  picture_.SetSatellite(ui_.ComboBoxSatForPic->currentText());
  swath::Recording known = opened_->Known;
  known.Start = placed.Recording.Start;
  if (known.StartIsFrom == swath::StartFrom::Stamps) known.OffsetS = placed.Recording.OffsetS;
  picture_.Open(path, known);
  session_.SetPassDirection(placed.Recording.SouthBound);
  const double minutes = std::ceil(placed.Recording.LengthS() / orbit::kSecondsPerMinute);
  session_.SetPassDuration(std::clamp(static_cast<int>(minutes), ui_.SpinEditPassDuration->minimum(),
                                      ui_.SpinEditPassDuration->maximum()));
  ShowChannels();
  ShowPass();
  LoadPicture();
  session_.Window.ShowPage(session::Page::GroundPath);
}

void TTabSheetGroundPath::FillSatellites(const QString& chosen) {
  session::FillChooser(ui_.ComboBoxSatForPic, session_.Active(), session_.Following().IndexOf(chosen));
  if (!guest_) return;
  const QString name = QString::fromStdString(guest_->Name);
  if (session_.Following().IndexOf(name) >= 0) return;
  const QSignalBlocker quiet(ui_.ComboBoxSatForPic);
  ui_.ComboBoxSatForPic->addItem(name);
  if (name == chosen) ui_.ComboBoxSatForPic->setCurrentIndex(ui_.ComboBoxSatForPic->count() - 1);
}

std::optional<orbit::TSatellite> TTabSheetGroundPath::ChosenSet(orbit::TDateTime moment) const {
  const int chosen = ui_.ComboBoxSatForPic->currentIndex();
  if (chosen < 0) return std::nullopt;
  const auto place = static_cast<std::size_t>(chosen);
  const orbit::TSatellite& satellite =
      place < session_.Active().size() ? *session_.Active()[place].Satellite : *guest_;
  std::optional<orbit::TSatellite> own;
  if (opened_ && opened_->OwnSet && opened_->OwnSet->CatalogueKey() == satellite.CatalogueKey()) {
    own = opened_->OwnSet;
  }
  return overlay::NearestSet(own, session_.SetNear(satellite, moment), moment);
}

void TTabSheetGroundPath::ShowChannels() {
  const bool areThere = opened_ && opened_->Channels.size() > 1;
  ui_.ComboBoxPictureChannel->setVisible(areThere);
  ui_.ShowChannelButtons(!areThere);
  if (!areThere) return;
  const QSignalBlocker quiet(ui_.ComboBoxPictureChannel);
  ui_.ComboBoxPictureChannel->clear();
  for (const overlay::PictureChannel& channel : opened_->Channels) {
    ui_.ComboBoxPictureChannel->addItem(channel.Name);
    const bool isChosen = channel.Path == opened_->Channel.Path && channel.Half == opened_->Channel.Half;
    if (isChosen) ui_.ComboBoxPictureChannel->setCurrentIndex(ui_.ComboBoxPictureChannel->count() - 1);
  }
}

void TTabSheetGroundPath::ComboBoxPictureChannelChange(int index) {
  if (!opened_ || index < 0 || static_cast<std::size_t>(index) >= opened_->Channels.size()) return;
  const overlay::PictureChannel channel = opened_->Channels[static_cast<std::size_t>(index)];
  // What cannot be opened leaves the choice where it was.
  const bool isOpen = session::Guarded(Boxes(), [&] { OpenPath(channel.Path, channel.Half); });
  if (!isOpen) ShowChannels();
}

void TTabSheetGroundPath::ButtonDetailsClick() {
  const QString path = opened_ ? opened_->Channel.Path : picture_.ShownPath();
  if (path.isEmpty()) {
    Boxes().Message(QStringLiteral("There is no picture yet. File > Open... opens one."));
    return;
  }
  OpenPath(path, opened_ ? opened_->Channel.Half : -1, true);
}

void TTabSheetGroundPath::CheckBoxNorthUpClick() {
  session_.Settings.NorthUp.Value = ui_.CheckBoxNorthUp->isChecked();
  ShowTurned();
  if (IsBusy()) {
    MakeAgain();
  } else if (made_) {
    RemakeMap(Request());
  }
}

swath::Stored TTabSheetGroundPath::ShownLies(const swath::Recording& recording) const {
  // Who started the program for a pass lays the map on the file.
  if (session_.MakesMapUnattended()) return recording.Lies;
  return {ui_.CheckBoxNorthUp->isChecked() && !recording.SouthBound, false};
}

void TTabSheetGroundPath::ShowTurned() {
  const swath::Recording recording = picture_.ForMap(session_.Pass.SouthBound);
  if (picture_.ShownPath().isEmpty() || !picture_.Shows(recording)) return;
  const swath::Stored shown = ShownLies(recording);
  ui_.Panes->SetPicture(overlay::Restored(file_, recording.Lies, shown), picture_.ShownPath());
  ui_.Panes->SetPictureTitle(PictureTitle(recording, shown));
}

}  // namespace pelorin::desktop
