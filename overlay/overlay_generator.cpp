#include "overlay/overlay_generator.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

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

constexpr int kMostThreads = 8;

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

/// A map in the making: its lines may be drawn in any order, and noted in that of reception.
class Generation {
 public:
  Generation(const OverlayRequest& request, const OverlaySources& sources)
      : request_(request), sources_(sources), map_(MapOf(request.Picture, request.DurationMinutes)) {
    const orbit::DateTimeFields start = orbit::TakeApart(map_.FirstLine());
    // A thousandth of a second is less than what a moment resolves over days.
    secondsOfStart_ = start.Second + start.Millisecond / 1000.0 + 1e-3;
    result_.Recording = map_;
    result_.Map = QImage(map_.Columns, map_.Rows, QImage::Format_RGB32);
    if (result_.Map.isNull()) {
      throw OverlayError("There is not enough memory for a map of " + std::to_string(map_.Rows) + " lines");
    }
    result_.Map.fill(Qt::black);
    pixels_ = reinterpret_cast<std::uint32_t*>(result_.Map.bits());
    // Without a master there is nothing to tell in indices: a single row takes every line.
    const int indexRows = sources.Master ? map_.Rows : 1;
    result_.Index = {map_.Columns, indexRows,
                     std::vector<std::uint8_t>(Length() * static_cast<std::size_t>(indexRows))};
    result_.IndexColours = sources.Master ? sources.Master->Colours() : OverlayPalette();
  }

  const swath::Recording& Map() const { return map_; }
  int Lines() const { return LinesToMake(request_, map_); }
  bool IsLost(int line) const { return std::isnan(map_.SecondsOfLine(line)); }
  orbit::TDateTime MomentOf(int line) const {
    return {map_.FirstLine().Days + map_.SecondsOfLine(line) / orbit::kSecondsPerDay};
  }
  double JulianDateOf(int line) const { return orbit::JulianDateOfMoment(MomentOf(line)); }
  /// Counted from the full minute in which the map begins.
  double SecondsOf(int line) const { return secondsOfStart_ + map_.SecondsOfLine(line); }

  /// Two lines may be drawn at once. Where there is a single row of indices it gets those of the last line;
  /// others go to `noIndices`.
  const swath::GroundTrack& Draw(LineMaker& maker, int line, std::vector<std::uint8_t>& noIndices) {
    const auto row = static_cast<std::size_t>(map_.RowOfLine(line));
    noIndices.resize(Length());
    const bool isKept = sources_.Master != nullptr || line == Lines() - 1;
    std::uint8_t* indices =
        isKept ? result_.Index.Row(sources_.Master ? static_cast<int>(row) : 0) : noIndices.data();
    return maker.Make(JulianDateOf(line), MarkerAt(std::fmod(SecondsOf(line), orbit::kSecondsPerMinute)),
                      map_.RunsLeft(), {pixels_ + row * Length(), Length()}, {indices, Length()});
  }

  void Note(int line, const swath::GroundTrack& track, const orbit::ElevationFrame& station) {
    result_.LinesMade = line + 1;
    if (request_.PassDetails) result_.PassData.append(PassDataLine(MomentOf(line), track.Below));
    const double jd = JulianDateOf(line);
    if (hasRisen_ || station.Elevation(track.Inertial.Position, jd) < 0) return;
    hasRisen_ = true;
    const orbit::TSatellite& satellite = *map_.Elements;
    const double middleJd = MiddleOfPass(satellite, station, jd);
    result_.MiddleOfPass = orbit::DateTimeOfJulianDate(middleJd);
    result_.ElevationDeg =
        orbit::Degrees(station.Elevation(orbit::SatelliteStateKm(satellite, middleJd).Position, middleJd));
  }
  const OverlayResult& SoFar() const { return result_; }

  OverlayResult Finish() {
    if (request_.PassDetails) {
      const double minutes =
          request_.DurationMinutes > 0 ? request_.DurationMinutes : MinutesToMake(request_);
      const orbit::TDateTime start = map_.FirstLine();
      const PassText text{QString::fromStdString(map_.Elements->Name),
                          start,
                          {start.Days + minutes / orbit::kMinutesPerDay},
                          map_.SouthBound,
                          result_.ElevationDeg};
      for (const std::uint8_t items : request_.TextItems) result_.TextLines.append(TextLine(items, text));
    }
    return std::move(result_);
  }

 private:
  std::size_t Length() const { return static_cast<std::size_t>(map_.Columns); }

  const OverlayRequest& request_;
  const OverlaySources& sources_;
  const swath::Recording map_;
  OverlayResult result_;
  std::uint32_t* pixels_;  ///< of the map; its rows have no padding
  double secondsOfStart_;
  bool hasRisen_ = false;
};

/// Draws all lines, on several threads: nobody watches, and somebody waits.
void DrawAll(Generation& generation, const OverlaySources& sources, Marks marks) {
  const int lines = generation.Lines();
  const int threads = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostThreads);
  std::vector<std::future<void>> parts;
  for (int part = 0; part < threads; ++part) {
    const int first = lines * part / threads, end = lines * (part + 1) / threads;
    parts.push_back(std::async(std::launch::async, [&generation, &sources, marks, first, end] {
      // A set belongs to one thread at a time.
      swath::Recording own = generation.Map();
      own.Elements = std::make_shared<const orbit::TSatellite>(*own.Elements);
      LineMaker maker(own, sources, marks);
      std::vector<std::uint8_t> indices;
      for (int line = first; line < end; ++line) {
        if (!generation.IsLost(line)) generation.Draw(maker, line, indices);
      }
    }));
  }
  for (std::future<void>& part : parts) part.wait();
  for (std::future<void>& part : parts) part.get();
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
  Generation generation(request, sources);
  const swath::Recording& map = generation.Map();
  const orbit::ElevationFrame station(request.Station);
  if (!afterLine) {
    DrawAll(generation, sources, request.Overlay);
    for (int line = 0; line < generation.Lines(); ++line) {
      if (generation.IsLost(line)) continue;
      generation.Note(line, swath::TrackAt(*map.Elements, generation.JulianDateOf(line)), station);
    }
    return generation.Finish();
  }
  LineMaker maker(map, sources, request.Overlay);
  std::vector<std::uint8_t> indices;
  double before = generation.SecondsOf(0) - 1 / map.SeenBy.RowsPerSecond;
  for (int line = 0; line < generation.Lines(); ++line) {
    if (generation.IsLost(line)) continue;
    generation.Note(line, generation.Draw(maker, line, indices), station);
    const double seconds = generation.SecondsOf(line);
    const auto isFirstOf = [&](double time) {
      return std::floor(seconds / time) != std::floor(before / time);
    };
    const LineProgress progress{line, isFirstOf(10), isFirstOf(orbit::kSecondsPerMinute), generation.SoFar()};
    before = seconds;
    if (!afterLine(progress)) break;
  }
  return generation.Finish();
}

}  // namespace pelorin::overlay
