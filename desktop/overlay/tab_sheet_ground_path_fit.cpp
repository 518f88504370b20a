// Bringing the map onto the picture: attitude, time correction, minute marks.

#include <QComboBox>
#include <QPushButton>

#include "desktop/overlay/attitude_box.h"
#include "desktop/overlay/tab_sheet_ground_path.h"

namespace pelorin::desktop {

void TTabSheetGroundPath::FindMarks() {
  // At the start nobody waits for element archives to be read for a page that is not seen.
  if (!isVisible()) return;
  const auto known = Known();
  const bool isSeen = known && known->Problem.isEmpty() && picture_.Shows(known->Recording);
  marks_ = isSeen ? overlay::FindMinuteMarkLines(file_, known->Recording) : std::vector<int>();
  ShowFit();
}

std::optional<overlay::MinuteMarkOffer> TTabSheetGroundPath::Offer() const {
  const auto known = Known();
  if (!known || !picture_.Shows(known->Recording)) return std::nullopt;
  return overlay::OfferByMarks(marks_, known->Recording);
}

void TTabSheetGroundPath::ShowFit() {
  if (!isVisible()) return;
  EndHandFitOfAnother();
  EndAlignmentOfAnother();
  ShowHandFit();
  ShowAlign();
  const auto known = Known();
  ui_.GroupBoxAttitude->ShowOf(known && known->Problem.isEmpty() ? &known->Recording : nullptr);
  const auto offer = Offer();
  ui_.ButtonMinuteMarks->setVisible(offer.has_value());
  ShowRemembered(offer && offer->IsMeasured);
  if (!offer) return;
  QString text = overlay::TextOf(*offer, known->Recording.Satellite);
  // What it depends on has a line of its own: the row is short.
  ui_.ButtonMinuteMarks->setText(text.replace(QStringLiteral(", "), QStringLiteral(",\n")));
}

void TTabSheetGroundPath::TakeFit() {
  session_.Settings.ClockCorrections.Value = picture_.SavedCorrections();
  session_.Settings.AttitudeCorrections.Value = attitudes_.Saved();
  FollowFit();
}

void TTabSheetGroundPath::FollowFit() {
  ShowPass();
  ShowTitle();
  if (IsBusy()) {
    MakeAgain();
  } else if (made_ && ui_.ComboBoxSatForPic->currentIndex() >= 0) {
    RemakeMap(Request());
  }
}

void TTabSheetGroundPath::TimeCorrectionChanged(double seconds) {
  picture_.SetOffset(seconds);
  TakeFit();
}

void TTabSheetGroundPath::TimeCorrectionReset() {
  const bool isAligned = alignment_ && picture_.OffsetS() == alignment_->ClockS;
  if (!(isAligned && LeaveAlignment())) picture_.ResetOffset();
  TakeFit();
}

void TTabSheetGroundPath::ButtonMinuteMarksClick() {
  if (const auto offer = Offer()) TimeCorrectionChanged(offer->OffsetS);
}

void TTabSheetGroundPath::AttitudeChanged(const swath::Attitude& attitude) {
  const auto known = Known();
  if (!known) return;
  attitudes_.Learn(known->Recording, attitude);
  // The alignment's time stays.
  alignment_.reset();
  TakeFit();
}

void TTabSheetGroundPath::AttitudeReset() {
  const auto known = Known();
  if (!known) return;
  if (!LeaveAlignment()) attitudes_.Forget(known->Recording);
  TakeFit();
}

}  // namespace pelorin::desktop
