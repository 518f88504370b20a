#include "desktop/overlay/flight_view.h"

#include <QPaintEvent>
#include <QPainter>

namespace pelorin::desktop {

TFlightView::TFlightView(QWidget* parent) : QWidget(parent) {
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
}

void TFlightView::SetFlight(const overlay::FlightImage& flight) {
  flight_ = &flight;
  resize(flight.Image().size());
  update();
}

void TFlightView::ShowLines(int lines) {
  if (flight_ == nullptr) return;
  const int next = flight_->Row();
  const bool mayHaveMoved = lines >= overlay::FlightImage::kRowsGivenWay ||
                            (flight_->SouthBound() ? next > height() - overlay::FlightImage::kRowsGivenWay
                                                   : next < overlay::FlightImage::kRowsGivenWay - 1);
  if (mayHaveMoved) {
    update();
  } else {
    update(0, flight_->SouthBound() ? next - lines : next + 1, width(), lines);
  }
}

void TFlightView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (flight_ == nullptr) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(
        rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
        QStringLiteral("Choose a satellite and press \"Fly\" to see, line by line, what its scanner sends at "
                       "this moment.\n\n\"Set flight date & time...\" and, on the Setup page, \"Fly this "
                       "pass\" replay another time."));
    return;
  }
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(event->rect(), flight_->Image(), event->rect());
}

}  // namespace pelorin::desktop
