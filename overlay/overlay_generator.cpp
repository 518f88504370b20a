#include "overlay/overlay_generator.h"

#include <algorithm>
#include <cmath>

#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
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

QString PassDataLine(orbit::TDateTime time, const orbit::Geodetic& below) {
  return QStringLiteral("%1 %2 %3")
      .arg(QString::fromStdString(orbit::FormatDateTime("yyyy-mm-ddThh:nn:ss.zzz", time)))
      .arg(orbit::Degrees(below.Latitude), 0, 'f', 1)
      .arg(orbit::Degrees(below.Longitude), 0, 'f', 1);
}

}  // namespace

int LinesOfPass(int linesPerMinute, int minutes) { return linesPerMinute * minutes; }

bool IsSouthBoundAt(const orbit::TSatellite& satellite, orbit::TDateTime moment) {
  return orbit::SatelliteStateKm(satellite, orbit::JulianDateOfDateTime(moment)).Velocity.z < 0;
}

OverlayRequest RequestFor(const swath::Recording& recording) {
  OverlayRequest request;
  request.Start = recording.FirstLine();
  request.SouthBound = recording.SouthBound;
  request.LineLimit = recording.Rows;
  request.Width = MapWidthFor(recording.Columns);
  return request;
}

OverlayResult GenerateOverlay(OverlayRequest request, const OverlaySources& sources,
                              const AfterLine& afterLine) {
  const IdlePriority standBack;
  const orbit::TSatellite& satellite = request.Satellite;
  const double secondsPerLine = 60.0 / satellite.LinesPerMinute;
  const int passLines = LinesOfPass(satellite.LinesPerMinute, request.DurationMinutes);
  const int limit = request.LineLimit > 0 ? request.LineLimit : passLines;
  const int lines = std::min(limit, passLines);
  const int width = std::max(request.Width, kImageEnd);
  const double startJd = orbit::JulianDateOfDateTime(request.Start);
  const orbit::DateTimeFields startFields = orbit::TakeApart(request.Start);

  OverlayResult result;
  result.Map = QImage(width, limit, QImage::Format_RGB32);
  if (result.Map.isNull()) {
    throw OverlayError("There is not enough memory for a map of " + std::to_string(limit) + " lines");
  }
  result.Map.fill(Qt::black);
  // Without a master there is nothing to tell in indices: a single row takes every line.
  const int indexRows = sources.Master ? limit : 1;
  result.Index = {
      width, indexRows,
      std::vector<std::uint8_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(indexRows))};
  result.IndexColours = sources.Master ? sources.Master->Colours() : OverlayPalette();

  LineMaker maker(satellite, sources, request.Overlay);
  const orbit::ElevationFrame station(request.Station);
  bool risen = false;
  double seconds = startFields.Second + startFields.Millisecond / 1000.0;
  for (int line = 0; line < lines; ++line) {
    const double sinceStart = line * secondsPerLine / orbit::kSecondsPerDay;
    const double jd = startJd + sinceStart;
    const int row = swath::RowOfLine(line, limit, request.SouthBound);
    const int indexRow = indexRows > 1 ? row : 0;
    const auto length = static_cast<std::size_t>(width);
    const swath::GroundTrack& track =
        maker.Make(jd, MarkerAt(seconds), !request.SouthBound,
                   {reinterpret_cast<std::uint32_t*>(result.Map.scanLine(row)), length},
                   {result.Index.Row(indexRow), length});
    if (request.PassDetails) {
      result.PassData.append(PassDataLine({request.Start.Days + sinceStart}, track.Below));
    }
    if (!risen && station.Elevation(track.Inertial.Position, jd) >= 0) {
      risen = true;
      const double middleJd = MiddleOfPass(satellite, station, jd);
      result.MiddleOfPass = orbit::DateTimeOfJulianDate(middleJd);
      result.ElevationDeg =
          orbit::Degrees(station.Elevation(orbit::SatelliteStateKm(satellite, middleJd).Position, middleJd));
    }
    result.LinesMade = line + 1;
    const bool repaint = std::fmod(seconds, 10) < secondsPerLine;
    const bool newMinute = seconds < secondsPerLine;
    seconds = std::fmod(seconds + secondsPerLine, 60);
    if (afterLine && !afterLine({line, repaint, newMinute, result})) break;
  }
  if (request.PassDetails) {
    const PassText text{QString::fromStdString(satellite.Name),
                        request.Start,
                        {request.Start.Days + request.DurationMinutes / orbit::kMinutesPerDay},
                        request.SouthBound,
                        result.ElevationDeg};
    for (const std::uint8_t items : request.TextItems) result.TextLines.append(TextLine(items, text));
  }
  return result;
}

}  // namespace pelorin::overlay
