#include "desktop/overlay/time_correction_box.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>

#include "session/controls.h"
#include "swath/clock_corrections.h"

namespace pelorin::desktop {
namespace {

/// Shows hundredths of a second where there are any.
class TOffsetSpinBox : public QDoubleSpinBox {
 public:
  using QDoubleSpinBox::QDoubleSpinBox;

 protected:
  QString textFromValue(double seconds) const override { return swath::OffsetText(seconds); }
};

QString TitleOf(const swath::Recording& recording) {
  QString title = QStringLiteral(" Time correction");
  if (recording.ShiftColumns != 0) {
    title += QStringLiteral(", %1 columns").arg(recording.ShiftColumns, 0, 'f', 1);
  }
  if (recording.DriftPpm != 0) title += QStringLiteral(", %1 ppm").arg(recording.DriftPpm, 0, 'f', 0);
  return title + u' ';
}

}  // namespace

TTimeCorrectionBox::TTimeCorrectionBox(QWidget* parent)
    : QGroupBox(TitleOf({}), parent),
      SpinEditTimeCorrection(session::Named(new TOffsetSpinBox(this), "SpinEditTimeCorrection")),
      ButtonCorrectionReset(
          session::Named(new QPushButton(QStringLiteral("Reset"), this), "ButtonCorrectionReset")) {
  setObjectName(QStringLiteral("GroupBoxTimeCorrection"));
  constexpr double limit = swath::kOffsetLimitS, step = 0.5;
  SpinEditTimeCorrection->setLocale(QLocale::c());
  SpinEditTimeCorrection->setDecimals(2);
  SpinEditTimeCorrection->setRange(-limit, limit);
  SpinEditTimeCorrection->setSingleStep(step);
  SpinEditTimeCorrection->setSuffix(QStringLiteral(" s"));
  SpinEditTimeCorrection->setKeyboardTracking(false);
  session::Hinted(
      SpinEditTimeCorrection,
      QStringLiteral("Seconds to add to the start of the pass, until the map lies on the picture"));
  connect(SpinEditTimeCorrection, &QDoubleSpinBox::valueChanged, this, &TTimeCorrectionBox::Changed);

  connect(ButtonCorrectionReset, &QPushButton::clicked, this, &TTimeCorrectionBox::ResetWanted);
  ShowOf({}, 0);

  const std::initializer_list<QWidget*> controls{
      NewStep(QStringLiteral("-10"), "ButtonCorrectionMinus10", -10),
      NewStep(QStringLiteral("-0.5"), "ButtonCorrectionMinusHalf", -step),
      SpinEditTimeCorrection,
      NewStep(QStringLiteral("+0.5"), "ButtonCorrectionPlusHalf", step),
      NewStep(QStringLiteral("+10"), "ButtonCorrectionPlus10", 10),
      ButtonCorrectionReset};
  auto* row = new QHBoxLayout(this);
  row->setSpacing(2);
  QWidget* before = nullptr;
  for (QWidget* control : controls) {
    row->addWidget(control);
    if (before != nullptr) setTabOrder(before, control);
    before = control;
  }
  for (auto* button : findChildren<QPushButton*>()) {
    // Wide enough for its caption, without a style's usual least width.
    button->setFixedWidth(button->fontMetrics().horizontalAdvance(button->text()) + 16);
    button->setAutoRepeat(button != ButtonCorrectionReset);
    button->setAutoDefault(true);
  }
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
}

QPushButton* TTimeCorrectionBox::NewStep(const QString& caption, const char* name, double step) {
  auto* button = session::Named(new QPushButton(caption, this), name);
  session::Hinted(button, QStringLiteral("Begin %1 s %2")
                              .arg(qAbs(step))
                              .arg(step < 0 ? QStringLiteral("earlier") : QStringLiteral("later")));
  connect(button, &QPushButton::clicked, this,
          [this, step] { SpinEditTimeCorrection->setValue(SpinEditTimeCorrection->value() + step); });
  return button;
}

void TTimeCorrectionBox::ShowOf(const swath::Recording& recording, double usual) {
  const QSignalBlocker quiet(SpinEditTimeCorrection);
  SpinEditTimeCorrection->setValue(recording.OffsetS);
  setTitle(TitleOf(recording));
  session::Hinted(ButtonCorrectionReset,
                  usual == 0 ? QStringLiteral("No correction")
                             : QStringLiteral("Back to %1 s, which this satellite's own clock is off")
                                   .arg(swath::OffsetText(usual)));
}

}  // namespace pelorin::desktop
