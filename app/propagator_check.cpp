#include "app/propagator_check.h"

#include "orbit/date_time.h"
#include "orbit/julian_date.h"
#include "orbit/propagation.h"

namespace pelorin::app {
namespace {

constexpr char kCheckLine1[] = "1 21263U 91032A   99034.20978316  .00000272  00000-0  13981-3 0  1482";
constexpr char kCheckLine2[] = "2 21263  98.5313  39.9325 0013250   4.9627 355.1680 14.22950462401115";
constexpr int kCheckMinutes = 60;

}  // namespace

QStringList PropagatorCheckLines() {
  orbit::TSatellite satellite;
  satellite.ParseElements(kCheckLine1, kCheckLine2);
  QStringList lines;
  for (int minute = 0; minute <= kCheckMinutes; ++minute) {
    const orbit::TDateTime moment =
        orbit::MakeDateTime(1999, 2, 5, 18 + (34 + minute) / 60, (34 + minute) % 60);
    const auto [position, velocity] = SatelliteStateKm(satellite, JulianDateOfDateTime(moment));
    lines.append(QString::fromStdString(FormatDateTime("yyyy-mm-dd hh:nn:ss", moment)) +
                 QString::asprintf("  %11.3f %11.3f %11.3f  %10.6f %10.6f %10.6f", position.x, position.y,
                                   position.z, velocity.x, velocity.y, velocity.z));
  }
  return lines;
}

}  // namespace pelorin::app
