#include "overlay/flight_replay.h"

#include <algorithm>
#include <cmath>

#include "orbit/julian_date.h"
#include "overlay/scan_line_layout.h"

namespace pelorin::overlay {
namespace {

constexpr double kMinutesInDay = 1440, kSecondsInDay = 86400;

/// A line's second within its minute, to the nearest.
double SecondOfMinute(double jd) { return std::fmod(std::round(jd * kSecondsInDay), 60); }

}  // namespace

void FlightReplay::Start(const orbit::TSatellite& satellite, const OverlaySources& sources, Marks marks,
                         bool southBound, orbit::TDateTime now, int height) {
  Stop();
  maker_.emplace(satellite, sources, marks);
  linesPerMinute_ = satellite.LinesPerMinute;
  startJd_ = orbit::JulianDateOfDateTime(now) - kSecondsAtOnce / kSecondsInDay;
  picture_.emplace(kUsualLineWidth, height, southBound);
  indices_.assign(kUsualLineWidth, 0);
  // Elements without a position are found before anything moves; the first line overwrites this one.
  std::vector<std::uint32_t> trial(kUsualLineWidth);
  maker_->Make(startJd_, MinuteMarker::None, false, trial, indices_);
  next_ = 0;
  lines_ = 0;
  isRunning_ = true;
}

void FlightReplay::Stop() { isRunning_ = isStopRequested_ = false; }

int FlightReplay::Tick(orbit::TDateTime now, bool held) {
  if (isStopRequested_) Stop();
  if (!picture_ || held) return 0;
  const double linesPerDay = linesPerMinute_ * kMinutesInDay;
  // A hundredth of a line is far below what a Julian date resolves; without it a line due just now may wait.
  const auto due =
      static_cast<long long>(std::floor((orbit::JulianDateOfDateTime(now) - startJd_) * linesPerDay + 0.01));
  next_ = std::max(next_, due + 1 - picture_->Image().height());
  int drawn = 0;
  for (; next_ <= due; ++next_, ++drawn) {
    const double jd = startJd_ + static_cast<double>(next_) / linesPerDay;
    maker_->Make(jd, MarkerAt(SecondOfMinute(jd)), !picture_->SouthBound(), picture_->NextRow(), indices_);
  }
  lines_ += drawn;
  return drawn;
}

void FlightReplay::Turn() {
  if (picture_) picture_->Turn();
}

QString FlightStatus(int lines, orbit::TDateTime moment) {
  const int hundredths = orbit::TakeApart(moment).Millisecond / 10;
  return QString::asprintf(" Line: %.4d", lines) +
         QString::fromStdString(orbit::FormatDateTime(" yyyy mmm dd  hh:nn:ss.", moment)) +
         QString::asprintf("%.2d", hundredths);
}

}  // namespace pelorin::overlay
