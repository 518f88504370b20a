#include "overlay/overlay_generator.h"

#include <algorithm>
#include <cmath>

#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "overlay/idle_priority.h"
#include "overlay/overlay_text.h"
#include "overlay/palette.h"
#include "overlay/picture_fit.h"

namespace pelorin::overlay {
namespace {

/// Julian date of the middle of the pass that is up at `visibleJd`, between its rise and its set to ten
/// seconds; a map may show a part of the pass only.
double MiddleOfPass(const orbit::TSatellite& satellite, const orbit::ElevationFrame& frame,
                    double visibleJd) {
  constexpr double step = 10 / orbit::kSecondsPerDay;
  constexpr int mostSteps = 360;
  const auto elevationAt = [&](double jd) {
    return frame.Elevation(orbit::SatelliteStateKm(satellite, jd).Position, jd);
  };
  int rise = 0, set = 0;
  while (rise > -mostSteps && elevationAt(visibleJd + (rise - 1) * step) >= 0) --rise;
  while (set < mostSteps && elevationAt(visibleJd + (set + 1) * step) >= 0) ++set;
  return visibleJd + (rise + set) * step / 2;
}

int LinesToMake(const OverlayRequest& request, const swath::Recording& map) {
  return request.DurationMinutes > 0 ? std::min(map.Rows, map.LinesOf(request.DurationMinutes)) : map.Rows;
}

QString PassDataLine(orbit::TDateTime time, const orbit::Geodetic& below) {
  return QStringLiteral("%1 %2 %3")
      .arg(QString::fromStdString(orbit::FormatDateTime("yyyy-mm-ddThh:nn:ss.zzz", time)))
      .arg(orbit::Degrees(below.Latitude), 0, 'f', 1)
      .arg(orbit::Degrees(below.Longitude), 0, 'f', 1);
}

}  // namespace

double MinutesToMake(const OverlayRequest& request) {
  const swath::Recording map = MapOf(request.Picture, request.DurationMinutes);
  int line = LinesToMake(request, map) - 1;
  while (line > 0 && std::isnan(map.SecondsOfLine(line))) --line;
  return (std::fmax(map.SecondsOfLine(line), 0) + 1 / map.SeenBy.RowsPerSecond) / orbit::kSecondsPerMinute;
}

bool IsSouthBoundAt(const orbit::TSatellite& satellite, orbit::TDateTime moment) {
  return orbit::SatelliteStateKm(satellite, orbit::JulianDateOfDateTime(moment)).Velocity.z < 0;
}

OverlayResult GenerateOverlay(const OverlayRequest& request, const OverlaySources& sources,
                              const AfterLine& afterLine) {
  const IdlePriority standBack;
  const swath::Recording map = MapOf(request.Picture, request.DurationMinutes);
  const orbit::TSatellite& satellite = *map.Elements;
  const int lines = LinesToMake(request, map);
  const orbit::TDateTime start = map.FirstLine();
  const orbit::DateTimeFields startFields = orbit::TakeApart(start);
  const double secondsOfStart = startFields.Second + startFields.Millisecond / 1000.0;

  OverlayResult result;
  result.Recording = map;
  result.Map = QImage(map.Columns, map.Rows, QImage::Format_RGB32);
  if (result.Map.isNull()) {
    throw OverlayError("There is not enough memory for a map of " + std::to_string(map.Rows) + " lines");
  }
  result.Map.fill(Qt::black);
  // Without a master there is nothing to tell in indices: a single row takes every line.
  const int indexRows = sources.Master ? map.Rows : 1;
  const auto length = static_cast<std::size_t>(map.Columns);
  result.Index = {map.Columns, indexRows,
                  std::vector<std::uint8_t>(length * static_cast<std::size_t>(indexRows))};
  result.IndexColours = sources.Master ? sources.Master->Colours() : OverlayPalette();

  LineMaker maker(map, sources, request.Overlay);
  const orbit::ElevationFrame station(request.Station);
  bool risen = false;
  double secondsBefore = secondsOfStart + 1e-3 - 1 / map.SeenBy.RowsPerSecond;
  for (int line = 0; line < lines; ++line) {
    const double sinceStart = map.SecondsOfLine(line);
    if (std::isnan(sinceStart)) continue;
    const orbit::TDateTime moment{start.Days + sinceStart / orbit::kSecondsPerDay};
    const double jd = orbit::JulianDateOfMoment(moment);
    // A thousandth of a second is less than what a moment resolves over days.
    const double seconds = secondsOfStart + sinceStart + 1e-3;
    const int row = map.RowOfLine(line);
    const swath::GroundTrack& track =
        maker.Make(jd, MarkerAt(std::fmod(seconds, orbit::kSecondsPerMinute)), map.RunsLeft(),
                   {reinterpret_cast<std::uint32_t*>(result.Map.scanLine(row)), length},
                   {result.Index.Row(indexRows > 1 ? row : 0), length});
    if (request.PassDetails) result.PassData.append(PassDataLine(moment, track.Below));
    if (!risen && station.Elevation(track.Inertial.Position, jd) >= 0) {
      risen = true;
      const double middleJd = MiddleOfPass(satellite, station, jd);
      result.MiddleOfPass = orbit::DateTimeOfJulianDate(middleJd);
      result.ElevationDeg =
          orbit::Degrees(station.Elevation(orbit::SatelliteStateKm(satellite, middleJd).Position, middleJd));
    }
    result.LinesMade = line + 1;
    const auto isFirstOf = [&](double time) {
      return std::floor(seconds / time) != std::floor(secondsBefore / time);
    };
    const bool repaint = isFirstOf(10), newMinute = isFirstOf(orbit::kSecondsPerMinute);
    secondsBefore = seconds;
    if (afterLine && !afterLine({line, repaint, newMinute, result})) break;
  }
  if (request.PassDetails) {
    const double minutes = request.DurationMinutes > 0 ? request.DurationMinutes : MinutesToMake(request);
    const PassText text{QString::fromStdString(satellite.Name),
                        start,
                        {start.Days + minutes / orbit::kMinutesPerDay},
                        map.SouthBound,
                        result.ElevationDeg};
    for (const std::uint8_t items : request.TextItems) result.TextLines.append(TextLine(items, text));
  }
  return result;
}

}  // namespace pelorin::overlay
