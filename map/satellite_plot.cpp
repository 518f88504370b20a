#include "map/satellite_plot.h"

#include <algorithm>
#include <cstdlib>

#include "map/footprint.h"
#include "orbit/observer.h"
#include "orbit/scalar_math.h"
#include "orbit/vector.h"

namespace pelorin::map {
namespace {

/// Distance of a label from the mark's middle, and of a label from the edge that makes it change sides.
constexpr int kLabelGap = 5;
/// Far enough for the whole Earth to be half lit: the day's edge is the footprint of a point this high.
constexpr double kSunAltitudeKm = 1e7;

QPoint PlacePoint(const MapFrame& frame, const PlaceBelow& place) {
  return MapPoint(frame, place.LatitudeDeg, place.LongitudeDeg);
}

PlacedText LabelBeside(const QString& text, QPoint mark, const MapFrame& frame, const MeasureText& measure) {
  const QSize size = measure(text);
  QPoint topLeft(mark.x() + kLabelGap, mark.y());
  if (mark.x() + size.width() + kLabelGap > frame.Width) topLeft.setX(mark.x() - size.width() - kLabelGap);
  if (mark.y() + size.height() + kLabelGap > frame.Height) topLeft.setY(mark.y() - size.height() - kLabelGap);
  return {text, topLeft};
}

QPoint PointBelow(const MapFrame& frame, const orbit::Vector& position, double jd) {
  double latitude = 0, longitude = 0;
  orbit::SatGeocentricLatLon(position, jd, latitude, longitude);
  return MapPoint(frame, orbit::Degrees(latitude), orbit::Degrees(longitude));
}

/// The line across the track that a scanner sweeps, twice the satellite's height to each side.
std::vector<Stroke> ScanLineOf(const TrackedSatellite& tracked, const MapFrame& frame, double jd) {
  const orbit::Vector& position = tracked.State.Position;
  orbit::Vector normal = orbit::Cross(position, tracked.State.Velocity);
  orbit::Magnitude(normal);
  std::vector<Stroke> strokes;
  if (!(normal.w > 0)) return strokes;  // a fall straight down has no plane
  const QPoint start = PointBelow(frame, position, jd);
  for (const int side : {1, -1}) {
    Stroke stroke{start};
    for (const int heights : {1, 2}) {
      const double distance = side * heights * tracked.Now.AltitudeKm;
      const QPoint point = PointBelow(frame, orbit::PointAlong(position, normal, distance), jd);
      if (std::abs(point.x() - start.x()) < frame.Width / 2) stroke.push_back(point);
    }
    if (stroke.size() > 1) strokes.push_back(std::move(stroke));
  }
  return strokes;
}

qint64 SquaredLength(QPoint offset) {
  return qint64{offset.x()} * offset.x() + qint64{offset.y()} * offset.y();
}

}  // namespace

SatellitePlot PlotSatellites(const Sky& sky, const MapFrame& frame, const orbit::TSatellite* selected,
                             int footprintLevel, const MeasureText& measure) {
  SatellitePlot plot;
  if (frame.IsEmpty()) return plot;
  const auto trailLength = static_cast<std::size_t>(TrailMinutes(footprintLevel));
  plot.Satellites.reserve(sky.Satellites.size());
  for (const TrackedSatellite& tracked : sky.Satellites) {
    SatelliteDrawing& drawing = plot.Satellites.emplace_back();
    const bool isSelected = tracked.Satellite == selected;
    drawing.Satellite = tracked.Satellite;
    drawing.Colour = isSelected ? kSelectedColour : kOtherColour;
    const std::size_t points = std::min(trailLength, tracked.Trail.size());
    drawing.Trail.reserve(points);
    for (std::size_t i = tracked.Trail.size() - points; i < tracked.Trail.size(); ++i) {
      drawing.Trail.push_back(PlacePoint(frame, tracked.Trail[i]));
    }
    drawing.Mark = PlacePoint(frame, tracked.Now);
    drawing.Label =
        LabelBeside(QString::fromStdString(tracked.Satellite->Name), drawing.Mark, frame, measure);
    if (isSelected) {
      drawing.FootprintColour = kSelectedColour;
      drawing.ScanLine = ScanLineOf(tracked, frame, sky.Jd);
    }
    if (footprintLevel == kFootprintAll || (isSelected && footprintLevel > kFootprintNone)) {
      drawing.Footprint =
          Footprint(frame, tracked.Now.LatitudeDeg, tracked.Now.LongitudeDeg, tracked.Now.AltitudeKm);
    }
  }
  plot.Sun = PlacePoint(frame, sky.Sun);
  plot.Terminator = Footprint(frame, sky.Sun.LatitudeDeg, sky.Sun.LongitudeDeg, kSunAltitudeKm);
  return plot;
}

const orbit::TSatellite* SatelliteAt(const SatellitePlot& plot, const MapFrame& frame, QPoint click) {
  const qint64 diagonal = SquaredLength({frame.Width, frame.Height});
  const orbit::TSatellite* found = nullptr;
  qint64 best = diagonal / 100;
  for (const SatelliteDrawing& drawing : plot.Satellites) {
    const qint64 distance = SquaredLength(click - drawing.Mark);
    if (distance < best) {
      best = distance;
      found = drawing.Satellite;
    }
  }
  return found;
}

}  // namespace pelorin::map
