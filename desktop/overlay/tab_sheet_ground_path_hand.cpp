// Fitting the picture by hand.

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QPushButton>
#include <QSpinBox>

#include "desktop/overlay/attitude_box.h"
#include "desktop/overlay/coast_alignment.h"
#include "desktop/overlay/hand_fit.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "desktop/overlay/time_correction_box.h"
#include "overlay/fit_conditions.h"
#include "session/controls.h"
#include "session/time_picker.h"

namespace pelorin::desktop {

TTabSheetGroundPath::KnownRecording TTabSheetGroundPath::ForFit(const QString& trouble) const {
  overlay::FitConditions now{trouble, IsBusy(), !picture_.ShownPath().isEmpty()};
  const auto known = now.HasPicture ? Known() : std::nullopt;
  now.HasSatellite = known.has_value();
  now.IsSeen = known && picture_.Shows(known->Recording);
  if (known) now.Problem = known->Problem;
  return {known ? known->Recording : swath::Recording(), overlay::WhyNotFitted(now)};
}

TTabSheetGroundPath::KnownRecording TTabSheetGroundPath::ForHandFit() const {
  QString trouble = lines_ == nullptr ? noLines_ : QString();
  if (coasts_->IsOn()) trouble = QStringLiteral("End the alignment first: take what it finds, or leave it.");
  KnownRecording known = ForFit(trouble);
  if (known.Problem.isEmpty()) known.Recording.Lies = ShownLies(known.Recording);
  return known;
}

void TTabSheetGroundPath::ShowHandFit() {
  // At the start nobody waits for element archives to be read for a page that is not seen.
  if (!isVisible()) return;
  const bool isOn = hand_->IsOn();
  const QString problem = isOn ? QString() : ForHandFit().Problem;
  ui_.ButtonFitByHand->setChecked(isOn);
  ui_.ButtonFitByHand->setEnabled(problem.isEmpty());
  session::Hinted(ui_.ButtonFitByHand,
                  problem.isEmpty()
                      ? QStringLiteral("Draw the coasts over the picture, and pull them to where "
                                       "it shows them")
                      : problem);
  // Who fits a picture wants no other one, and no second correction at the same time.
  for (QWidget* control : std::initializer_list<QWidget*>{
           ui_.ComboBoxSatForPic, ui_.DateTimePickerDate, ui_.DateTimePickerTime, ui_.SpinEditPassDuration,
           ui_.ButtonGenTopo, ui_.ButtonReload, ui_.ButtonDetails, ui_.ButtonMinuteMarks,
           ui_.ButtonAlignedBefore, ui_.ButtonClockMedian, ui_.ButtonAttitudeMedian, ui_.CheckBoxNorthUp,
           ui_.GroupBoxTimeCorrection}) {
    control->setEnabled(!isOn);
  }
  // An offer is for the map as it lies.
  if (preview_) {
    ui_.ButtonGenTopo->setEnabled(false);
    ui_.CheckBoxNorthUp->setEnabled(false);
  }
  if (isOn) ui_.GroupBoxAttitude->setEnabled(false);
}

void TTabSheetGroundPath::ButtonFitByHandClick() {
  if (hand_->IsOn()) {
    hand_->End();
    return HandFitCancelled();
  }
  const KnownRecording known = ForHandFit();
  if (known.Problem.isEmpty()) DropAlignment();
  session::Guarded(Boxes(), [&] {
    if (known.Problem.isEmpty()) hand_->Begin(known.Recording, *lines_);
  });
  EnableControls();
}

void TTabSheetGroundPath::HandFitTaken(const swath::Recording& fitted) {
  EnableControls();
  RememberAlignment(fitted, picture_.ShownPath(), align::FoundBy::Hand, {});
}

void TTabSheetGroundPath::HandFitCancelled() {
  EnableControls();
  ShowFit();
}

void TTabSheetGroundPath::EndHandFitOfAnother() {
  if (!hand_->IsOn()) return;
  const swath::Recording& fitted = hand_->Recording();
  const KnownRecording now = ForHandFit();
  const swath::Recording& seen = now.Recording;
  if (now.Problem.isEmpty() && swath::LiesAlike(seen, fitted)) return;
  hand_->End();
  EnableControls();
}

}  // namespace pelorin::desktop
