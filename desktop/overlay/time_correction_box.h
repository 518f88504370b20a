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

  /// What is added, and what is without the user's doing; tells nobody.
  void SetSeconds(double seconds, double usual);

 Q_SIGNALS:
  /// The user wants another correction.
  void Changed(double seconds);
  /// The user wants the usual one.
  void ResetWanted();

 private:
  QPushButton* NewStep(const QString& caption, const char* name, double step);

  QDoubleSpinBox* SpinEditTimeCorrection;
  QPushButton* ButtonCorrectionReset;
};

}  // namespace pelorin::desktop
