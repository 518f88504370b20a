#pragma once

#include <QDoubleSpinBox>
#include <QGroupBox>

#include "swath/recording.h"

class QPushButton;

namespace pelorin::desktop {

/// Seconds that are added to the pass's start, with buttons for steps by eye. Its title tells what else the
/// user has found of the recording's clock and cut.
class TTimeCorrectionBox : public QGroupBox {
  Q_OBJECT

 public:
  explicit TTimeCorrectionBox(QWidget* parent);

  /// Shows what is added for a recording, and what is without the user's doing; tells nobody.
  void ShowOf(const swath::Recording& recording, double usual);

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
