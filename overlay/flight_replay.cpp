#include "overlay/flight_replay.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orbit/julian_date.h"
#include "overlay/picture_fit.h"

namespace pelorin::overlay {
namespace {

/// A line's second within its minute, to the nearest.
double SecondOfMinute(double jd) { return std::fmod(std::round(jd * orbit::kSecondsPerDay), 60); }

}  // namespace

void FlightReplay::Start(const swath::Recording& recording, const OverlaySources& sources, Marks marks,
                         orbit::TDateTime now, int height) {
  Stop();
  const swath::Recording map = MapOf(recording, 1);
  auto maker = std::make_unique<LineMaker>(map, sources, marks);
  const double startJd = orbit::JulianDateOfDateTime(now) - kSecondsAtOnce / orbit::kSecondsPerDay;
  const auto width = static_cast<std::size_t>(map.Columns);
  FlightImage picture(map.Columns, height, map.SouthBound);
  indices_.assign(width, 0);
  // Elements without a position are found before anything of the last flight is given up.
  std::vector<std::uint32_t> trial(width);
  maker->Make(startJd, MinuteMarker::None, false, trial, indices_);
  maker_ = std::move(maker);
  picture_ = std::move(picture);
  rowsPerSecond_ = map.SeenBy.RowsPerSecond;
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
  const double linesPerDay = rowsPerSecond_ * orbit::kSecondsPerDay;
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
