#pragma once

#include <vector>

#include "desktop/passes/form_ephemeris_layout.h"
#include "passes/pass_details.h"
#include "session/form.h"

namespace pelorin::desktop {

/// The printable report of the active satellites' passes, day by day. Kept for the program's life: the report
/// stays until another one is predicted.
class TFormEphemeris : public session::TForm {
  Q_OBJECT

 public:
  TFormEphemeris(session::Session& session, QWidget* parent);

  /// First day of the next report: that of the pass list, until date or days are touched.
  orbit::TDateTime StartDate;

  void FormCreate() override;
  void FormShow() override;
  void DateTimePickerStartChange();
  void ChangeDuration(int days);
  void ButtonPredictClick();
  void TabSheetEphemerisShow();
  void ButtonPrintClick();
  void ButtonSaveClick();

  /// Ends a running prediction, which keeps its days; without one, closes the window.
  void reject() override;

 private:
  QWidget* FirstControl() const override;
  /// False, and the earlier report stays, when no satellite is selected; the user was told.
  bool Predict();
  std::vector<orbit::TSatellite> SelectedSatellites() const;
  void SetStartDate(orbit::TDateTime start);
  void EnableOutput(bool enabled);
  /// A file of the report's name in the results folder.
  QString SuggestedFile(const QString& extension) const;

  FormEphemerisLayout ui_;
  std::vector<passes::PassDetails> reportedPasses_;
  QString reportedStation_;
  orbit::TDateTime reportedStart_;
  bool isPredicting_ = false;
  bool stopRequested_ = false;
};

}  // namespace pelorin::desktop
