#pragma once

#include <QDialog>
#include <vector>

#include "desktop/passes/form_ephemeris_layout.h"
#include "passes/pass_details.h"
#include "session/session.h"

namespace pelorin::desktop {

/// The printable report of the active satellites' passes, day by day. Kept for the program's life: the report
/// stays until another one is predicted.
class TFormEphemeris : public QDialog {
  Q_OBJECT

 public:
  TFormEphemeris(session::Session& session, QWidget* parent);

  session::Prompts& Boxes() const { return session_.Boxes; }

  /// First day of the next report: that of the pass list, until date or days are touched.
  orbit::TDateTime StartDate;

  void FormCreate();
  void FormShow();
  void DateTimePickerStartChange();
  void ChangeDuration(int days);
  void ButtonPredictClick();
  void TabSheetEphemerisShow();
  void ButtonPrintClick();
  void ButtonSaveClick();

  /// Ends a running prediction, which keeps its days; without one, closes the window.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  /// False, and the earlier report stays, when no satellite is selected; the user was told.
  bool Predict();
  std::vector<orbit::TSatellite> SelectedSatellites() const;
  void SetStartDate(orbit::TDateTime start);
  void EnableOutput(bool enabled);
  /// A file of the report's name in the results folder.
  QString SuggestedFile(const QString& extension) const;

  session::Session& session_;
  FormEphemerisLayout ui_;
  std::vector<passes::PassDetails> reportedPasses_;
  QString reportedStation_;
  orbit::TDateTime reportedStart_;
  bool isPredicting_ = false;
  bool stopRequested_ = false;
};

}  // namespace pelorin::desktop
