#include "swath/recording.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "orbit/model_constants.h"

namespace pelorin::swath {
namespace {

/// Neighbouring lines are seen at most so many line times apart; what is longer is a gap between them.
constexpr double kGapLines = 1.5;

}  // namespace

double Recording::SecondsOfLine(int line) const {
  if (!LineTimesS) return line / SeenBy.RowsPerSecond * SecondLength();
  return line >= 0 && line < static_cast<int>(LineTimesS->size())
             ? (*LineTimesS)[static_cast<std::size_t>(line)] * SecondLength()
             : std::nan("");
}

std::optional<double> Recording::LineAtSecond(double seconds) const {
  seconds /= SecondLength();
  if (!LineTimesS) return seconds * SeenBy.RowsPerSecond;
  // Lost lines have no place in the order: the next one that was seen stands for them.
  const std::vector<double>& times = *LineTimesS;
  const auto seenFrom = [&](std::size_t line) {
    while (line < times.size() && std::isnan(times[line])) ++line;
    return line;
  };
  std::size_t low = seenFrom(0), high = times.size();
  if (low == high) return std::nullopt;
  const std::size_t first = low;
  while (high - low > 1) {
    const std::size_t middle = low + (high - low) / 2, seen = seenFrom(middle);
    if (seen < high && times[seen] <= seconds) {
      low = seen;
    } else {
      high = middle;
    }
  }
  // `low` is the last line seen by then, or the first of all.
  const double sinceLow = (seconds - times[low]) * SeenBy.RowsPerSecond;
  const std::size_t next = seenFrom(low + 1);
  const auto line = static_cast<double>(low);
  if (sinceLow < 0) return low == first ? std::optional(line + sinceLow) : std::nullopt;
  if (next == times.size()) return line + sinceLow;
  const double apart = (times[next] - times[low]) * SeenBy.RowsPerSecond;
  const auto linesApart = static_cast<double>(next - low);
  if (apart <= linesApart * kGapLines) return line + sinceLow / apart * linesApart;
  const double beforeNext = apart - sinceLow;
  if (sinceLow <= 0.5) return line + sinceLow;
  if (beforeNext <= 0.5) return static_cast<double>(next) - beforeNext;
  return std::nullopt;
}

double Recording::SecondsAt(double line) const {
  if (!LineTimesS) return line / SeenBy.RowsPerSecond * SecondLength();
  const std::vector<double>& times = *LineTimesS;
  const int last = static_cast<int>(times.size()) - 1;
  const int nearest = static_cast<int>(std::lround(std::clamp(line, 0.0, std::fmax(last, 0))));
  const double beyond = line - nearest, atNearest = SecondsOfLine(nearest);
  if (!(std::fabs(beyond) <= 0.5)) return std::nan("");
  const int step = beyond < 0 ? -1 : 1;
  int other = nearest + step;
  while (other >= 0 && other <= last && std::isnan(SecondsOfLine(other))) other += step;
  // Between two lines their moments are shared out; a gap leaves the scanner's rate.
  const double usualS = SecondLength() / SeenBy.RowsPerSecond;
  const double lineS = (SecondsOfLine(other) - atNearest) / (other - nearest);
  const bool isGap = !(lineS <= kGapLines * usualS);
  return atNearest + beyond * (isGap ? usualS : lineS);
}

int Recording::LinesOf(double minutes) const {
  if (LineTimesS) {
    int lines = 0;
    for (int line = 0; line < static_cast<int>(LineTimesS->size()); ++line) {
      if (SecondsOfLine(line) < minutes * orbit::kSecondsPerMinute) lines = line + 1;
    }
    return lines;
  }
  // A hundredth of a line is less than any clock knows.
  const double seconds = minutes * orbit::kSecondsPerMinute / SecondLength();
  return static_cast<int>(std::floor(seconds * SeenBy.RowsPerSecond + 0.01));
}

double Recording::LengthS() const {
  if (!LineTimesS && !(SeenBy.RowsPerSecond > 0)) return 0;
  for (int line = Rows - 1; line > 0; --line) {
    if (const double seconds = SecondsOfLine(line); seconds > 0) return seconds;
  }
  return 0;
}

bool BeginTogether(const Recording& one, const Recording& other) {
  constexpr double closeS = 0.5;
  return std::abs(one.Start.Days - other.Start.Days) * orbit::kSecondsPerDay < closeS;
}

bool IsSameRecording(const Recording& one, const Recording& other) {
  return one.Satellite == other.Satellite && BeginTogether(one, other);
}

bool LiesAlike(const Recording& one, const Recording& other) {
  const auto all = [](const Recording& recording) {
    return std::tie(recording.Rows, recording.Columns, recording.Lies, recording.SouthBound,
                    recording.OffsetS, recording.Offsets, recording.ShiftColumns, recording.DriftPpm);
  };
  return IsSameRecording(one, other) && all(one) == all(other);
}

}  // namespace pelorin::swath
