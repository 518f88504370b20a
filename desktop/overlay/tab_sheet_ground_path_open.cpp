// Opening a picture that the user names.

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>
#include <cmath>

#include "desktop/overlay/coast_alignment.h"
#include "desktop/overlay/form_picture_details.h"
#include "desktop/overlay/picture_panes.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "orbit/model_constants.h"
#include "overlay/master_surface.h"
#include "overlay/recording_channels.h"
#include "session/controls.h"
#include "session/hourglass.h"
#include "swath/recording_text.h"

namespace pelorin::desktop {
namespace {

constexpr qsizetype kRecentPictures = 10;

QString MomentText(orbit::TDateTime moment) {
  return QString::fromStdString(orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", moment));
}

}  // namespace

QString TTabSheetGroundPath::PicturesFolder() const {
  const QString last = app::FromCommaText(session_.Settings.RecentPictures.Value).value(0);
  if (!last.isEmpty()) return QFileInfo(last).path();
  const QString usual = app::FromCommaText(session_.Settings.ImagePathList.Value).value(0);
  // The default is of another kind of system.
  return QFileInfo(usual).isDir() ? usual : QString();
}

void TTabSheetGroundPath::OpenFolder1Click() {
  const auto path = Boxes().ChooseFolder(QStringLiteral("Choose the folder that a decoder made of a pass"),
                                         PicturesFolder());
  if (path) OpenPath(*path);
}

void TTabSheetGroundPath::Open1Click() {
  const QStringList filters{
      QStringLiteral("Bitmap files (*.bmp)"), QStringLiteral("JPEG files (*.jpg)"),
      QStringLiteral("Portable Network Graphic files (*.png)"),
      QStringLiteral("Picture files (*.bmp *.jpg *.jpeg *.png *.tif *.tiff product.cbor dataset.json)")};
  const auto path = Boxes().OpenFile(QStringLiteral("Choose a satellite image to load"), PicturesFolder(),
                                     filters, static_cast<int>(filters.size()) - 1);
  if (!path) return;
  OpenPath(*path);
}

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

QString TTabSheetGroundPath::ReasonToAsk(const overlay::OpenedPicture& opened,
                                         const std::optional<overlay::PlacedRecording>& placed) const {
  const QString file = QFileInfo(opened.Channel.Path).fileName();
  if (!opened.HasStart) {
    return QStringLiteral(
               "The name %1 does not tell when the picture was received; proposed is when its file was "
               "written.")
        .arg(file);
  }
  const bool isTold = !opened.Satellite.isEmpty() || !opened.CatalogueNumber.isEmpty();
  if (!placed && isTold) {
    return QStringLiteral(
               "%1 is a picture of %2, of which there are no elements. Update Keplers... in "
               "the Options menu gets them.")
        .arg(file, opened.Satellite.isEmpty() ? opened.CatalogueNumber : opened.Satellite);
  }
  // Who names pictures by month and minute chooses the satellite on the page.
  if (!placed || (!isTold && opened.Known.LiesIsFrom != swath::KnownFrom::Default)) {
    return QStringLiteral("%1 does not tell which satellite sent it.").arg(file);
  }
  if (!placed->Match.Problem.isEmpty()) return opened.Problem.isEmpty() ? placed->Match.Problem : QString();
  if (placed->WasInSight) return QString();
  return QStringLiteral(
             "At %1 UTC %2 was out of sight of your station. Are satellite, date and time right%3?")
      .arg(MomentText(placed->Recording.FirstLine()), placed->Recording.Satellite,
           opened.Name.YearIsKnown ? QString()
                                   : QStringLiteral(", and the year, which the name does not tell"));
}

PassQuestion TTabSheetGroundPath::QuestionOf(const overlay::OpenedPicture& opened,
                                             const std::vector<orbit::TSatellite>& satellites) const {
  PassQuestion question;
  question.Channels = overlay::ChannelsOfRecording(opened, [](const QString&) {});
  question.Satellites = satellites;
  if (!opened.Satellite.isEmpty() || !opened.CatalogueNumber.isEmpty()) {
    if (const int sender = SatelliteOf(opened, satellites); sender >= 0) question.Sender = sender;
  }
  question.SetNear = [this](const orbit::TSatellite& satellite, orbit::TDateTime moment) {
    return session_.SetNear(satellite, moment);
  };
  question.Scanners = scanners_;
  question.Station = session_.Station.Place;
  if (sources_.Master == nullptr) {
    question.WhyNot = QStringLiteral("Without an overlay master no pass can be found by its coasts.");
  } else {
    question.Ground = align::Ground{overlay::SurfacesIn(*sources_.Master), lines_};
  }
  return question;
}

bool TTabSheetGroundPath::OpenPath(const QString& path, int half, bool isAsked) {
  if (session_.RefusesWhileMakingMap()) return false;
  overlay::OpenedPicture opened;
  {
    const session::Hourglass hourglass;
    opened = overlay::OpenPicture(
        path, [this](int year) { return LocalClock(year); }, *scanners_, half);
  }
  const QString file = QFileInfo(opened.Channel.Path).fileName();
  const std::vector<orbit::TSatellite> satellites = PictureSatellites(opened);
  int satellite = SatelliteOf(opened, satellites);
  const auto placed =
      satellite < 0 ? std::nullopt : Place(opened, satellites[static_cast<std::size_t>(satellite)]);
  QString reason = ReasonToAsk(opened, placed);
  if (!reason.isEmpty() && satellites.empty()) {
    Boxes().Message(QStringLiteral("There are no satellites yet that could have sent %1. Please get their "
                                   "elements first: Options, Update Keplers...")
                        .arg(file));
    return false;
  }

  PictureDetails own;
  for (const orbit::TSatellite& one : satellites) own.Satellites.append(QString::fromStdString(one.Name));
  for (const swath::Scanner& one : scanners_->Scanners())
    own.Scanners.append(QString::fromStdString(one.Name));
  own.Satellite = satellite;
  own.Start = placed && opened.HasStart ? placed->Recording.Start : opened.Known.Start;
  PictureDetails details = own;
  // What was told of a picture holds for those that were opened with it.
  const bool isTold = told_ && told_->Paths.contains(opened.Channel.Path);
  if (isTold) {
    // Its elements may be gone since.
    const auto toldSatellite = static_cast<int>(own.Satellites.indexOf(told_->Satellite));
    if (toldSatellite >= 0) details.Satellite = toldSatellite;
    if (told_->Start) {
      details.Start = *told_->Start;
      details.IsStartByCoasts = told_->IsStartByCoasts;
    }
    details.Scanner = static_cast<int>(own.Scanners.indexOf(told_->Scanner));
    details.Lies = told_->Lies;
  }
  if (isAsked || (!reason.isEmpty() && !(isTold && details.Satellite >= 0))) {
    if (reason.isEmpty()) reason = QStringLiteral("What is known of %1:").arg(file);
    details.Reason = isAsked && placed && placed->Match.Problem.isEmpty()
                         ? swath::DescribeRecording(placed->Recording).join(u'\n')
                         : reason;
    // Its pass may be looked for, and one search at a time is enough.
    if (coasts_->IsOn()) DropAlignment();
    if (!FormPictureDetails->Ask(details, QuestionOf(opened, satellites))) return false;
    details.Reason.clear();
  }
  told_.reset();
  if (details != own) {
    TakeDetails(details, own, opened);
    satellite = details.Satellite;
    const QString scanner = own.Scanners.value(details.Scanner);
    told_ = {{}, own.Satellites.value(satellite), {}, scanner, details.Lies};
    if (details.Start != own.Start) {
      told_->Start = details.Start;
      told_->IsStartByCoasts = details.IsStartByCoasts;
    }
    for (const overlay::PictureChannel& channel : opened.Channels) told_->Paths.append(channel.Path);
  }
  opened.HasStart = true;
  for (const QString& note : opened.Notes) Boxes().Message(note);
  const orbit::TSatellite& sender = satellites[static_cast<std::size_t>(satellite)];
  const auto settled = Place(opened, sender);
  if (opened.Problem.isEmpty()) opened.Problem = settled->Match.Problem;
  if (!opened.Problem.isEmpty()) Boxes().Message(opened.Problem);
  TakeOpened(std::move(opened), *settled, sender);
  return true;
}

void TTabSheetGroundPath::TakeDetails(const PictureDetails& details, const PictureDetails& before,
                                      overlay::OpenedPicture& opened) const {
  swath::Recording& known = opened.Known;
  if (details.Start != before.Start) {
    known.Start = details.Start;
    // The dialog asks for the second.
    if (known.StartIsFrom != swath::StartFrom::Stamps) {
      known.StartIsFrom = details.IsStartByCoasts ? swath::StartFrom::Coasts : swath::StartFrom::NameSecond;
    }
  }
  opened.OtherStarts.clear();
  if (details.Lies) {
    known.Lies = *details.Lies;
    known.LiesIsFrom = swath::KnownFrom::User;
  }
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
  if (placed.Match.Problem.isEmpty()) {
    session_.SetPassDirection(placed.Recording.SouthBound);
    session_.SetPassDuration(MinutesOf(placed.Recording));
  }
  ShowChannels();
  ShowPass();
  LoadPicture();
  session_.Window.ShowPage(session::Page::GroundPath);
  ui_.ButtonGenTopo->setFocus();
  AlignOpened();
}

void TTabSheetGroundPath::FlyAsElementsTell() {
  const auto known = Known();
  if (!known || !known->Problem.isEmpty()) return;
  const swath::Recording& recording = known->Recording;
  const double halfDays = recording.LengthS() / 2 / orbit::kSecondsPerDay;
  session_.SetPassDirection(
      overlay::IsSouthBoundAt(*recording.Elements, {recording.FirstLine().Days + halfDays}));
}

int TTabSheetGroundPath::MinutesOf(const swath::Recording& recording) const {
  const double seconds = recording.LengthS() + 1 / recording.SeenBy.RowsPerSecond;
  const double minutes = std::ceil(seconds / orbit::kSecondsPerMinute);
  const QSpinBox* spin = ui_.SpinEditPassDuration;
  return static_cast<int>(std::clamp<double>(minutes, spin->minimum(), spin->maximum()));
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
  bool isOpen = false;
  session::Guarded(Boxes(), [&] { isOpen = OpenPath(channel.Path, channel.Half); });
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

void TTabSheetGroundPath::ShowTitle() {
  const auto known = Known();
  const swath::Recording recording = known ? known->Recording : picture_.ForMap(session_.Pass.SouthBound);
  if (picture_.Shows(recording)) {
    ui_.Panes->SetPictureTitle(PictureTitle(recording, known ? ShownLies(recording) : recording.Lies));
  }
}

void TTabSheetGroundPath::ShowTurned() {
  if (picture_.ShownPath().isEmpty()) return;
  const auto known = Known();
  const swath::Recording recording = known ? known->Recording : picture_.ForMap(session_.Pass.SouthBound);
  if (!picture_.Shows(recording)) return;
  const swath::Stored shown = known ? ShownLies(recording) : recording.Lies;
  ui_.Panes->SetPicture(overlay::Restored(file_, recording.Lies, shown), picture_.ShownPath());
  ShowTitle();
  EndHandFitOfAnother();
}

}  // namespace pelorin::desktop
