// Aligning the picture by its coasts.

#include <QCheckBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QShortcut>

#include "desktop/overlay/align_bar.h"
#include "desktop/overlay/coast_alignment.h"
#include "desktop/overlay/hand_fit.h"
#include "desktop/overlay/picture_panes.h"
#include "desktop/overlay/picture_view.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "overlay/master_surface.h"
#include "overlay/recording_channels.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using Stage = TCoastAlignment::Stage;

std::vector<PictureMarks::Window> WindowsIn(const align::PictureAlignment& found,
                                            const swath::Recording& file, const swath::Recording& shown) {
  std::vector<PictureMarks::Window> windows;
  const auto onScreen = [&](swath::PixelPoint place) {
    return swath::InFile(shown, swath::InFile(file, place));
  };
  for (const align::VotingWindow& window : found.Windows) {
    const swath::PixelPoint middle = onScreen(window.Middle);
    const swath::PixelPoint coast =
        onScreen({window.Middle.Column + window.MisfitColumns, window.Middle.Row + window.MisfitRows});
    windows.push_back(
        {middle, window.HalfColumns, window.HalfRows, coast.Column - middle.Column, coast.Row - middle.Row});
  }
  return windows;
}

}  // namespace

void TTabSheetGroundPath::ConnectAlignment() {
  using Page = TTabSheetGroundPath;
  using session::Handle;
  coasts_ = new TCoastAlignment(Boxes(), ui_.AlignBar, this);
  auto* key = new QShortcut(Qt::Key_F6, this);
  Handle(key, &QShortcut::activated, this, &Page::AlignKeyPressed);
  Handle(ui_.ButtonAlign, &QPushButton::clicked, this, &Page::ButtonAlignClick);
  Handle(ui_.AlignBar, &TAlignBar::WindowsToggled, this, &Page::ShowWindows);
  Handle(coasts_, &TCoastAlignment::Answered, this, &Page::OfferAlignment);
  Handle(coasts_, &TCoastAlignment::Ended, this, &Page::AlignmentEnded);
  Handle(coasts_, &TCoastAlignment::Flipped, this, &Page::AlignmentFlipped);
  Handle(coasts_, &TCoastAlignment::TakeWanted, this, &Page::TakeOffered);
  Handle(coasts_, &TCoastAlignment::UndoWanted, this, &Page::UndoTaken);
  Handle(coasts_, &TCoastAlignment::LeaveWanted, this, &Page::DropAlignment);
}

TTabSheetGroundPath::KnownRecording TTabSheetGroundPath::ForAlignment() const {
  QString trouble;
  if (sources_.Master == nullptr) {
    trouble = QStringLiteral("There is no overlay master, which tells land from water.");
  } else if (coasts_->IsOn()) {
    trouble = coasts_->Now() == Stage::Offered ? QStringLiteral("Take what was found first, or leave it.")
                                               : QStringLiteral("An alignment is under way.");
  } else if (hand_->IsOn()) {
    trouble = QStringLiteral("End the fit by hand first.");
  }
  return ForFit(trouble);
}

void TTabSheetGroundPath::ShowAlign() {
  // At the start nobody waits for element archives to be read for a page that is not seen.
  if (!isVisible()) return;
  const QString problem = ForAlignment().Problem;
  ui_.ButtonAlign->setEnabled(problem.isEmpty());
  session::Hinted(ui_.ButtonAlign,
                  problem.isEmpty()
                      ? QStringLiteral("Find by the coasts in the picture where it lies; what is found is "
                                       "offered, and nothing changes until you take it")
                      : problem);
}

void TTabSheetGroundPath::ButtonAlignClick() { BeginAlignment(true); }

void TTabSheetGroundPath::AlignKeyPressed() {
  if (coasts_->Now() == Stage::Offered) {
    coasts_->Flip();
  } else {
    ui_.ButtonAlign->click();
  }
}

void TTabSheetGroundPath::BeginAlignment(bool isAsked) {
  const KnownRecording known = ForAlignment();
  if (!known.Problem.isEmpty()) return;
  DropAlignment();
  PictureToAlign picture{known.Recording, {}, {overlay::SurfacesIn(*sources_.Master), lines_, noLines_}};
  if (opened_) {
    picture.Channels = [opened = *opened_] {
      return overlay::ChannelsOfRecording(opened, [](const QString&) {});
    };
  } else {
    picture.Channels = [images = std::vector<QImage>{file_, otherHalf_}] { return images; };
  }
  coasts_->Begin(std::move(picture), isAsked);
  EnableControls();
}

void TTabSheetGroundPath::AlignOpened() {
  wantsAlignment_ = false;
  const auto when = session_.Settings.AlignOpened.Value;
  if (when == app::kAlignNever || session_.MakesMapUnattended() || LiesAsLogged()) return;
  if (coasts_->Now() == Stage::Ending) {
    wantsAlignment_ = true;
    return;
  }
  const KnownRecording known = ForAlignment();
  // Another channel of what was tried already.
  if (known.Problem.isEmpty() && swath::IsSameRecording(known.Recording, coasts_->Before())) return;
  BeginAlignment(false);
}

void TTabSheetGroundPath::AlignmentEnded() {
  EnableControls();
  if (wantsAlignment_) AlignOpened();
}

void TTabSheetGroundPath::OfferAlignment() {
  if (coasts_->Now() != Stage::Answered || IsBusy() || session_.Run.Closing) return;
  EndAlignmentOfAnother();
  if (coasts_->Now() != Stage::Answered) return;
  auto drop = qScopeGuard([this] { DropAlignment(); });
  const align::Finding found = coasts_->Answer().Is;
  if (found != align::Finding::NotFound) PreviewAlignment();
  coasts_->ShowAnswer();
  drop.dismiss();
  ShowWindows();
  EnableControls();
  const bool isToBeTaken = session_.Settings.AlignOpened.Value == app::kAlignTaking && !coasts_->IsAsked();
  if (isToBeTaken && found == align::Finding::Found) TakeOffered();
}

void TTabSheetGroundPath::PreviewAlignment() {
  if (!MapIsOfPicture()) {
    // To be seen beside the new one; files are written when the user makes or takes a map.
    const overlay::OverlayRequest old = Request();
    ShowResult({old, overlay::GenerateOverlay(old, sources_)});
  }
  overlay::OverlayRequest request = made_->Request;
  const swath::Recording& aligned = coasts_->Answer().Aligned;
  request.Picture.OffsetS = aligned.OffsetS;
  request.Picture.ShiftColumns = aligned.ShiftColumns;
  request.Picture.Offsets = aligned.Offsets;
  preview_ = {request, overlay::GenerateOverlay(request, sources_)};
  ShowMap();
  EnableControls();
  if (!wasOverlaid_) wasOverlaid_ = ui_.CheckBoxOverlaid->isChecked();
  ui_.CheckBoxOverlaid->setChecked(true);
}

void TTabSheetGroundPath::ShowWindows() {
  if (hand_->IsOn()) return;
  PictureMarks marks;
  const bool areWanted = ui_.AlignBar->DrawsWindows() && !coasts_->ShowsOld();
  if (coasts_->Now() == Stage::Offered && areWanted) {
    swath::Recording shown = coasts_->Before();
    shown.Lies = ShownLies(shown);
    marks.Windows = WindowsIn(coasts_->Answer(), coasts_->Before(), shown);
  }
  ui_.Panes->PictureSide()->SetMarks(std::move(marks));
}

void TTabSheetGroundPath::AlignmentFlipped() {
  ShowMap();
  ShowWindows();
}

void TTabSheetGroundPath::TakeOffered() {
  if (coasts_->Now() != Stage::Offered) return;
  const align::PictureAlignment& found = coasts_->Answer();
  const auto seen = Seen();
  const align::LoggedAlignment* logged = seen ? log_.Find(*seen) : nullptr;
  undo_ = {alignment_, logged ? std::optional(*logged) : std::nullopt, wasOverlaid_};
  // What is taken stays to be seen when the bar closes.
  wasOverlaid_.reset();
  preview_.reset();
  coasts_->ShowTaken();
  const auto show = qScopeGuard([this] {
    ShowWindows();
    EnableControls();
  });
  RememberAlignment(
      found.Aligned, picture_.ShownPath(),
      found.Is == align::Finding::Found ? align::FoundBy::Coasts : align::FoundBy::CoastsRoughly,
      found.ChancePeaks);
}

void TTabSheetGroundPath::UndoTaken() {
  if (coasts_->Now() != Stage::Taken) return;
  const swath::Recording before = coasts_->Before();
  const auto seen = Seen();
  wasOverlaid_ = undo_.WasOverlaid;
  DropAlignment();
  alignment_ = undo_.Alignment;
  picture_.TakeAlignment(before.OffsetS, before.ShiftColumns, before.DriftPpm);
  const auto follow = qScopeGuard([this] { FollowFit(); });
  if (undo_.Logged) {
    log_.Add(*undo_.Logged);
  } else if (seen) {
    log_.Remove({*seen});
  }
}

void TTabSheetGroundPath::DropAlignment() {
  const bool hadPreview = preview_.has_value();
  preview_.reset();
  coasts_->End();
  if (hadPreview) ShowMap();
  if (wasOverlaid_) ui_.CheckBoxOverlaid->setChecked(*wasOverlaid_);
  wasOverlaid_.reset();
  ShowWindows();
  EnableControls();
}

void TTabSheetGroundPath::EndAlignmentOfAnother() {
  if (coasts_->Now() == Stage::Idle || coasts_->Now() == Stage::Ending) return;
  const auto known = Known();
  const bool isSeen = known && known->Problem.isEmpty() && picture_.Shows(known->Recording);
  if (!isSeen || !swath::LiesAlike(known->Recording, coasts_->Expected())) DropAlignment();
}

}  // namespace pelorin::desktop
