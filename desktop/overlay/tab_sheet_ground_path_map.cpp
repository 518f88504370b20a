// Making the map.

#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSpinBox>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <utility>

#include "desktop/overlay/coast_alignment.h"
#include "desktop/overlay/overlay_choices.h"
#include "desktop/overlay/picture_panes.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "map/satellite_info.h"
#include "orbit/model_constants.h"
#include "overlay/overlay_outputs.h"
#include "overlay/overlay_text.h"
#include "session/controls.h"
#include "session/hourglass.h"
#include "swath/scanner_match.h"

namespace pelorin::desktop {
namespace {

/// A map has hundreds of lines for each picture that a screen can show: as often as nobody notices a delay.
constexpr int kPumpEveryMs = 12;

QString MomentText(const char* pattern, orbit::TDateTime moment) {
  return QString::fromStdString(orbit::FormatDateTime(pattern, moment));
}

}  // namespace

std::optional<TTabSheetGroundPath::KnownRecording> TTabSheetGroundPath::Known() const {
  if (scanners_ == nullptr) return std::nullopt;
  KnownRecording known{picture_.ForMap(session_.Pass.SouthBound), {}};
  swath::Recording& recording = known.Recording;
  const double halfS = ui_.SpinEditPassDuration->value() * orbit::kSecondsPerMinute / 2;
  const auto set = ChosenSet({recording.FirstLine().Days + halfS / orbit::kSecondsPerDay});
  if (!set) return std::nullopt;
  if (opened_ && overlay::IsOfAnother(*opened_, *set)) overlay::ForgetProduct(recording);
  known.Problem = swath::TakeElements(*set, *scanners_, recording).Problem;
  if (opened_ && !opened_->Problem.isEmpty()) known.Problem = opened_->Problem;
  attitudes_.TakeOwn(recording);
  if (alignment_ && known.Problem.isEmpty() &&
      align::IsSamePicture(align::Logged(recording, picture_.ShownPath(), {}, {}, {}), *alignment_)) {
    recording.Offsets = alignment_->Offsets;
    recording.OffsetsAreFrom = swath::KnownFrom::Alignment;
  }
  return known;
}

overlay::OverlayRequest TTabSheetGroundPath::Request() const {
  const app::Settings& settings = session_.Settings;
  const auto known = Known();
  if (!known) {
    throw overlay::OverlayError(
        "There is no satellite to make a map for. Please drag one or more satellites from the Available list "
        "to "
        "the Active list.");
  }
  if (!known->Problem.isEmpty()) throw overlay::OverlayError(known->Problem.toStdString());
  overlay::OverlayRequest request;
  request.Picture = known->Recording;
  request.DurationMinutes = ui_.SpinEditPassDuration->value();
  // An opened picture is mapped whole, unless the user wants less.
  if (opened_ && request.Picture.Rows > 0 && request.DurationMinutes >= MinutesOf(request.Picture)) {
    request.DurationMinutes = 0;
  }
  request.Picture.Lies = ShownLies(request.Picture);
  request.Station = session_.Station.Place;
  request.Overlay = ChosenMarks(settings);
  request.PassDetails = settings.SavePassDetails.Value || session_.MakesMapUnattended();
  for (std::size_t line = 0; line < request.TextItems.size(); ++line) {
    request.TextItems[line] = overlay::MaskItems(settings.OvlTextLine[line].Value);
  }
  return request;
}

void TTabSheetGroundPath::ButtonGenTopoClick() {
  againRequested_ = false;
  if (IsBusy()) {
    stopRequested_ = true;
    return;
  }
  // An answer that came while the map was being made.
  const auto offer = qScopeGuard([this] { session::Guarded(Boxes(), [this] { OfferAlignment(); }); });
  const auto make = [this] {
    do {
      againRequested_ = false;
      MakeMap();
    } while (againRequested_ && !session_.Run.Closing);
  };
  if (!session_.MakesMapUnattended()) return make();
  session_.Unattended->Make([&] {
    make();
    return !session_.Run.Closing;
  });
  session_.Window.CloseWindow();
}

void TTabSheetGroundPath::MakeMap() {
  Request();
  session_.Run.MakingMap = true;
  session_.Run.AbortRequested = stopRequested_ = false;
  const session::Hourglass hourglass;
  ui_.ButtonGenTopo->setText(QStringLiteral("Stop"));
  const auto idle = qScopeGuard([this] {
    // Who presses Escape wants no other map either.
    if (session_.Run.AbortRequested) againRequested_ = false;
    session_.Run.MakingMap = stopRequested_ = session_.Run.AbortRequested = false;
    ui_.ButtonGenTopo->setText(QStringLiteral("Make map"));
    EnableControls();
  });
  EnableControls();
  // A map can be made without a picture, too.
  if (!session_.MakesMapUnattended()) session::Guarded(Boxes(), [this] { LoadPicture(); });
  GenerateLive(Request());
  ui_.TimerSaveResults->stop();
  SaveResults();
}

void TTabSheetGroundPath::GenerateLive(const overlay::OverlayRequest& request) {
  QProgressBar* progress = ui_.ProgressBarMakeMap;
  progress->setRange(0, static_cast<int>(std::ceil(overlay::MinutesToMake(request))));
  progress->setValue(0);
  bool isTold = false;
  QElapsedTimer sincePump;
  sincePump.start();
  const auto afterLine = [&](const overlay::LineProgress& line) {
    const overlay::OverlayResult& soFar = line.SoFar;
    if (line.Line == 0) {
      ui_.Panes->BeginMap(soFar.Map.size(), QStringLiteral("Map: ") + TitleOf(request));
      session_.ShowDoubt(ui_.LabelElementAge, *request.Picture.Elements, request.Picture.FirstLine());
    }
    if (line.Repaint) ui_.Panes->ShowProgress(soFar.Map, !soFar.Recording.Lies.Turned, soFar.LinesMade);
    if (line.NewMinute) progress->setValue(progress->value() + 1);
    if (!isTold && soFar.MiddleOfPass.Days > 0) {
      isTold = true;
      session_.Window.SetStatus(
          map::InfoAt(*request.Picture.Elements, soFar.MiddleOfPass, request.Station).StatusText);
    }
    if (sincePump.elapsed() >= kPumpEveryMs) {
      QCoreApplication::processEvents();
      sincePump.start();
    }
    return !stopRequested_ && !session_.Run.AbortRequested && !session_.Run.Closing;
  };
  try {
    ShowResult({request, overlay::GenerateOverlay(request, sources_, afterLine)});
    if (!stopRequested_) progress->setValue(progress->maximum());
  } catch (...) {
    ShowMap();
    throw;
  }
}

void TTabSheetGroundPath::ShowResult(MadeMap made) {
  made_ = std::move(made);
  ShowMap();
  EnableControls();
}

const TTabSheetGroundPath::MadeMap* TTabSheetGroundPath::SeenMap() const {
  if (preview_ && !coasts_->ShowsOld()) return &*preview_;
  return made_ ? &*made_ : nullptr;
}

void TTabSheetGroundPath::ShowMap() {
  if (const MadeMap* seen = SeenMap()) {
    const swath::Recording& picture = seen->Request.Picture;
    ui_.Panes->SetMap({seen->Result.Map, seen->Result.Recording, picture.FirstColumn, seen->Result.LinesMade},
                      QStringLiteral("Map: ") + TitleOf(seen->Request));
    session_.ShowDoubt(ui_.LabelElementAge, *picture.Elements, picture.FirstLine());
  } else {
    ui_.LabelElementAge->ShowDoubt({}, {});
    ui_.Panes->SetMap({}, QStringLiteral("Map"));
  }
}

void TTabSheetGroundPath::SaveResults() {
  const auto write = [this] {
    overlay::WriteOverlayOutputs(made_->Result, made_->Request.PassDetails,
                                 session_.Settings.ResultsPath.Value);
  };
  // Whoever gave a pass waits for the files.
  session_.MakesMapUnattended() ? write() : session_.SaveUnasked(session::Session::Unasked::Map, write);
}

QString TTabSheetGroundPath::TitleOf(const overlay::OverlayRequest& request) const {
  const swath::Recording& picture = request.Picture;
  const orbit::TDateTime start = picture.FirstLine();
  const orbit::TDateTime end{start.Days + overlay::MinutesToMake(request) / orbit::kMinutesPerDay};
  QString title = QStringLiteral("%1  %2-%3 UTC  %4")
                      .arg(QString::fromStdString(picture.Elements->Name),
                           MomentText("yyyy mmm dd  hh:nn:ss", start), MomentText("hh:nn:ss", end),
                           picture.SouthBound ? QStringLiteral("South") : QStringLiteral("North"));
  const QString note =
      picture.ScannerIsFrom == swath::KnownFrom::Default ? swath::ClassicNote(*picture.Elements) : QString();
  return note.isEmpty() ? title : title + QStringLiteral("  ") + note;
}

void TTabSheetGroundPath::ButtonPassDirectionClick() {
  session_.SetPassDirection(!session_.Pass.SouthBound);
  MakeAgain();
}

void TTabSheetGroundPath::SpinEditPassDurationExit() {
  session_.Pass.PassDurationMinutes = ui_.SpinEditPassDuration->value();
}

void TTabSheetGroundPath::MakeAgain() {
  const bool wasBusy = IsBusy();
  ButtonGenTopoClick();
  againRequested_ = wasBusy;
}

void TTabSheetGroundPath::OverlayMarksChanged() {
  if (IsBusy()) {
    MakeAgain();
  } else if (made_) {
    overlay::OverlayRequest request = made_->Request;
    request.Overlay = ChosenMarks(session_.Settings);
    RemakeMap(request);
    if (preview_) PreviewAlignment();
  }
}

void TTabSheetGroundPath::RemakeMap(const overlay::OverlayRequest& request) {
  // Too quick to be watched; the files follow when the user has found what is wanted.
  ShowResult({request, overlay::GenerateOverlay(request, sources_)});
  ui_.TimerSaveResults->start();
}

void TTabSheetGroundPath::TimerSaveResultsTimer() {
  ui_.TimerSaveResults->stop();
  SaveResults();
}

}  // namespace pelorin::desktop
