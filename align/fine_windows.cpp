#include "align/fine_windows.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "align/vector_units.h"

namespace pelorin::align {
namespace {

/// Land or water that stands out less (standard deviation) is no coast.
constexpr double kLeastCoast = 0.15;
constexpr double kLeastContrast = 0.05;
/// The products of so many moves are made at once.
constexpr int kLane = 32;

PELORIN_ALIGN_VECTORS
void MultiplyRow(const float* picture, const float* land, int columns, float* sums) {
  for (int x = 0; x < columns; ++x) {
    const float value = picture[x];
    const float* from = land + x;
    for (int i = 0; i < kLane; ++i) sums[i] += value * from[i];
  }
}

/// Sums over boxes of a part of a plane and of its squares.
class LandSums {
 public:
  LandSums(const Plane& land, int left, int top, int columns, int rows)
      : sums_(columns + 1, rows + 1), squares_(columns + 1, rows + 1) {
    for (int y = 0; y < rows; ++y) {
      double sum = 0, square = 0;
      for (int x = 0; x < columns; ++x) {
        const double value{land.Row(top + y)[left + x]};
        sum += value;
        square += value * value;
        sums_.Row(y + 1)[x + 1] = sums_.Row(y)[x + 1] + sum;
        squares_.Row(y + 1)[x + 1] = squares_.Row(y)[x + 1] + square;
      }
    }
  }
  struct Box {
    double Sum, Variance;  ///< the variance times the number of samples
  };
  Box Of(int left, int top, int columns, int rows) const {
    const auto over = [&](const Raster<double>& sums) {
      return sums.Row(top + rows)[left + columns] - sums.Row(top)[left + columns] -
             sums.Row(top + rows)[left] + sums.Row(top)[left];
    };
    const double sum = over(sums_);
    return {sum, over(squares_) - sum * sum / (columns * rows)};
  }

 private:
  Raster<double> sums_, squares_;
};

/// Coefficients of the cubic spline through values at whole numbers (Unser, 1999), which is like a mirror at
/// its ends.
void MakeSpline(double* values, int count, std::ptrdiff_t step) {
  if (count < 2) return;
  const double pole = std::sqrt(3.0) - 2;
  const auto at = [&](int i) -> double& { return values[i * step]; };
  double sum = at(0), power = pole;
  for (int i = 1; i < count; ++i, power *= pole) sum += power * at(i);
  at(0) = sum;
  for (int i = 1; i < count; ++i) at(i) += pole * at(i - 1);
  at(count - 1) = pole / (pole * pole - 1) * (at(count - 1) + pole * at(count - 2));
  for (int i = count - 2; i >= 0; --i) at(i) = pole * (at(i + 1) - at(i));
  for (int i = 0; i < count; ++i) at(i) *= 6;
}

std::array<double, 4> SplineWeights(double share) {
  const double rest = 1 - share;
  return {rest * rest * rest / 6, 2.0 / 3 - share * share * (2 - share) / 2,
          2.0 / 3 - rest * rest * (2 - rest) / 2, share * share * share / 6};
}

/// A place of a window, by its first sample.
struct Place {
  int Row, Column;
  std::size_t Picture;
  double Worth;
};

class Comparing {
 public:
  Comparing(const Plane& land, int margin, const WindowLayout& layout)
      : layout_(layout), margin_(margin), land_(land.Columns + kLane, land.Rows) {
    for (int y = 0; y < land.Rows; ++y) std::copy_n(land.Row(y), land.Columns, land_.Row(y));
  }

  /// Standard deviation of the land in a window and as far round it as it may be moved.
  double CoastNear(int row, int column) const {
    const int rows = layout_.Rows + 2 * layout_.RowReach, columns = layout_.Columns + 2 * layout_.ColumnReach;
    double sum = 0, squares = 0;
    int count = 0;
    // Every other sample tells as much.
    for (int y = 0; y < rows; y += 2) {
      const float* land =
          land_.Row(margin_ + row - layout_.RowReach + y) + margin_ + column - layout_.ColumnReach;
      for (int x = 0; x < columns; x += 2) {
        const double value{land[x]};
        sum += value;
        squares += value * value;
        ++count;
      }
    }
    const double mean = sum / count;
    return std::sqrt(std::max(squares / count - mean * mean, 0.0));
  }

  /// Empty when nothing stands out.
  Raster<double> Votes(const Plane& contrast, int row, int column) const {
    const int samples = layout_.Rows * layout_.Columns;
    double sum = 0, squares = 0;
    for (int y = 0; y < layout_.Rows; ++y) {
      const float* values = contrast.Row(row + y) + column;
      for (int x = 0; x < layout_.Columns; ++x) {
        const double value{values[x]};
        sum += value;
        squares += value * value;
      }
    }
    const double variance = squares - sum * sum / samples;
    Raster<double> votes(2 * layout_.ColumnReach + 1, 2 * layout_.RowReach + 1);
    if (variance < kLeastContrast * kLeastContrast * samples) return {};
    const int left0 = margin_ + column - layout_.ColumnReach, top0 = margin_ + row - layout_.RowReach;
    const LandSums sums(land_, left0, top0, layout_.Columns + 2 * layout_.ColumnReach,
                        layout_.Rows + 2 * layout_.RowReach);
    double all = 0;
    for (int i = 0; i < votes.Rows; ++i) {
      const int top = top0 + i;
      for (int first = 0; first < votes.Columns; first += kLane) {
        const int left = left0 + first;
        std::array<float, kLane> products{};
        for (int y = 0; y < layout_.Rows; ++y) {
          MultiplyRow(contrast.Row(row + y) + column, land_.Row(top + y) + left, layout_.Columns,
                      products.data());
        }
        for (int j = 0; j < kLane && first + j < votes.Columns; ++j) {
          const auto box = sums.Of(first + j, i, layout_.Columns, layout_.Rows);
          if (box.Variance < kLeastCoast * kLeastCoast * samples) continue;
          const double together = double{products[static_cast<std::size_t>(j)]} - sum * box.Sum / samples;
          const double square = std::min(together * together / (variance * box.Variance), 0.999);
          const double vote = std::min(-std::log1p(-square), layout_.MostVote);
          votes.Row(i)[first + j] = vote;
          all += vote;
        }
      }
    }
    const double background = layout_.Backgrounds * all / static_cast<double>(votes.Values.size());
    bool standsOut = false;
    for (double& vote : votes.Values) {
      vote = std::max(vote - background, 0.0);
      standsOut = standsOut || vote > 0;
    }
    return standsOut ? votes : Raster<double>();
  }

 private:
  const WindowLayout& layout_;
  int margin_;
  Plane land_;  ///< with some more columns, for whole lanes
};

}  // namespace

FineWindow::FineWindow(swath::PixelPoint middle, Raster<double> votes)
    : middle_(middle), votes_(std::move(votes)), spline_(votes_) {
  for (int y = 0; y < spline_.Rows; ++y) MakeSpline(spline_.Row(y), spline_.Columns, 1);
  for (int x = 0; x < spline_.Columns; ++x) MakeSpline(spline_.Row(0) + x, spline_.Rows, spline_.Columns);
}

double FineWindow::Votes(double rows, double columns) const {
  const double y = rows + (spline_.Rows - 1) / 2.0, x = columns + (spline_.Columns - 1) / 2.0;
  const int lastRow = spline_.Rows - 1, lastColumn = spline_.Columns - 1;
  if (!(y >= 0 && y <= lastRow && x >= 0 && x <= lastColumn)) return 0;
  const int top = static_cast<int>(y), left = static_cast<int>(x);
  const auto down = SplineWeights(y - top), across = SplineWeights(x - left);
  // Like a mirror at the ends.
  const auto inside = [](int i, int last) { return i < 0 ? -i : (i > last ? 2 * last - i : i); };
  double sum = 0;
  for (int i = 0; i < 4; ++i) {
    const double* row = spline_.Row(std::clamp(inside(top + i - 1, lastRow), 0, lastRow));
    double part = 0;
    for (int j = 0; j < 4; ++j) {
      part += across[static_cast<std::size_t>(j)] *
              row[std::clamp(inside(left + j - 1, lastColumn), 0, lastColumn)];
    }
    sum += down[static_cast<std::size_t>(i)] * part;
  }
  return sum;
}

std::vector<FineWindow> WindowsWithCoasts(std::span<const Plane> contrasts, const GreyPlane& seen,
                                          const Plane& land, int margin, const WindowLayout& layout,
                                          const Promise& promise, const std::function<void()>& afterWindow) {
  const Comparing comparing(land, margin, layout);
  std::vector<Place> places;
  constexpr double mostUnseen = 0.25;
  for (int row = 0; row + layout.Rows <= seen.Rows; row += layout.Rows / 2) {
    for (int column = 0; column + layout.Columns <= seen.Columns; column += layout.Columns / 2) {
      const double coast = comparing.CoastNear(row, column);
      if (coast < kLeastCoast) continue;
      int unseen = 0;
      for (int y = 0; y < layout.Rows; ++y) {
        const std::uint8_t* isSeen = seen.Row(row + y) + column;
        unseen += static_cast<int>(std::count(isSeen, isSeen + layout.Columns, 0));
      }
      if (unseen > mostUnseen * layout.Rows * layout.Columns) continue;
      const swath::PixelPoint middle{column + (layout.Columns - 1) / 2.0, row + (layout.Rows - 1) / 2.0};
      const double worth = promise ? coast * promise(middle) : coast;
      for (std::size_t picture = 0; picture < contrasts.size(); ++picture) {
        places.push_back({row, column, picture, worth});
      }
    }
  }
  if (static_cast<int>(places.size()) > layout.Most) {
    std::nth_element(places.begin(), places.begin() + layout.Most, places.end(),
                     [](const Place& a, const Place& b) { return a.Worth > b.Worth; });
    places.resize(static_cast<std::size_t>(layout.Most));
  }
  std::vector<FineWindow> windows;
  for (const Place& place : places) {
    afterWindow();
    Raster<double> votes = comparing.Votes(contrasts[place.Picture], place.Row, place.Column);
    if (votes.Values.empty()) continue;
    windows.emplace_back(
        swath::PixelPoint{place.Column + (layout.Columns - 1) / 2.0, place.Row + (layout.Rows - 1) / 2.0},
        std::move(votes));
  }
  return windows;
}

}  // namespace pelorin::align
