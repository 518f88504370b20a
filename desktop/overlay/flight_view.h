#pragma once

#include <QWidget>

#include "overlay/flight_image.h"

namespace pelorin::desktop {

/// Shows a flight pixel by pixel; before the first one, how to begin.
class TFlightView : public QWidget {
  Q_OBJECT

 public:
  explicit TFlightView(QWidget* parent = nullptr);

  /// Borrowed until the next call.
  void SetFlight(const overlay::FlightImage& flight);
  /// `lines` new lines have entered.
  void ShowLines(int lines);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const overlay::FlightImage* flight_ = nullptr;
};

}  // namespace pelorin::desktop
