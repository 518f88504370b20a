#pragma once

#include <QDialog>

#include "session/session.h"

class QDateEdit;
class QTimeEdit;

namespace pelorin::desktop {

/// Asks when a flight starts. Kept for the program's life: it opens with what was chosen last.
class TFormSetFlightTime : public QDialog {
  Q_OBJECT

 public:
  TFormSetFlightTime(session::Session& session, QWidget* parent);

  session::Prompts& Boxes() const { return session_.Boxes; }

  orbit::TDateTime FlightStartTime;  ///< UTC; zero means now, when the dialog opens

  void FormCreate();
  void FormShow();
  void ButtonOKClick();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  session::Session& session_;
  QDateEdit* flightDate_;
  QTimeEdit* flightTime_;
};

}  // namespace pelorin::desktop
