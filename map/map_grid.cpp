#include "map/map_grid.h"

#include <cstdlib>

namespace pelorin::map {
namespace {

constexpr int kGridStepDeg = 30;
constexpr double kTropicDeg = 23.467;

/// "60°W"; `letters` are for degrees below and above 0.
QString DegreesText(int degrees, const char16_t (&letters)[3]) {
  return QString::number(std::abs(degrees)) + u'°' + letters[degrees < 0 ? 0 : 1];
}

void AddMeridians(MapGrid& grid, const MapFrame& frame, const MeasureText& measure) {
  for (int longitude = -150; longitude <= 150; longitude += kGridStepDeg) {
    QString text = DegreesText(longitude, u"WE");
    int x = MapX(frame, longitude);
    if (longitude == 0) {
      // Greenwich is an edge of the Pacific's map, and 180° its middle.
      const int middle = frame.PacificCentred ? 180 : 0;
      text = QString::number(middle) + u'°';
      x = MapX(frame, middle);
    }
    const QSize size = measure(text);
    grid.Lines.push_back({{x, frame.Height - size.height() - 2}, {x, MapY(frame, 90)}});
    grid.Labels.push_back({text, {x - size.width() / 2, frame.Height - 1 - size.height()}});
  }
}

}  // namespace

MapGrid GridOf(const MapFrame& frame, const MeasureText& measure) {
  MapGrid grid;
  if (frame.IsEmpty()) return grid;
  AddMeridians(grid, frame, measure);
  const int left = MapX(frame, frame.PacificCentred ? 1 : -180);
  const int right = MapX(frame, frame.PacificCentred ? 359 : 180);
  for (int latitude = -60; latitude <= 60; latitude += kGridStepDeg) {
    const QString text = latitude == 0 ? QStringLiteral("0") : DegreesText(latitude, u"SN");
    const int y = MapY(frame, latitude);
    grid.Lines.push_back({{left, y}, {right, y}});
    grid.Labels.push_back({text, {1, y - measure(text).height() / 2}});
  }
  for (const double latitude : {-kTropicDeg, kTropicDeg}) {
    const int y = MapY(frame, latitude);
    grid.Tropics.push_back({{left, y}, {right, y}});
  }
  return grid;
}

}  // namespace pelorin::map
