#pragma once

#include <QDoubleSpinBox>
#include <QGroupBox>
#include <array>

#include "swath/recording.h"

namespace pelorin::desktop {

/// How the spacecraft flies that saw the picture: roll, pitch and yaw, and where they are from.
class TAttitudeBox : public QGroupBox {
  Q_OBJECT

 public:
  explicit TAttitudeBox(QWidget* parent);

  /// Shows a recording's attitude, which can be changed where the law of its line lets it turn the map; null
  /// when nothing is known. Tells nobody.
  void ShowOf(const swath::Recording* recording);

 Q_SIGNALS:
  /// The user wants another attitude.
  void Changed(const swath::Attitude& attitude);
  /// The user wants that of the table of scanners or of the product file.
  void ResetWanted();

 private:
  void Tell();

  std::array<QDoubleSpinBox*, 3> angles_;  ///< roll, pitch, yaw
};

}  // namespace pelorin::desktop
