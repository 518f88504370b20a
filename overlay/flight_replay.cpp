#include "overlay/flight_replay.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orbit/julian_date.h"
#include "overlay/scan_line_layout.h"

namespace pelorin::overlay {
namespace {

/// A line's second within its minute, to the nearest.
double SecondOfMinute(double jd) { return std::fmod(std::round(jd * orbit::kSecondsPerDay), 60); }

}  // namespace

void FlightReplay::Start(const orbit::TSatellite& satellite, const OverlaySources& sources, Marks marks,
                         bool southBound, orbit::TDateTime now, int height) {
  Stop();
  auto maker = std::make_unique<LineMaker>(satellite, sources, marks);
  const double startJd = orbit::JulianDateOfDateTime(now) - kSecondsAtOnce / orbit::kSecondsPerDay;
  FlightImage picture(kUsualLineWidth, height, southBound);
  indices_.assign(kUsualLineWidth, 0);
  // Elements without a position are found before anything of the last flight is given up.
  std::vector<std::uint32_t> trial(kUsualLineWidth);
  maker->Make(startJd, MinuteMarker::None, false, trial, indices_);
  maker_ = std::move(maker);
  picture_ = std::move(picture);
  linesPerMinute_ = satellite.LinesPerMinute;
  startJd_ = startJd;
  next_ = 0;
  lines_ = 0;
  isRunning_ = true;
}

void FlightReplay::Stop() { isRunning_ = isStopRequested_ = false; }

int FlightReplay::Tick(orbit::TDateTime now, bool held) {
  // The tick that ends the flight still draws.
  const bool wasRunning = isRunning_;
  if (isStopRequested_) Stop();
  if (!wasRunning || held) return 0;
  const double linesPerDay = linesPerMinute_ * orbit::kMinutesPerDay;
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

void FlightReplay::SetMarks(Marks marks) {
  if (maker_) maker_->SetMarks(marks);
}

QString FlightStatus(int lines, orbit::TDateTime moment) {
  const int hundredths = orbit::TakeApart(moment).Millisecond / 10;
  return QString::asprintf(" Line: %.4d", lines) +
         QString::fromStdString(orbit::FormatDateTime(" yyyy mmm dd  hh:nn:ss.", moment)) +
         QString::asprintf("%.2d", hundredths);
}

}  // namespace pelorin::overlay
