#pragma once

#include <QDoubleSpinBox>
#include <QGroupBox>

class QPushButton;

namespace pelorin::desktop {

/// Seconds that are added to the pass's start, with buttons for steps by eye.
class TTimeCorrectionBox : public QGroupBox {
  Q_OBJECT

 public:
  explicit TTimeCorrectionBox(QWidget* parent);

  /// Tells nobody.
  void SetSeconds(double seconds);

 Q_SIGNALS:
  /// The user wants another correction.
  void Changed(double seconds);

 private:
  QPushButton* NewStep(const QString& caption, const char* name, double step);

  QDoubleSpinBox* SpinEditTimeCorrection;
};

}  // namespace pelorin::desktop
