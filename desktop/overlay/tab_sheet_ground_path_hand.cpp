// Fitting the picture by hand.

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QPushButton>
#include <QSpinBox>

#include "desktop/overlay/attitude_box.h"
#include "desktop/overlay/hand_fit.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "desktop/overlay/time_correction_box.h"
#include "session/controls.h"
#include "session/time_picker.h"

namespace pelorin::desktop {

TTabSheetGroundPath::KnownRecording TTabSheetGroundPath::ForHandFit() const {
  const auto because = [](const QString& reason) { return KnownRecording{{}, reason}; };
  if (lines_ == nullptr) return because(noLines_);
  if (IsBusy()) return because(QStringLiteral("Wait until the map is made."));
  if (picture_.ShownPath().isEmpty()) return because(QStringLiteral("Load a picture first."));
  auto known = Known();
  if (!known) return because(QStringLiteral("Choose the satellite that sent the picture."));
  if (!known->Problem.isEmpty()) return *known;
  if (!picture_.Shows(known->Recording)) {
    return because(
        QStringLiteral("The picture that is seen is of another pass than the one that is chosen."));
  }
  known->Recording.Lies = ShownLies(known->Recording);
  return *known;
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
  if (isOn) ui_.GroupBoxAttitude->setEnabled(false);
}

void TTabSheetGroundPath::ButtonFitByHandClick() {
  if (hand_->IsOn()) {
    hand_->End();
    return HandFitCancelled();
  }
  const KnownRecording known = ForHandFit();
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
  const bool isSame = now.Problem.isEmpty() && swath::IsSameRecording(seen, fitted) &&
                      seen.Lies == fitted.Lies && seen.Rows == fitted.Rows &&
                      seen.Columns == fitted.Columns && seen.OffsetS == fitted.OffsetS &&
                      seen.Offsets == fitted.Offsets;
  if (isSame) return;
  hand_->End();
  EnableControls();
}

}  // namespace pelorin::desktop
