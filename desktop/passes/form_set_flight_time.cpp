#include "desktop/passes/form_set_flight_time.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimeEdit>
#include <QVBoxLayout>

#include "session/controls.h"
#include "session/picker_time.h"

namespace pelorin::desktop {
namespace {

/// Room for the window's title and its buttons.
constexpr int kTitleCharacters = 40;

}  // namespace

TFormSetFlightTime::TFormSetFlightTime(session::Session& session, QWidget* parent)
    : TForm(session, "FormSetFlightTime", QStringLiteral("Set flight start time"), parent) {}

void TFormSetFlightTime::FormCreate() {
  flightDate_ = session::Named(new QDateEdit(this), "FlightDate");
  flightTime_ = session::Named(new QTimeEdit(this), "FlightTime");
  session::SetUpPicker(flightDate_, QStringLiteral("yyyy MMM dd"));
  session::SetUpPicker(flightTime_, QStringLiteral("HH:mm"));
  auto* pickers = new QFormLayout;
  pickers->addRow(session::LabelFor(QStringLiteral("Date"), flightDate_, this), flightDate_);
  pickers->addRow(session::LabelFor(QStringLiteral("Time (UTC)"), flightTime_, this), flightTime_);
  auto* buttons = new QDialogButtonBox(this);
  auto* buttonOK = session::Named(new QPushButton(QStringLiteral("OK"), this), "ButtonOK");
  auto* buttonCancel = session::Named(new QPushButton(QStringLiteral("Cancel"), this), "ButtonCancel");
  buttons->addButton(buttonOK, QDialogButtonBox::AcceptRole);
  buttons->addButton(buttonCancel, QDialogButtonBox::RejectRole);
  // The box makes its first accepting button the default one unless told otherwise.
  buttonCancel->setDefault(true);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(pickers);
  layout->addWidget(buttons);
  setMinimumWidth(fontMetrics().averageCharWidth() * kTitleCharacters);

  session::Handle(buttonOK, &QPushButton::clicked, this, &TFormSetFlightTime::ButtonOKClick);
  connect(buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TFormSetFlightTime::FormShow() {
  if (FlightStartTime.Days == 0) FlightStartTime = session_.Now();
  session::TurnPicker(flightDate_, FlightStartTime);
  session::TurnPicker(flightTime_, FlightStartTime);
}

void TFormSetFlightTime::ButtonOKClick() {
  FlightStartTime = session::PickedMoment(flightDate_, flightTime_);
  accept();
}

QWidget* TFormSetFlightTime::FirstControl() const { return flightDate_; }

}  // namespace pelorin::desktop
