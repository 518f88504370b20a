#pragma once

#include "session/form.h"

class QDateEdit;
class QTimeEdit;

namespace pelorin::desktop {

/// Asks when a flight starts. Kept for the program's life: it opens with what was chosen last.
class TFormSetFlightTime : public session::TForm {
  Q_OBJECT

 public:
  TFormSetFlightTime(session::Session& session, QWidget* parent);

  orbit::TDateTime FlightStartTime;  ///< UTC; zero means now, when the dialog opens

  void FormCreate() override;
  void FormShow() override;
  void ButtonOKClick();

 private:
  QWidget* FirstControl() const override;

  QDateEdit* flightDate_ = nullptr;
  QTimeEdit* flightTime_ = nullptr;
};

}  // namespace pelorin::desktop
