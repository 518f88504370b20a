#include "desktop/overlay/attitude_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include "session/controls.h"

namespace pelorin::desktop {
namespace {

/// A degree is some 14 km below the satellite; a twentieth, less than a column.
constexpr double kStepDeg = 0.05;

QString TitleOf(const swath::Recording* recording) {
  QString from;
  if (recording == nullptr) return QStringLiteral(" Attitude ");
  switch (recording->OffsetsAreFrom) {
    case swath::KnownFrom::User:
      from = QStringLiteral("yours");
      break;
    case swath::KnownFrom::Alignment:
      from = QStringLiteral("by its alignment");
      break;
    case swath::KnownFrom::Product:
      from = QStringLiteral("from the product file");
      break;
    case swath::KnownFrom::Table:
      from = QStringLiteral("as fitted for %1").arg(QString::fromStdString(recording->Elements->Name));
      break;
    case swath::KnownFrom::Default:
    case swath::KnownFrom::Name:
      from = QStringLiteral("not known");
      break;
  }
  return QStringLiteral(" Attitude, %1 ").arg(from);
}

}  // namespace

TAttitudeBox::TAttitudeBox(QWidget* parent) : QGroupBox(TitleOf(nullptr), parent) {
  setObjectName(QStringLiteral("GroupBoxAttitude"));
  const struct {
    const char* Name;
    QString Caption, Hint;
  } angles[] = {
      {"SpinEditRoll", QStringLiteral("Roll:"),
       QStringLiteral(
           "Degrees by which the spacecraft looks too far to the left, seen in the direction of its "
           "flight: positive moves the line to the left")},
      {"SpinEditPitch", QStringLiteral("Pitch:"),
       QStringLiteral("Degrees by which it looks too far ahead: positive moves the line forward")},
      {"SpinEditYaw", QStringLiteral("Yaw:"),
       QStringLiteral("Degrees by which it is turned: positive turns the left end of the line forward")},
  };
  auto* row = new QHBoxLayout(this);
  row->setSpacing(3);
  QWidget* before = nullptr;
  for (std::size_t i = 0; i < angles_.size(); ++i) {
    auto* angle = session::Named(new QDoubleSpinBox(this), angles[i].Name);
    angle->setLocale(QLocale::c());
    angle->setDecimals(2);
    angle->setRange(-swath::kMostTurnedDeg, swath::kMostTurnedDeg);
    angle->setSingleStep(kStepDeg);
    angle->setSuffix(QStringLiteral("°"));
    angle->setKeyboardTracking(false);
    session::Hinted(angle, angles[i].Hint);
    connect(angle, &QDoubleSpinBox::valueChanged, this, &TAttitudeBox::Tell);
    row->addWidget(session::LabelFor(angles[i].Caption, angle, this));
    row->addWidget(angle);
    if (before != nullptr) setTabOrder(before, angle);
    before = angles_[i] = angle;
  }
  auto* reset =
      session::Hinted(session::Named(new QPushButton(QStringLiteral("Reset"), this), "ButtonAttitudeReset"),
                      QStringLiteral("Forget yours: back to the product file's or the table's"));
  reset->setFixedWidth(reset->fontMetrics().horizontalAdvance(reset->text()) + 16);
  reset->setAutoDefault(true);
  connect(reset, &QPushButton::clicked, this, &TAttitudeBox::ResetWanted);
  row->addWidget(reset);
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
  ShowOf(nullptr);
}

void TAttitudeBox::ShowOf(const swath::Recording* recording) {
  const swath::Attitude shown = recording ? recording->Offsets : swath::Attitude();
  const double degrees[] = {shown.RollDeg, shown.PitchDeg, shown.YawDeg};
  for (std::size_t i = 0; i < angles_.size(); ++i) {
    const QSignalBlocker quiet(angles_[i]);
    angles_[i]->setValue(degrees[i]);
  }
  setEnabled(recording != nullptr && recording->SeenBy.Line.Law != swath::ScanLaw::ZonesSphere);
  setTitle(TitleOf(recording));
}

void TAttitudeBox::Tell() { Q_EMIT Changed({angles_[0]->value(), angles_[1]->value(), angles_[2]->value()}); }

}  // namespace pelorin::desktop
