// Alignments that were accepted before: of the picture itself, and of others.

#include <QPushButton>
#include <QScopeGuard>
#include <QTextDocument>

#include "desktop/overlay/attitude_box.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

template <class Offer>
void ShowOffer(QPushButton* button, const std::optional<Offer>& offer) {
  button->setVisible(offer.has_value());
  if (!offer) return;
  button->setText(align::TextOf(*offer));
  // Names come from files and are no markup.
  const QString tip = align::TipOf(*offer);
  session::Hinted(button, Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
}

}  // namespace

std::optional<align::LoggedAlignment> TTabSheetGroundPath::Seen() const {
  // At the start nobody waits for element archives to be read.
  if (picture_.ShownPath().isEmpty()) return std::nullopt;
  const auto known = Known();
  if (!known || !known->Problem.isEmpty() || !picture_.Shows(known->Recording)) return std::nullopt;
  return align::Logged(known->Recording, picture_.ShownPath(), {}, {}, {});
}

bool TTabSheetGroundPath::LiesAsLogged() const {
  const auto seen = Seen();
  const align::LoggedAlignment* logged = seen ? log_.Find(*seen) : nullptr;
  return logged != nullptr && align::LiesAlike(*seen, *logged);
}

void TTabSheetGroundPath::OpenAligned() {
  const auto seen = Seen();
  const bool isSame = seen && sought_ && align::IsSamePicture(*sought_, *seen);
  sought_ = seen;
  if (!seen || isSame) return;
  const QString note = log_.Note();
  if (!note.isEmpty() && note != toldNote_) session_.Window.SetStatus(note);
  toldNote_ = note;
  alignment_.reset();
  const align::LoggedAlignment* logged = log_.Find(*seen);
  if (logged == nullptr) return;
  TakeAlignment(*logged);
  ShowPass();
  // The map may have been there before its picture.
  if (!IsBusy() && MapIsOfPicture()) RemakeMap(Request());
}

void TTabSheetGroundPath::TakeAlignment(const align::LoggedAlignment& alignment) {
  alignment_ = alignment;
  picture_.TakeAlignment(alignment.ClockS, alignment.ShiftColumns, alignment.DriftPpm);
}

bool TTabSheetGroundPath::LeaveAlignment() {
  const auto seen = Seen();
  if (!alignment_ || !seen || !align::IsSamePicture(*seen, *alignment_)) return false;
  alignment_.reset();
  picture_.LeaveAlignment();
  return true;
}

void TTabSheetGroundPath::RememberAlignment(const swath::Recording& aligned, const QString& picture,
                                            align::FoundBy how, std::optional<double> chancePeaks) {
  const align::LoggedAlignment logged = align::Logged(aligned, picture, how, chancePeaks, session_.Now());
  const auto seen = Seen();
  const bool isSeen = seen && align::IsSamePicture(*seen, logged);
  if (isSeen) TakeAlignment(logged);
  const auto follow = qScopeGuard([&] { isSeen ? FollowFit() : ShowFit(); });
  log_.Add(logged);
}

void TTabSheetGroundPath::AlignmentLogChanged() {
  ShowFit();
  ShowTitle();
}

void TTabSheetGroundPath::ShowRemembered(bool marksTellTime) {
  const auto seen = Seen();
  const align::LoggedAlignment* before = seen ? log_.Find(*seen) : nullptr;
  const bool isAside = before != nullptr && !align::LiesAlike(*seen, *before);
  ShowOffer(ui_.ButtonAlignedBefore, isAside ? std::optional(*before) : std::nullopt);
  // Whose own alignment is known needs no other's.
  const bool isNew = seen && before == nullptr;
  const bool mayDiffer = isNew && !marksTellTime, mayTurn = isNew && ui_.GroupBoxAttitude->isEnabled();
  ShowOffer(ui_.ButtonClockMedian, mayDiffer ? align::OfferClock(log_.Rows(), *seen) : std::nullopt);
  ShowOffer(ui_.ButtonAttitudeMedian, mayTurn ? align::OfferAttitude(log_.Rows(), *seen) : std::nullopt);
}

void TTabSheetGroundPath::ButtonAlignedBeforeClick() {
  const auto seen = Seen();
  if (const align::LoggedAlignment* before = seen ? log_.Find(*seen) : nullptr) {
    TakeAlignment(*before);
    FollowFit();
  }
}

void TTabSheetGroundPath::ButtonClockMedianClick() {
  const auto seen = Seen();
  const auto clock = seen ? align::OfferClock(log_.Rows(), *seen) : std::nullopt;
  if (clock) TimeCorrectionChanged(clock->OffsetS);
}

void TTabSheetGroundPath::ButtonAttitudeMedianClick() {
  const auto seen = Seen();
  const auto attitude = seen ? align::OfferAttitude(log_.Rows(), *seen) : std::nullopt;
  if (attitude) AttitudeChanged({attitude->RollDeg, seen->Offsets.PitchDeg, attitude->YawDeg});
}

}  // namespace pelorin::desktop
