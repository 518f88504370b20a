#include "align/plane.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "align/vector_units.h"

namespace pelorin::align {
namespace {

PELORIN_ALIGN_VECTORS
void MedianRow(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, int columns,
               std::uint8_t* result) {
  for (int x = 1; x < columns - 1; ++x) {
    std::uint8_t p[9] = {above[x - 1], above[x],     above[x + 1], here[x - 1], here[x],
                         here[x + 1],  below[x - 1], below[x],     below[x + 1]};
    const auto sort = [&p](int i, int j) {
      const std::uint8_t low = p[i] < p[j] ? p[i] : p[j], high = p[i] < p[j] ? p[j] : p[i];
      p[i] = low;
      p[j] = high;
    };
    // Paeth, "Median finding on a 3-by-3 grid" (1990).
    sort(1, 2), sort(4, 5), sort(7, 8), sort(0, 1), sort(3, 4), sort(6, 7), sort(1, 2), sort(4, 5);
    sort(7, 8), sort(0, 3), sort(5, 8), sort(4, 7), sort(3, 6), sort(1, 4), sort(2, 5), sort(4, 7);
    sort(4, 2), sort(6, 4), sort(4, 2);
    result[x] = p[4];
  }
}

/// Sums over boxes that move down a plane row by row.
class BoxSums {
 public:
  explicit BoxSums(int columns) : columns_(static_cast<std::size_t>(columns)), before_(columns_.size() + 1) {}

  struct Sums {
    double Count = 0, Sum = 0, Squares = 0;

    Sums operator+(const Sums& other) const {
      return {Count + other.Count, Sum + other.Sum, Squares + other.Squares};
    }
    Sums operator-(const Sums& other) const {
      return {Count - other.Count, Sum - other.Sum, Squares - other.Squares};
    }
  };

  /// `sign` −1 takes a row away again.
  void AddRow(const float* values, const std::uint8_t* seen, int sign) {
    for (std::size_t x = 0; x < columns_.size(); ++x) {
      if (!seen[x]) continue;
      const double value = values[x];
      columns_[x] = columns_[x] + Sums{1.0 * sign, sign * value, sign * value * value};
    }
  }
  void Finish() {
    for (std::size_t x = 0; x < columns_.size(); ++x) before_[x + 1] = before_[x] + columns_[x];
  }
  /// Of columns left … right − 1 and the rows that were added, as they were at Finish.
  Sums Of(int left, int right) const {
    return before_[static_cast<std::size_t>(right)] - before_[static_cast<std::size_t>(left)];
  }

 private:
  std::vector<Sums> columns_, before_;
};

/// The hyperbolic tangent within two hundredths (Padé), and much faster.
float Saturated(float value) {
  const float x = std::clamp(value, -3.0F, 3.0F), square = x * x;
  return x * (27 + square) / (27 + 9 * square);
}

}  // namespace

GreyPlane ReceivedGrey(const QImage& picture, const swath::Recording& recording) {
  const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
  GreyPlane plane(grey.width(), grey.height());
  for (int row = 0; row < grey.height(); ++row) {
    const uchar* from = grey.constScanLine(row);
    std::uint8_t* to = plane.Row(recording.Lies.Turned ? grey.height() - 1 - row : row);
    if (recording.RunsLeft()) {
      std::reverse_copy(from, from + grey.width(), to);
    } else {
      std::copy(from, from + grey.width(), to);
    }
  }
  return plane;
}

GreyPlane MedianOfNine(const GreyPlane& grey) {
  GreyPlane result = grey;
  for (int row = 1; row < grey.Rows - 1; ++row) {
    MedianRow(grey.Row(row - 1), grey.Row(row), grey.Row(row + 1), grey.Columns, result.Row(row));
  }
  return result;
}

Plane Blurred(const Plane& plane, double sigma) {
  const int reach = static_cast<int>(std::ceil(3 * sigma));
  std::vector<float> weights;
  float sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    weights.push_back(static_cast<float>(std::exp(-i * i / (2 * sigma * sigma))));
    sum += weights.back();
  }
  for (float& weight : weights) weight /= sum;
  const auto at = [&weights](int i) { return weights[static_cast<std::size_t>(i)]; };

  Plane across(plane.Columns, plane.Rows), result(plane.Columns, plane.Rows);
  std::vector<float> padded(static_cast<std::size_t>(plane.Columns + 2 * reach));
  for (int y = 0; y < plane.Rows; ++y) {
    const float* row = plane.Row(y);
    for (int x = 0; x < static_cast<int>(padded.size()); ++x) {
      padded[static_cast<std::size_t>(x)] = row[std::clamp(x - reach, 0, plane.Columns - 1)];
    }
    float* to = across.Row(y);
    for (int i = 0; i <= 2 * reach; ++i) {
      const float weight = at(i);
      for (int x = 0; x < plane.Columns; ++x) to[x] += weight * padded[static_cast<std::size_t>(x + i)];
    }
  }
  for (int y = 0; y < plane.Rows; ++y) {
    float* to = result.Row(y);
    for (int i = 0; i <= 2 * reach; ++i) {
      const float* row = across.Row(std::clamp(y + i - reach, 0, plane.Rows - 1));
      const float weight = at(i);
      for (int x = 0; x < plane.Columns; ++x) to[x] += weight * row[x];
    }
  }
  return result;
}

Plane BlurredWhereSeen(const Plane& plane, const GreyPlane& seen, double sigma) {
  Plane result = Blurred(plane, sigma);
  if (std::ranges::find(seen.Values, 0) == seen.Values.end()) return result;
  Plane values = plane, weights(plane.Columns, plane.Rows);
  for (std::size_t i = 0; i < seen.Values.size(); ++i) {
    weights.Values[i] = seen.Values[i];
    values.Values[i] *= weights.Values[i];
  }
  result = Blurred(values, sigma);
  weights = Blurred(weights, sigma);
  for (std::size_t i = 0; i < seen.Values.size(); ++i) {
    if (seen.Values[i]) result.Values[i] /= weights.Values[i];
  }
  return result;
}

Plane LocalContrast(const Plane& plane, const GreyPlane& seen, int half, double leastSd) {
  constexpr float soft = 1.5F;
  Plane result(plane.Columns, plane.Rows);
  BoxSums sums(plane.Columns);
  for (int y = 0; y < std::min(half, plane.Rows); ++y) sums.AddRow(plane.Row(y), seen.Row(y), 1);
  for (int y = 0; y < plane.Rows; ++y) {
    if (y + half < plane.Rows) sums.AddRow(plane.Row(y + half), seen.Row(y + half), 1);
    if (y - half > 0) sums.AddRow(plane.Row(y - half - 1), seen.Row(y - half - 1), -1);
    sums.Finish();
    const float* row = plane.Row(y);
    const std::uint8_t* isSeen = seen.Row(y);
    float* to = result.Row(y);
    for (int x = 0; x < plane.Columns; ++x) {
      if (!isSeen[x]) continue;
      const auto box = sums.Of(std::max(x - half, 0), std::min(x + half + 1, plane.Columns));
      const double mean = box.Sum / box.Count;
      const double sd = std::sqrt(std::max(box.Squares / box.Count - mean * mean, leastSd * leastSd));
      to[x] = soft * Saturated(static_cast<float>((double{row[x]} - mean) / sd) / soft);
    }
  }
  return result;
}

}  // namespace pelorin::align
