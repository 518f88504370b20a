#include "desktop/overlay/tab_sheet_ground_path.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFileInfo>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopeGuard>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>

#include "desktop/overlay/attitude_box.h"
#include "desktop/overlay/coast_alignment.h"
#include "desktop/overlay/form_picture_details.h"
#include "desktop/overlay/hand_fit.h"
#include "desktop/overlay/overlay_choices.h"
#include "desktop/overlay/picture_panes.h"
#include "desktop/overlay/time_correction_box.h"
#include "orbit/time_stamp.h"
#include "picture/picture_file.h"
#include "picture/whole_line.h"
#include "session/controls.h"
#include "session/hourglass.h"
#include "session/picker_time.h"
#include "session/time_picker.h"
#include "swath/picture_lookup.h"

namespace pelorin::desktop {
namespace {

using session::Handle;

QString Stamp(orbit::TDateTime moment) { return QString::fromStdString(orbit::StampOf(moment)); }

/// As exactly as it is known.
QString StartText(const swath::Recording& recording) {
  const bool isToSecond = recording.StartIsFrom == swath::StartFrom::NameSecond ||
                          recording.StartIsFrom == swath::StartFrom::Stamps ||
                          recording.StartIsFrom == swath::StartFrom::Coasts;
  return QString::fromStdString(orbit::FormatDateTime(isToSecond ? "hh:nn:ss" : "hh:nn", recording.Start));
}

}  // namespace

TTabSheetGroundPath::TTabSheetGroundPath(session::Session& session, QWidget* parent)
    : TTabSheet(session, parent),
      picture_(session.Settings.ClockCorrections.Value),
      attitudes_(session.Settings.AttitudeCorrections.Value),
      log_(app::AlignmentLogFile()),
      FormPictureDetails(new TFormPictureDetails(session, this)) {
  setObjectName(QStringLiteral("TabSheetGroundPath"));
  ui_.Build(this);
  hand_ = new THandFit(session.Boxes, ui_.Panes->PictureSide(), ui_.HandFitBar, this);
  ui_.CheckBoxNorthUp->setChecked(session.Settings.NorthUp.Value);
  using Page = TTabSheetGroundPath;
  Handle(this, &TTabSheet::Shown, this, &Page::TabSheetGroundPathShow);
  Handle(this, &TTabSheet::Hidden, this, &Page::TabSheetGroundPathHide);
  Handle(&session, &session::Session::ActiveSatellitesChanged, this, &Page::ActiveSatellitesChanged);
  Handle(&session, &session::Session::PassDirectionChanged, this, &Page::PassDirectionChanged);
  Handle(&session, &session::Session::PassDurationChanged, this, &Page::PassDurationChanged);

  Handle(ui_.ComboBoxSatForPic, &QComboBox::currentIndexChanged, this, &Page::ComboBoxSatForPicChange);
  Handle(ui_.DateTimePickerDate, &QDateTimeEdit::dateChanged, this, &Page::DateTimePickerTimeChange);
  Handle(ui_.DateTimePickerTime, &QDateTimeEdit::timeChanged, this, &Page::DateTimePickerTimeChange);
  session::OnFocusOut(ui_.DateTimePickerTime, Boxes(), [this] { DateTimePickerTimeExit(); });
  Handle(ui_.SpinEditPassDuration, &QSpinBox::editingFinished, this, &Page::SpinEditPassDurationExit);
  Handle(ui_.ButtonPassDirection, &QPushButton::clicked, this, &Page::ButtonPassDirectionClick);
  Handle(ui_.ButtonGenTopo, &QPushButton::clicked, this, &Page::ButtonGenTopoClick);
  Handle(ui_.Channels, &QButtonGroup::idClicked, this, &Page::RadioGroupPrefPicChannelClick);
  Handle(ui_.ButtonReload, &QPushButton::clicked, this, &Page::ButtonReloadClick);
  Handle(ui_.GroupBoxTimeCorrection, &TTimeCorrectionBox::Changed, this, &Page::TimeCorrectionChanged);
  Handle(ui_.GroupBoxTimeCorrection, &TTimeCorrectionBox::ResetWanted, this, &Page::TimeCorrectionReset);
  Handle(ui_.ButtonMinuteMarks, &QPushButton::clicked, this, &Page::ButtonMinuteMarksClick);
  Handle(ui_.ButtonAlignedBefore, &QPushButton::clicked, this, &Page::ButtonAlignedBeforeClick);
  Handle(ui_.ButtonClockMedian, &QPushButton::clicked, this, &Page::ButtonClockMedianClick);
  Handle(ui_.ButtonAttitudeMedian, &QPushButton::clicked, this, &Page::ButtonAttitudeMedianClick);
  Handle(ui_.GroupBoxAttitude, &TAttitudeBox::Changed, this, &Page::AttitudeChanged);
  Handle(ui_.GroupBoxAttitude, &TAttitudeBox::ResetWanted, this, &Page::AttitudeReset);
  Handle(ui_.ButtonFitByHand, &QPushButton::clicked, this, &Page::ButtonFitByHandClick);
  Handle(hand_, &THandFit::Taken, this, &Page::HandFitTaken);
  Handle(hand_, &THandFit::Cancelled, this, &Page::HandFitCancelled);
  Handle(ui_.CheckBoxZoom, &QCheckBox::toggled, this, &Page::CheckBoxZoomClick);
  Handle(ui_.CheckBoxScrollBoth, &QCheckBox::toggled, this, &Page::CheckBoxScrollBothClick);
  Handle(ui_.SliderOpacity, &QSlider::valueChanged, this, &Page::SliderOpacityChange);
  Handle(ui_.CheckBoxOverlaid, &QCheckBox::toggled, this, &Page::CheckBoxOverlaidClick);
  Handle(ui_.ButtonFlicker, &QPushButton::clicked, this, &Page::ButtonFlickerClick);
  Handle(ui_.ButtonSaveBlend, &QPushButton::clicked, this, &Page::ButtonSaveBlendClick);
  Handle(ui_.ComboBoxPictureChannel, &QComboBox::currentIndexChanged, this,
         &Page::ComboBoxPictureChannelChange);
  Handle(ui_.ButtonDetails, &QPushButton::clicked, this, &Page::ButtonDetailsClick);
  Handle(ui_.CheckBoxNorthUp, &QCheckBox::toggled, this, &Page::CheckBoxNorthUpClick);
  Handle(ui_.TimerLoad, &QTimer::timeout, this, &Page::TimerLoadTimer);
  Handle(ui_.TimerSaveResults, &QTimer::timeout, this, &Page::TimerSaveResultsTimer);
  ConnectAlignment();
  EnableControls();
}

void TTabSheetGroundPath::SetSources(const overlay::OverlaySources& sources,
                                     const swath::ScannerTable& scanners) {
  sources_ = sources;
  scanners_ = &scanners;
}

void TTabSheetGroundPath::SetLines(const lines::FineLines* lines, const QString& problem) {
  lines_ = lines;
  noLines_ = problem;
}

void TTabSheetGroundPath::SetPassTime(orbit::TDateTime moment) {
  picture_.SetPass(moment);
  ShowPass();
}

void TTabSheetGroundPath::ShowPass() {
  if (opened_ && picture_.OpenedPath().isEmpty()) {
    opened_.reset();
    ShowChannels();
  }
  session::TurnPicker(ui_.DateTimePickerDate, picture_.Pass());
  session::TurnPicker(ui_.DateTimePickerTime, picture_.Pass());
  ui_.GroupBoxTimeCorrection->ShowOf(picture_.ForMap(session_.Pass.SouthBound), picture_.UsualOffsetS());
  ShowFit();
}

void TTabSheetGroundPath::ChooseSatellite(int index) {
  session::SelectQuietly(ui_.ComboBoxSatForPic, index);
  ComboBoxSatForPicChange();
}

void TTabSheetGroundPath::ShowFor(orbit::TDateTime moment, int satellite) {
  SetPassTime(moment);
  ChooseSatellite(satellite);
  if (session_.Unattended != nullptr) {
    ui_.TimerLoad->start();
  } else {
    FindPicture();
  }
}

// ------------------------------------------------------------------------- following the session

void TTabSheetGroundPath::TabSheetGroundPathShow() {
  session_.Window.SetTitle(QStringLiteral("Pelorin - ground path"));
  session_.Window.SetTimeframe(session::Timeframe::Manual);
  FindMarks();
}

void TTabSheetGroundPath::TabSheetGroundPathHide() {
  if (ui_.TimerSaveResults->isActive()) TimerSaveResultsTimer();
}

void TTabSheetGroundPath::ActiveSatellitesChanged() {
  QString chosen = session_.Active().empty() ? QString() : session_.Active().front().Name;
  if (session_.Run.Reloading || opened_) {
    const QString now = session_.Following().NameNow(ui_.ComboBoxSatForPic->currentText());
    if (session_.Following().IndexOf(now) >= 0 || (guest_ && guest_->Name == now.toStdString())) chosen = now;
  }
  FillSatellites(chosen);
  ComboBoxSatForPicChange();
}

void TTabSheetGroundPath::PassDirectionChanged() {
  ui_.ButtonPassDirection->setText(DirectionCaption(session_.Pass.SouthBound));
  FindMarks();
  ShowTurned();
}

void TTabSheetGroundPath::PassDurationChanged() {
  ui_.SpinEditPassDuration->setValue(session_.Pass.PassDurationMinutes);
}

// ----------------------------------------------------------------------------------- the picture

swath::FoundPicture TTabSheetGroundPath::LookUp(const QString& key) {
  const auto restore =
      qScopeGuard([this, before = session_.Window.Status()] { session_.Window.SetStatus(before); });
  Q_EMIT session_.PictureSearchBegun();
  const app::YearOffsets local = session_.TimeZone.OffsetsIn(TakeApart(picture_.Pass()).Year);
  return swath::LookUpPicture(
      key, ui_.Channels->checkedId(), app::FromCommaText(session_.Settings.ImagePathList.Value),
      local.StandardMinutes, local.DaylightMinutes, [this](const QString& baseName) {
        session_.Window.SetStatus(QStringLiteral("Searching your specified folders for: ") + baseName +
                                  QStringLiteral(".*"));
        Q_EMIT session_.PictureSearched(baseName);
      });
}

void TTabSheetGroundPath::LoadPicture() {
  const QString opened = picture_.OpenedPath();
  ShowPicture(opened.isEmpty() ? LookUp(Stamp(picture_.Pass())) : swath::FoundPicture{opened, 0});
}

void TTabSheetGroundPath::FindPicture() {
  LoadPicture();
  if (!picture_.SoughtPath().isEmpty()) return;
  const overlay::ClockOffsets local = LocalClock(TakeApart(picture_.Pass()).Year);
  const QString path = swath::FindDatedPicture(picture_.Pass(), ui_.ComboBoxSatForPic->currentText(),
                                               app::FromCommaText(session_.Settings.ImagePathList.Value),
                                               local.StandardMinutes, local.DaylightMinutes);
  if (!path.isEmpty()) OpenPath(path);
}

void TTabSheetGroundPath::ShowPicture(const swath::FoundPicture& found) {
  picture_.Seek(found);
  ShowPass();
  const QString name = QFileInfo(found.Path).fileName();
  const QString shown = QFileInfo(picture_.ShownPath()).fileName();
  const QString still = shown.isEmpty() ? QString() : QStringLiteral("; this is still ") + shown;
  if (found.Path.isEmpty()) {
    ui_.Panes->SetPictureTitle(QStringLiteral("No picture was found for ") + Stamp(picture_.Pass()) + still);
    return;
  }
  picture::LoadedPicture loaded;
  if (opened_) {
    loaded.Image = opened_->Image;
  } else {
    ui_.Panes->SetPictureTitle(name + QStringLiteral(" could not be read") + still);
    const session::Hourglass hourglass;
    loaded = picture::LoadRecording(found.Path);
    otherHalf_ = {};
    if (picture::HoldsWholeLines(loaded.Image.width())) {
      const auto halves = picture::CutWholeLines(loaded.Image);
      const std::size_t preferred = PreferredHalf();
      loaded.Image = halves[preferred];
      otherHalf_ = halves[1 - preferred];
    }
  }
  file_ = loaded.Image;
  damage_ = loaded.Damage.isEmpty() ? QString() : QStringLiteral(" (damaged)");
  picture_.Show(file_.width(), file_.height());
  OpenAligned();
  FindMarks();
  ShowTurned();
  EnableControls();
  if (!loaded.Damage.isEmpty()) Boxes().Message(loaded.Damage);
}

std::size_t TTabSheetGroundPath::PreferredHalf() const {
  constexpr int infrared = 1;
  // The infrared channel comes second; turned, it lies at the left.
  const bool isTurned = picture_.ForMap(session_.Pass.SouthBound).Lies.Turned;
  return (ui_.Channels->checkedId() == infrared) != isTurned ? 1 : 0;
}

QString TTabSheetGroundPath::PictureTitle(const swath::Recording& recording, swath::Stored shown) const {
  QString title = QStringLiteral("Picture: %1%2  from %3 UTC")
                      .arg(QFileInfo(picture_.ShownPath()).fileName(), damage_, StartText(recording));
  if (LiesAsLogged()) title += QStringLiteral(", aligned");
  // Recorders of the old format turn what is north-bound, and everybody expects that.
  if (recording.LiesIsFrom == swath::KnownFrom::Default && shown == recording.Lies) return title;
  title += recording.SouthBound ? QStringLiteral(", south-bound") : QStringLiteral(", north-bound");
  if (shown.Turned) title += QStringLiteral(", turned");
  if (recording.Lies.Mirrored) title += QStringLiteral(", unmirrored");
  return title;
}

void TTabSheetGroundPath::ComboBoxSatForPicChange() {
  picture_.SetSatellite(ui_.ComboBoxSatForPic->currentText());
  OpenAligned();
  ShowPass();
  FindMarks();
  EnableControls();
}

void TTabSheetGroundPath::DateTimePickerTimeChange() {
  SetPassTime(session::ChangedMoment(ui_.DateTimePickerDate, ui_.DateTimePickerTime, picture_.Pass()));
  if (opened_) FlyAsElementsTell();
  LoadPicture();
}

void TTabSheetGroundPath::DateTimePickerTimeExit() {
  // Who only passes by with the Tab key keeps an opened picture, and does not disturb the making of a map.
  if (IsBusy() || !picture_.OpenedPath().isEmpty()) return;
  const swath::FoundPicture found = LookUp(Stamp(picture_.Pass()));
  // What the change has just shown, or has said to be damaged, is not read twice.
  if (found.Path != picture_.SoughtPath()) ShowPicture(found);
}

void TTabSheetGroundPath::ButtonReloadClick() {
  picture_.ForgetOpened();
  FindPicture();
}

void TTabSheetGroundPath::RadioGroupPrefPicChannelClick() {
  const swath::FoundPicture found = LookUp(Stamp(picture_.Pass()));
  // An opened picture stays until the picture folders have one of its time.
  if (found.Path.isEmpty() && !picture_.OpenedPath().isEmpty()) return;
  picture_.ForgetOpened();
  ShowPicture(found);
}

void TTabSheetGroundPath::TimerLoadTimer() {
  if (session_.Run.Closing || IsBusy()) return;
  if (session_.MakesMapUnattended()) {
    ButtonGenTopoClick();
  } else {
    LoadPicture();
  }
}

void TTabSheetGroundPath::keyPressEvent(QKeyEvent* event) {
  bool isTaken = false;
  session::Guarded(Boxes(),
                   [&] { isTaken = hand_->TakeKey(*event) || (!IsBusy() && coasts_->TakeKey(*event)); });
  if (isTaken) return;
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) ui_.ButtonGenTopo->click();
  if (event->key() == Qt::Key_Escape) stopRequested_ = true;
  TTabSheet::keyPressEvent(event);
}

}  // namespace pelorin::desktop
