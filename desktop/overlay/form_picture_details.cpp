#include "desktop/overlay/form_picture_details.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimeEdit>
#include <QVBoxLayout>
#include <array>

#include "session/controls.h"
#include "session/picker_time.h"

namespace pelorin::desktop {
namespace {

using session::Hinted;
using session::Named;

constexpr int kReasonCharacters = 56;

/// The ways to store a picture, as the user chooses among them.
struct WayToStore {
  const char* Caption;
  std::optional<swath::Stored> Lies;
};
const std::array<WayToStore, 5> kWays{{{"As pictures of its kind mostly are", std::nullopt},
                                       {"As received", swath::Stored{false, false}},
                                       {"Turned by 180 degrees", swath::Stored{true, false}},
                                       {"As received, left and right exchanged", swath::Stored{false, true}},
                                       {"Turned, left and right exchanged", swath::Stored{true, true}}}};

}  // namespace

TFormPictureDetails::TFormPictureDetails(session::Session& session, QWidget* parent)
    : TForm(session, "FormPictureDetails", QStringLiteral("What is this picture?"), parent) {}

void TFormPictureDetails::FormCreate() {
  LabelReason = Named(new QLabel(this), "LabelReason");
  LabelReason->setWordWrap(true);
  LabelReason->setTextFormat(Qt::PlainText);
  ComboBoxSatellite = Hinted(Named(new QComboBox(this), "ComboBoxSatellite"),
                             QStringLiteral("The satellite that sent the picture"));
  StartDate = Hinted(Named(new QDateEdit(this), "StartDate"),
                     QStringLiteral("The day on which the first line was received, UTC"));
  session::SetUpPicker(StartDate, QStringLiteral("yyyy MMM dd"));
  StartTime = Hinted(Named(new QTimeEdit(this), "StartTime"),
                     QStringLiteral("The second at which the first line was received, UTC"));
  session::SetUpPicker(StartTime, QStringLiteral("HH:mm:ss"));
  ComboBoxScanner = Hinted(Named(new QComboBox(this), "ComboBoxScanner"),
                           QStringLiteral("The instrument; mostly its satellite and its columns tell"));
  ComboBoxStored = Hinted(
      Named(new QComboBox(this), "ComboBoxStored"),
      QStringLiteral("As received, a north-bound picture has north at the bottom; some recorders turn it"));
  for (const WayToStore& way : kWays) ComboBoxStored->addItem(QString::fromLatin1(way.Caption));

  auto* fields = new QFormLayout;
  const auto addRow = [&](const QString& caption, QWidget* field) {
    fields->addRow(session::LabelFor(caption, field, this), field);
  };
  addRow(QStringLiteral("Sa&tellite"), ComboBoxSatellite);
  addRow(QStringLiteral("&Date"), StartDate);
  addRow(QStringLiteral("&Begin (UTC)"), StartTime);
  addRow(QStringLiteral("&Scanner"), ComboBoxScanner);
  addRow(QStringLiteral("St&ored"), ComboBoxStored);
  auto* buttons = new QDialogButtonBox(this);
  auto* buttonOK = Named(new QPushButton(QStringLiteral("OK"), this), "ButtonOK");
  auto* buttonCancel = Named(new QPushButton(QStringLiteral("Cancel"), this), "ButtonCancel");
  buttons->addButton(buttonOK, QDialogButtonBox::AcceptRole);
  buttons->addButton(buttonCancel, QDialogButtonBox::RejectRole);
  buttonOK->setDefault(true);
  auto* layout = new QVBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetMinAndMaxSize);
  layout->addWidget(LabelReason);
  layout->addLayout(fields);
  GroupBoxWhichPass = new TWhichPassBox(Boxes(), this);
  layout->addWidget(GroupBoxWhichPass);
  layout->addWidget(buttons);
  setMinimumWidth(fontMetrics().averageCharWidth() * kReasonCharacters);

  session::Handle(buttonOK, &QPushButton::clicked, this, &TFormPictureDetails::ButtonOKClick);
  connect(buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
  session::Handle(StartDate, &QDateEdit::dateChanged, this, &TFormPictureDetails::StartDateChange);
  session::Handle(GroupBoxWhichPass, &TWhichPassBox::Chosen, this, &TFormPictureDetails::PassChosen);
  connect(this, &QDialog::finished, GroupBoxWhichPass, &TWhichPassBox::End);
}

void TFormPictureDetails::FormShow() {
  LabelReason->setText(details_.Reason);
  ComboBoxSatellite->clear();
  ComboBoxSatellite->addItems(details_.Satellites);
  ComboBoxSatellite->setCurrentIndex(details_.Satellite);
  session::TurnPicker(StartDate, details_.Start);
  session::TurnPicker(StartTime, details_.Start);
  ComboBoxScanner->clear();
  ComboBoxScanner->addItem(QStringLiteral("As satellite and columns tell"));
  ComboBoxScanner->addItems(details_.Scanners);
  ComboBoxScanner->setCurrentIndex(details_.Scanner + 1);
  ChooseWay(details_.Lies);
  startByCoasts_.reset();
  if (details_.IsStartByCoasts) startByCoasts_ = session::PickedMoment(StartDate, StartTime);
  GroupBoxWhichPass->SetQuestion(question_);
  StartDateChange();
}

QWidget* TFormPictureDetails::FirstControl() const {
  return details_.Satellite < 0 ? static_cast<QWidget*>(ComboBoxSatellite) : StartDate;
}

void TFormPictureDetails::StartDateChange() {
  GroupBoxWhichPass->SetDay(session::PickedMoment(StartDate, StartTime));
}

void TFormPictureDetails::PassChosen(const PassAnswer& answer) {
  ComboBoxSatellite->setCurrentIndex(answer.Satellite);
  session::TurnPicker(StartDate, answer.Start);
  session::TurnPicker(StartTime, answer.Start);
  ChooseWay(answer.Lies);
  startByCoasts_ = session::PickedMoment(StartDate, StartTime);
}

void TFormPictureDetails::ChooseWay(const std::optional<swath::Stored>& lies) {
  for (int way = 0; way < static_cast<int>(kWays.size()); ++way) {
    if (kWays[static_cast<std::size_t>(way)].Lies == lies) ComboBoxStored->setCurrentIndex(way);
  }
}

bool TFormPictureDetails::Ask(PictureDetails& details, PassQuestion question) {
  details_ = details;
  question_ = std::move(question);
  if (exec() != Accepted) return false;
  details = details_;
  return true;
}

void TFormPictureDetails::ButtonOKClick() {
  if (ComboBoxSatellite->currentIndex() < 0) {
    Boxes().Message(QStringLiteral("Please choose the satellite that sent the picture."));
    ComboBoxSatellite->setFocus();
    return;
  }
  details_.Satellite = ComboBoxSatellite->currentIndex();
  details_.Start = session::PickedMoment(StartDate, StartTime);
  details_.IsStartByCoasts = startByCoasts_ == details_.Start;
  details_.Scanner = ComboBoxScanner->currentIndex() - 1;
  details_.Lies = kWays[static_cast<std::size_t>(ComboBoxStored->currentIndex())].Lies;
  accept();
}

}  // namespace pelorin::desktop
