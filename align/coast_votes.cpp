#include "align/coast_votes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "align/vector_units.h"

namespace pelorin::align {
namespace {

/// Windows are two blocks high and wide, and neighbours share half of each other.
constexpr int kBlockRows = 8, kBlockColumns = 12;
constexpr int kWindowRows = 2 * kBlockRows, kWindowColumns = 2 * kBlockColumns;
constexpr int kWindowCells = kWindowRows * kWindowColumns;
/// Fields of the chess board that parts the windows.
constexpr int kFieldRows = 24, kFieldColumns = 36;

/// A window of the picture with less contrast (standard deviation) shows nothing.
constexpr double kLeastContrast = 0.05 * kMostContrast / 1.5;
/// A window of the strip with less land or water has no coast in it.
constexpr double kLeastCoast = 0.12 * kAllLand;
/// The same as StripColumns has it.
constexpr float kLeastVariance = static_cast<float>(kLeastCoast * kLeastCoast * kWindowCells * kWindowCells);
/// More than this of a correlation (squared) counts as this: no window votes more than 1.2.
constexpr float kMostSquare = 0.6988F;
/// A cloud's edge is like many coasts; what a window votes counts as far as it is so many times more than its
/// mean vote.
constexpr float kBackgrounds = 3;
constexpr float kLeastBackground = 0.03F;
/// Large yaws are rare: so much a vote loses by a cell.
constexpr double kYawDoubt = 0.032;
/// How near the peak its halves are looked for.
constexpr int kHalfReach = 10;

using Floats = std::vector<float>;

PELORIN_ALIGN_VECTORS
void AddProducts(const float* factors, const float* const* columns, int count, float* sums) {
  const float a = factors[0], b = factors[1], c = factors[2], d = factors[3];
  const float *p = columns[0], *q = columns[1], *r = columns[2], *s = columns[3];
  for (int i = 0; i < count; ++i) sums[i] += a * p[i] + b * q[i] + c * r[i] + d * s[i];
}

/// The strip as columns, so that what follows in time stands together, and sums over its windows.
class StripColumns {
 public:
  explicit StripColumns(const CellPlane& strip) : rows_(strip.Rows), columns_(strip.Columns) {
    cells_.resize(strip.Values.size());
    for (int row = 0; row < rows_; ++row) {
      for (int column = 0; column < columns_; ++column) {
        cells_[Place(column) + static_cast<std::size_t>(row)] = strip.Row(row)[column];
      }
    }
  }
  int Rows() const { return rows_; }
  int Columns() const { return columns_; }
  const float* Column(int column) const { return cells_.data() + Place(column); }

  /// Of the windows that begin in a column: the sum of their land, and its variance times the cells' number
  /// squared; by row.
  struct WindowSums {
    Floats Land, Variance;
  };
  const WindowSums& WindowsFrom(int column) {
    WindowSums& sums = windows_.at(static_cast<std::size_t>(column));
    if (!sums.Land.empty()) return sums;
    const auto rows = static_cast<std::size_t>(rows_);
    std::vector<double> land(rows + 1), squares(rows + 1);
    for (std::size_t row = 0; row < rows; ++row) {
      double sum = 0, square = 0;
      for (int i = 0; i < kWindowColumns; ++i) {
        const double cell = Column(column + i)[row];
        sum += cell;
        square += cell * cell;
      }
      land[row + 1] = land[row] + sum;
      squares[row + 1] = squares[row] + square;
    }
    for (std::size_t row = 0; row + kWindowRows <= rows; ++row) {
      const double sum = land[row + kWindowRows] - land[row];
      const double square = squares[row + kWindowRows] - squares[row];
      sums.Land.push_back(static_cast<float>(sum));
      sums.Variance.push_back(static_cast<float>(kWindowCells * square - sum * sum));
    }
    return sums;
  }

 private:
  std::size_t Place(int column) const {
    return static_cast<std::size_t>(column) * static_cast<std::size_t>(rows_);
  }

  int rows_, columns_;
  Floats cells_;
  std::vector<WindowSums> windows_ = std::vector<WindowSums>(static_cast<std::size_t>(columns_));
};

/// A window of the picture.
struct Window {
  int Row, Column;  ///< its first cell
  int MiddleColumn() const { return Column + kWindowColumns / 2; }
  /// Which half of the chess board.
  int Half() const {
    return ((Row + kBlockRows) / kFieldRows + (Column + kBlockColumns) / kFieldColumns) % 2;
  }
};

/// One way to lay the picture on the strip, by numbers within the grid.
struct Way {
  std::size_t Yaw, Move;
};

class Voting {
 public:
  Voting(const CellPlane& strip, const VoteGrid& grid, int shifts)
      : strip_(strip), grid_(grid), shifts_(shifts), moves_(0) {
    for (const auto& family : grid.Across) {
      for (const AcrossMove& move : family) {
        moves_.push_back(&move);
        for (const double cells : move.CellsOfColumn) {
          reach_ = std::max(reach_, static_cast<int>(std::lround(std::fabs(cells))));
        }
      }
    }
    for (auto& votes : votes_) votes.resize(grid.YawCells.size() * moves_.size() * Shifts());
  }

  bool Add(const CellPlane& picture, const std::function<bool(double)>& afterRows);

  ShiftVotes Result(int first, int last);

 private:
  std::size_t Shifts() const { return static_cast<std::size_t>(shifts_); }
  float* VotesOf(int half, const Way& way) { return votes_[half].data() + Place(way); }
  std::size_t Place(const Way& way) const { return (way.Yaw * moves_.size() + way.Move) * Shifts(); }

  void MultiplyBlock(const CellPlane& picture, int row, int column);
  void Vote(const CellPlane& picture, const Window& window);
  float* Products(int row, int column, int move) {
    const int block = (row / kBlockRows % 2 * blocks_ + column / kBlockColumns) * (2 * reach_ + 1);
    return products_.data() + static_cast<std::size_t>(block + move + reach_) * Shifts();
  }
  /// The mean of a way's votes and those of its neighbours.
  Floats Smoothed(int half, const Way& way) const;
  bool AreNeighbours(std::size_t move, std::size_t next) const;

  StripColumns strip_;
  const VoteGrid& grid_;
  int shifts_;
  std::vector<const AcrossMove*> moves_;  ///< of all families
  int reach_ = 0;                         ///< farthest move across, in cells
  std::array<Floats, 2> votes_;           ///< by half; of each way, by shift
  std::vector<Window> seen_;              ///< those with contrast

  int blocks_ = 0, begin_ = 0;  ///< blocks in a row, and the column where they begin
  Floats products_;             ///< of two rows of blocks, by move across, by shift
  Floats land_;                 ///< a window's votes, by move across, by shift
};

void Voting::MultiplyBlock(const CellPlane& picture, int row, int column) {
  for (int move = -reach_; move <= reach_; ++move) {
    float* sums = Products(row, column, move);
    std::fill_n(sums, shifts_, 0.0F);
    const int from = begin_ + column + move;
    if (from < 0 || from + kBlockColumns > strip_.Columns()) continue;
    for (int y = 0; y < kBlockRows; ++y) {
      const std::int16_t* cells = picture.Row(row + y) + begin_ + column;
      for (int x = 0; x < kBlockColumns; x += 4) {
        float factors[4];
        const float* columns[4];
        for (int i = 0; i < 4; ++i) {
          factors[i] = cells[x + i];
          columns[i] = strip_.Column(from + x + i) + row + y;
        }
        AddProducts(factors, columns, shifts_, sums);
      }
    }
  }
}

/// What counts of a window of the picture: the sum of its cells, and one over their variance.
struct WindowSums {
  float Sum, PerVariance;
};

/// How a window of the picture goes with windows of the strip: −ln(1 − r²), r being their correlation. Land
/// may be brighter than water or darker. Without a coast it is 0.
PELORIN_ALIGN_VECTORS
void Compare(const float* const* products, const float* land, const float* variances, int shifts,
             const WindowSums& window, float* votes) {
  constexpr float cells = kWindowCells;
  const float *a = products[0], *b = products[1], *c = products[2], *d = products[3];
  for (int i = 0; i < shifts; ++i) {
    const float together = cells * (a[i] + b[i] + c[i] + d[i]) - window.Sum * land[i];
    const float variance = variances[i] > kLeastVariance ? variances[i] : 1e30F;
    const float raw = together * together * window.PerVariance / variance;
    const float square = raw < kMostSquare ? raw : kMostSquare;
    // The logarithm as twice an inverse hyperbolic tangent, by its series: to a thousandth.
    const float u = square / (2 - square), uu = u * u;
    votes[i] = 2 * u * (1 + uu * (1.0F / 3 + uu * (1.0F / 5 + uu * (1.0F / 7 + uu * (1.0F / 9)))));
  }
}

/// Votes for places that have a coast.
struct Likeness {
  double Sum = 0;
  int Count = 0;

  void Add(const float* votes, const float* variances, int shifts) {
    for (int i = 0; i < shifts; ++i) {
      if (!(variances[i] > kLeastVariance)) continue;
      Sum += double{votes[i]};
      ++Count;
    }
  }
};

void Voting::Vote(const CellPlane& picture, const Window& window) {
  double sum = 0, squares = 0;
  for (int y = 0; y < kWindowRows; ++y) {
    const std::int16_t* cells = picture.Row(window.Row + y) + window.Column;
    for (int x = 0; x < kWindowColumns; ++x) {
      sum += cells[x];
      squares += double{1} * cells[x] * cells[x];
    }
  }
  const double variance = kWindowCells * squares - sum * sum;
  if (variance < kLeastContrast * kLeastContrast * kWindowCells * kWindowCells) return;
  seen_.push_back(window);

  const WindowSums sums{static_cast<float>(sum), static_cast<float>(1 / variance)};
  Likeness likeness;
  land_.assign(static_cast<std::size_t>(2 * reach_ + 1) * Shifts(), 0);
  const auto votesOf = [this](int move) {
    return land_.data() + static_cast<std::size_t>(move + reach_) * Shifts();
  };
  const int column = window.Column - begin_;
  for (int move = -reach_; move <= reach_; ++move) {
    const int from = window.Column + move;
    if (from < 0 || from + kWindowColumns > strip_.Columns()) continue;
    const float* products[] = {Products(window.Row, column, move),
                               Products(window.Row, column + kBlockColumns, move),
                               Products(window.Row + kBlockRows, column, move),
                               Products(window.Row + kBlockRows, column + kBlockColumns, move)};
    const StripColumns::WindowSums& strip = strip_.WindowsFrom(from);
    const float* variances = strip.Variance.data() + window.Row;
    Compare(products, strip.Land.data() + window.Row, variances, shifts_, sums, votesOf(move));
    likeness.Add(votesOf(move), variances, shifts_);
  }
  if (likeness.Count == 0) return;
  const float background = std::max(static_cast<float>(likeness.Sum / likeness.Count), kLeastBackground);
  for (float& vote : land_) vote = std::max(vote - kBackgrounds * background, 0.0F);

  const double share = 2 * (window.MiddleColumn() + 0.0) / picture.Columns - 1;
  for (std::size_t yaw = 0; yaw < grid_.YawCells.size(); ++yaw) {
    const int later = static_cast<int>(std::lround(grid_.YawCells[yaw] * share));
    const int first = std::max(0, -later), end = std::min(shifts_, shifts_ - later);
    for (std::size_t i = 0; i < moves_.size(); ++i) {
      const double cells = moves_[i]->CellsOfColumn[static_cast<std::size_t>(window.MiddleColumn())];
      const float* from = votesOf(static_cast<int>(std::lround(cells))) + later;
      float* to = VotesOf(window.Half(), {yaw, i});
      for (int shift = first; shift < end; ++shift) to[shift] += from[shift];
    }
  }
}

bool Voting::Add(const CellPlane& picture, const std::function<bool(double)>& afterRows) {
  blocks_ = picture.Columns / kBlockColumns;
  begin_ = (picture.Columns - blocks_ * kBlockColumns) / 2;
  products_.resize(static_cast<std::size_t>(2 * blocks_ * (2 * reach_ + 1)) * Shifts());
  const int rows = picture.Rows / kBlockRows;
  for (int row = 0; row < rows; ++row) {
    for (int block = 0; block < blocks_; ++block) {
      MultiplyBlock(picture, row * kBlockRows, block * kBlockColumns);
    }
    for (int block = 0; row > 0 && block + 1 < blocks_; ++block) {
      Vote(picture, {(row - 1) * kBlockRows, begin_ + block * kBlockColumns});
    }
    if (!afterRows((row + 1.0) / rows)) return false;
  }
  return true;
}

bool Voting::AreNeighbours(std::size_t move, std::size_t next) const {
  std::size_t begin = 0;
  for (const auto& family : grid_.Across) {
    if (move < begin + family.size()) return next >= begin && next < begin + family.size();
    begin += family.size();
  }
  return false;
}

Floats Voting::Smoothed(int half, const Way& way) const {
  Floats sums(Shifts());
  float ways = 0;
  for (std::size_t move = way.Move == 0 ? 0 : way.Move - 1; move <= way.Move + 1 && move < moves_.size();
       ++move) {
    if (!AreNeighbours(way.Move, move)) continue;
    const float* votes = votes_[static_cast<std::size_t>(half)].data() + Place({way.Yaw, move});
    for (std::size_t i = 0; i < Shifts(); ++i) sums[i] += votes[i];
    ++ways;
  }
  Floats smooth(Shifts());
  const float scale = 1 / (3 * ways);
  for (std::size_t i = 0; i < Shifts(); ++i) {
    smooth[i] = scale * (sums[i] + (i > 0 ? sums[i - 1] : 0) + (i + 1 < Shifts() ? sums[i + 1] : 0));
  }
  return smooth;
}

ShiftVotes Voting::Result(int first, int last) {
  ShiftVotes result;
  result.Best.assign(Shifts(), 0);
  // Where no window has a coast nothing votes.
  result.Peak = {first, 0, *moves_.front(), 0};
  Way best{};
  for (std::size_t yaw = 0; yaw < grid_.YawCells.size(); ++yaw) {
    const auto trust = static_cast<float>(1 - kYawDoubt * std::fabs(grid_.YawCells[yaw]));
    for (std::size_t move = 0; move < moves_.size(); ++move) {
      const Floats one = Smoothed(0, {yaw, move}), other = Smoothed(1, {yaw, move});
      for (std::size_t i = 0; i < Shifts(); ++i) {
        const float votes = trust * (one[i] + other[i]);
        result.Best[i] = std::max(result.Best[i], votes);
        const int shift = static_cast<int>(i);
        if (shift >= first && shift <= last && votes > static_cast<float>(result.Peak.Votes)) {
          result.Peak = {shift, grid_.YawCells[yaw], *moves_[move], votes};
          best = {yaw, move};
        }
      }
    }
  }
  const int from = std::max(result.Peak.Shift - kHalfReach, 0);
  const int end = std::min(result.Peak.Shift + kHalfReach + 1, shifts_);
  for (int half = 0; half < 2; ++half) {
    const Floats votes = Smoothed(half, best);
    result.HalfShifts[half] =
        static_cast<int>(std::max_element(votes.begin() + from, votes.begin() + end) - votes.begin());
  }
  for (const Window& window : seen_) {
    const auto row = static_cast<std::size_t>(window.Row + (first + last) / 2);
    if (strip_.WindowsFrom(window.Column).Variance[row] > kLeastVariance) ++result.CoastWindows;
  }
  return result;
}

}  // namespace

bool HasWindows(const PictureCells& picture) {
  return picture.Contrast.Rows >= kWindowRows && picture.Contrast.Columns >= kWindowColumns;
}

std::optional<ShiftVotes> VotesInStrip(std::span<const PictureCells> pictures, const CellPlane& strip,
                                       const VoteGrid& grid, int first, int last,
                                       const AfterStep& afterStep) {
  const int shifts = strip.Rows - pictures.front().Contrast.Rows + 1;
  Voting voting(strip, grid, shifts);
  double done = 0;
  for (const PictureCells& picture : pictures) {
    const double from = done / static_cast<double>(pictures.size());
    const auto afterRows = [&](double share) {
      return afterStep(from + share / static_cast<double>(pictures.size()));
    };
    if (!voting.Add(picture.Contrast, afterRows)) return std::nullopt;
    ++done;
  }
  return voting.Result(first, last);
}

}  // namespace pelorin::align
