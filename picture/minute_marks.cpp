#include "picture/minute_marks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace pelorin::picture {
namespace {

constexpr int kMarkRows = 4;
/// Rows on each side over which the band's own tone is taken: far more than a mark, far less than a minute.
constexpr int kToneReach = 15;
/// The same for its noise, which swells where the satellite is low.
constexpr int kNoiseReach = 40;
/// A mark stands out from the noise of four rows by so many times its standard deviation.
constexpr double kClearance = 5;
/// The least step of a mark, in tones of 255 summed over its rows: a fifth of that from black to white, for
/// pictures whose contrast was lowered.
constexpr double kLeastStep = 100;
/// By how much of its step the rows of a mark may stray from their tones together, and the four rows around
/// it from the band's. Coasts and clouds stray more, where the columns are not those of a space band.
constexpr double kMostStray = 0.5;
/// A lost line moves all later marks.
constexpr int kRowsOffInMinute = 1;
/// In a dark or a white band the two halves of a mark look alike in either order; a grey one shows it
/// clearly.
constexpr double kClearlyMore = 1.5;

constexpr double kMinute = 60;

using Tones = std::vector<double>;

Tones RowMeans(const QImage& picture, int begin, int end) {
  Tones means;
  for (int y = 0; y < picture.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    double sum = 0;
    for (int x = begin; x < end; ++x) sum += qGray(row[x]);
    means.push_back(sum / (end - begin));
  }
  return means;
}

double Median(Tones values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// The median of the values up to `reach` away from each.
Tones LocalMedians(const Tones& values, std::ptrdiff_t reach) {
  const auto size = static_cast<std::ptrdiff_t>(values.size());
  Tones medians;
  for (std::ptrdiff_t i = 0; i < size; ++i) {
    medians.push_back(Median(Tones(values.begin() + std::max(i - reach, std::ptrdiff_t{0}),
                                   values.begin() + std::min(i + reach + 1, size))));
  }
  return medians;
}

/// How much the four rows from each on look like a mark, black first.
struct Response {
  Tones Steps;  ///< from the first two to the last two, in tones summed over them
  Tones Noise;  ///< standard deviation of the step
  Tones
      Stray;  ///< of the rows of equal tone from each other, or if it is more of those around from the band's
};

Response Respond(const Tones& means) {
  const Tones base = LocalMedians(means, kToneReach);
  Tones off, distance;
  for (std::size_t i = 0; i < means.size(); ++i) {
    off.push_back(means[i] - base[i]);
    distance.push_back(std::abs(off[i]));
  }
  // 1.4826 median distances are a standard deviation; the sum of four rows has twice that of one.
  Tones noise = LocalMedians(distance, kNoiseReach);
  for (double& value : noise) value *= 2 * 1.4826;
  const auto distanceOf = [&distance](std::size_t row) { return row < distance.size() ? distance[row] : 0; };
  Response response;
  for (std::size_t i = 0; i + kMarkRows <= off.size(); ++i) {
    response.Steps.push_back(off[i + 2] + off[i + 3] - off[i] - off[i + 1]);
    const double within = std::abs(off[i] - off[i + 1]) + std::abs(off[i + 2] - off[i + 3]);
    // Before row 0 the numbers run over to the largest, and there is no row.
    const double around = distanceOf(i - 2) + distanceOf(i - 1) + distanceOf(i + 4) + distanceOf(i + 5);
    response.Stray.push_back(std::max(within, around));
    response.Noise.push_back(noise[i + kMarkRows / 2]);
  }
  return response;
}

struct Mark {
  int Row;
  double Step;
};

/// Rows whose step of this sign is the highest around and stands out.
std::vector<Mark> Candidates(const Response& response, double sign) {
  const auto size = static_cast<int>(response.Steps.size());
  const auto step = [&](int row) { return sign * response.Steps[static_cast<std::size_t>(row)]; };
  std::vector<Mark> marks;
  for (int row = 0; row < size; ++row) {
    const auto at = static_cast<std::size_t>(row);
    if (step(row) < std::max(kClearance * response.Noise[at], kLeastStep)) continue;
    if (response.Stray[at] > kMostStray * step(row)) continue;
    bool isHighest = true;
    for (int other = std::max(row - kMarkRows, 0); other <= std::min(row + kMarkRows, size - 1); ++other) {
      isHighest = isHighest && (other < row ? step(other) < step(row) : step(other) <= step(row));
    }
    if (isHighest) marks.push_back({row, step(row)});
  }
  return marks;
}

bool IsMinutesApart(int row, int other) {
  const int apart = std::abs(row - other);
  const int minutes = (apart + kMarkedLinesPerMinute / 2) / kMarkedLinesPerMinute;
  return std::abs(apart - minutes * kMarkedLinesPerMinute) <= minutes * kRowsOffInMinute;
}

double TotalStep(const std::vector<Mark>& marks) {
  double total = 0;
  for (const Mark& mark : marks) total += mark.Step;
  return total;
}

/// The marks that keep the minute with one of them, for the one that gives the largest total; none when it is
/// alone.
std::vector<Mark> KeepingTheMinute(const std::vector<Mark>& marks) {
  std::vector<Mark> best;
  for (const Mark& one : marks) {
    std::vector<Mark> group;
    std::copy_if(marks.begin(), marks.end(), std::back_inserter(group),
                 [&one](const Mark& mark) { return IsMinutesApart(mark.Row, one.Row); });
    if (group.size() > 1 && TotalStep(group) > TotalStep(best)) best = group;
  }
  return best;
}

}  // namespace

std::vector<int> FindMinuteMarks(const QImage& picture, int firstColumn, int columns) {
  const int begin = std::clamp(firstColumn, 0, picture.width());
  const int end = std::clamp(firstColumn + columns, begin, picture.width());
  if (begin == end) return {};
  const Response response = Respond(RowMeans(picture, begin, end));
  std::vector<Mark> marks = KeepingTheMinute(Candidates(response, 1));
  const std::vector<Mark> whiteFirst = KeepingTheMinute(Candidates(response, -1));
  if (TotalStep(whiteFirst) > kClearlyMore * TotalStep(marks)) marks = whiteFirst;
  std::vector<int> rows;
  for (const Mark& mark : marks) rows.push_back(mark.Row);
  return rows;
}

std::optional<double> ClockOffsetFromMarks(const std::vector<int>& rows, double linesPerSecond,
                                           double secondOfStart, double secondOfMarks) {
  if (rows.size() < 2) return std::nullopt;
  Tones offsets;
  const double first = secondOfStart + rows.front() / linesPerSecond;
  for (const int row : rows) {
    offsets.push_back(std::remainder(first - secondOfStart - row / linesPerSecond, kMinute));
  }
  const double offset = std::remainder(secondOfMarks - first + Median(offsets), kMinute);
  return offset > -kMinute / 2 ? offset : kMinute / 2;
}

}  // namespace pelorin::picture
