#include "align/fine_fit.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace pelorin::align {
namespace {

using Values = std::vector<double>;

/// The largest value of a function near a start, by a simplex that goes where it is higher (Nelder and Mead,
/// 1965).
Values Highest(const std::function<double(const Values&)>& height, const Values& start, const Values& edges) {
  struct Corner {
    Values At;
    double Height;
  };
  std::vector<Corner> corners{{start, height(start)}};
  for (std::size_t i = 0; i < start.size(); ++i) {
    Values at = start;
    at[i] += edges[i];
    corners.push_back({at, height(at)});
  }
  const auto higher = [](const Corner& a, const Corner& b) { return a.Height > b.Height; };
  constexpr int mostSteps = 400;
  constexpr double flat = 1e-4;
  for (int step = 0; step < mostSteps; ++step) {
    std::sort(corners.begin(), corners.end(), higher);
    if (corners.front().Height - corners.back().Height < flat) break;
    Values middle(start.size());
    for (std::size_t c = 0; c + 1 < corners.size(); ++c) {
      for (std::size_t i = 0; i < middle.size(); ++i) {
        middle[i] += corners[c].At[i] / static_cast<double>(start.size());
      }
    }
    Corner& worst = corners.back();
    const auto along = [&](double times) {
      Corner corner{middle, 0};
      for (std::size_t i = 0; i < middle.size(); ++i) corner.At[i] += times * (middle[i] - worst.At[i]);
      corner.Height = height(corner.At);
      return corner;
    };
    const Corner mirrored = along(1);
    if (mirrored.Height > corners.front().Height) {
      const Corner farther = along(2);
      worst = farther.Height > mirrored.Height ? farther : mirrored;
    } else if (mirrored.Height > corners[corners.size() - 2].Height) {
      worst = mirrored;
    } else if (const Corner nearer = along(mirrored.Height > worst.Height ? 0.5 : -0.5);
               nearer.Height > std::max(worst.Height, mirrored.Height)) {
      worst = nearer;
    } else {
      for (std::size_t c = 1; c < corners.size(); ++c) {
        for (std::size_t i = 0; i < middle.size(); ++i) {
          corners[c].At[i] = (corners[c].At[i] + corners.front().At[i]) / 2;
        }
        corners[c].Height = height(corners[c].At);
      }
    }
  }
  return std::max_element(corners.begin(), corners.end(),
                          [](const Corner& a, const Corner& b) { return a.Height < b.Height; })
      ->At;
}

class Fitting {
 public:
  Fitting(const Frame& frame, const std::vector<FineWindow>& windows, const MoveDoubts& doubts,
          const Moves& already)
      : windows_(windows), doubts_(doubts.AsArray()), already_(already.AsArray()) {
    std::vector<swath::PixelPoint> middles;
    for (const FineWindow& window : windows) middles.push_back(window.Middle());
    moves_ = MovesOf(frame, middles);
    for (std::size_t i = 0; i < Moves::kCount; ++i) {
      if (doubts_[i] > 0) free_.push_back(i);
    }
  }

  FineFit Fit() const {
    Values start, edges;
    const auto coarse = BestOfWhole();
    for (const std::size_t i : free_) {
      start.push_back(coarse[i]);
      edges.push_back(0.7 * UnitOf(i));
    }
    const auto height = [this](const Values& values) { return Height(All(values)); };
    // A simplex may lie down too early; a second one does not where the first one did.
    Values best = Highest(height, start, edges);
    for (double& edge : edges) edge = -edge / 2;
    best = Highest(height, best, edges);
    const auto found = All(best);
    FineFit fit{Moves::Of(found), Height(found), {}};
    for (std::size_t w = 0; w < windows_.size(); ++w) AddResidual(w, found, fit.Windows);
    return fit;
  }

 private:
  using Array = std::array<double, Moves::kCount>;

  Array All(const Values& values) const {
    Array all{};
    for (std::size_t i = 0; i < free_.size(); ++i) all[free_[i]] = values[i];
    return all;
  }

  /// Where the picture's window is in the map, as it lies from its place: the map moves the other way.
  swath::PixelPoint PlaceOf(std::size_t window, const Array& values) const {
    swath::PixelPoint place{0, 0};
    for (const std::size_t i : free_) {
      place.Row -= moves_[window].Rows[i] * values[i];
      place.Column -= moves_[window].Columns[i] * values[i];
    }
    return place;
  }

  double Height(const Array& values) const {
    constexpr double scale = 5;
    double votes = 0;
    for (std::size_t w = 0; w < windows_.size(); ++w) {
      const swath::PixelPoint place = PlaceOf(w, values);
      votes += windows_[w].Votes(place.Row, place.Column);
    }
    double doubt = 0;
    for (const std::size_t i : free_) {
      const double size = (values[i] + already_[i]) / doubts_[i];
      doubt += size * size / 2;
    }
    return scale * votes - doubt;
  }

  /// How much of something moves a place by a sample.
  double UnitOf(std::size_t move) const {
    double most = 0;
    for (const PlaceMoves& moves : moves_) {
      most = std::max({most, std::fabs(moves.Rows[move]), std::fabs(moves.Columns[move])});
    }
    return most > 0 ? 1 / most : 1;
  }

  /// The best of whole rows and columns and a few yaws.
  Array BestOfWhole() const {
    constexpr std::size_t time = 0, shift = 1, roll = 2, yaw = 3;
    const Raster<double>& any = windows_.front().Whole();
    const bool fitsYaw = doubts_[yaw] > 0;
    const double yawStep = 2 * UnitOf(yaw);
    float best = -1;
    Array result{};
    for (int turn = fitsYaw ? -7 : 0; turn <= (fitsYaw ? 7 : 0); ++turn) {
      const double yawDeg = turn * yawStep;
      Plane sum(any.Columns, any.Rows);
      for (std::size_t w = 0; w < windows_.size(); ++w) {
        AddMoved(windows_[w].Whole(), static_cast<int>(std::lround(moves_[w].Rows[yaw] * yawDeg)), sum);
      }
      sum = Blurred(sum, 1);
      const auto highest = std::max_element(sum.Values.begin(), sum.Values.end());
      if (*highest <= best) continue;
      best = *highest;
      const auto place = static_cast<int>(highest - sum.Values.begin());
      const double rows = place / sum.Columns - sum.Rows / 2, columns = place % sum.Columns - sum.Columns / 2;
      result = {};
      result[yaw] = yawDeg;
      result[time] = -rows / Mean(time, &PlaceMoves::Rows);
      const std::size_t across = doubts_[shift] > 0 ? shift : roll;
      if (doubts_[across] > 0) result[across] = -columns / Mean(across, &PlaceMoves::Columns);
    }
    return result;
  }

  /// Adds a window's votes, as seen from a place that lies so many rows before its own.
  static void AddMoved(const Raster<double>& votes, int rowsBefore, Plane& sum) {
    for (int y = 0; y < sum.Rows; ++y) {
      const int from = y - rowsBefore;
      if (from < 0 || from >= votes.Rows) continue;
      for (int x = 0; x < sum.Columns; ++x) sum.Row(y)[x] += static_cast<float>(votes.Row(from)[x]);
    }
  }

  double Mean(std::size_t move, Array PlaceMoves::*direction) const {
    double sum = 0;
    int count = 0;
    for (const PlaceMoves& moves : moves_) {
      const double value = (moves.*direction)[move];
      sum += value;
      count += value != 0;
    }
    return count > 0 ? sum / count : 1;
  }

  void AddResidual(std::size_t w, const Array& found, std::vector<WindowResidual>& residuals) const {
    const FineWindow& window = windows_[w];
    const swath::PixelPoint place = PlaceOf(w, found);
    const double votes = window.Votes(place.Row, place.Column);
    if (votes <= 0.05) return;
    const auto near = [&](const Values& at) {
      constexpr double reach = 4;
      const double rows = at[0] - place.Row, columns = at[1] - place.Column;
      return std::hypot(rows, columns) > reach ? -1.0 : window.Votes(at[0], at[1]);
    };
    const Values own = Highest(near, {place.Row, place.Column}, {0.7, 0.7});
    residuals.push_back({window.Middle(), own[0] - place.Row, own[1] - place.Column, votes});
  }

  const std::vector<FineWindow>& windows_;
  Array doubts_, already_;
  std::vector<PlaceMoves> moves_;
  std::vector<std::size_t> free_;
};

}  // namespace

FineFit FitWindows(const Frame& frame, const std::vector<FineWindow>& windows, const MoveDoubts& doubts,
                   const Moves& already) {
  if (windows.empty()) return {};
  return Fitting(frame, windows, doubts, already).Fit();
}

}  // namespace pelorin::align
