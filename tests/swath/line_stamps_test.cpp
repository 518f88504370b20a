#include "swath/line_stamps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

namespace pelorin::swath {
namespace {

constexpr double kLost = -1, kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kStart = 1.7e9, kGroupS = 1.231141, kRowS = kGroupS / 8;

using Edit = std::function<void(std::vector<double>&)>;

/// Groups of eight rows, as low-rate pictures of METEOR-M have them; `leftOut` of them are missing before
/// number `gap`.
LineStamps Packets(int groups, int gap, int leftOut, const Edit& damage = {}) {
  LineStamps stamps{{}, 8, kRowS, true};
  for (int i = 0; i < groups; ++i) {
    stamps.UnixS.push_back(kStart + (i + (i < gap ? 0 : leftOut)) * kGroupS);
  }
  if (damage) damage(stamps.UnixS);
  return stamps;
}

/// A stamp a row, so many a second, noted in steps of `step` seconds.
LineStamps Rows(int rows, double perSecond, double step, const Edit& damage = {}) {
  LineStamps stamps;
  for (int i = 0; i < rows; ++i) {
    stamps.UnixS.push_back(kStart + std::floor(i / perSecond / step + 1e-9) * step);
  }
  if (damage) damage(stamps.UnixS);
  return stamps;
}

Edit Lose(int from, int to) {
  return [=](std::vector<double>& stamps) { std::fill(stamps.begin() + from, stamps.begin() + to, kLost); };
}
Edit Put(std::vector<std::pair<int, double>> changes) {
  return [=](std::vector<double>& stamps) {
    for (const auto& [i, later] : changes) stamps[static_cast<std::size_t>(i)] += later;
  };
}
void LoseOdd(std::vector<double>& stamps) {
  for (std::size_t i = 1; i < stamps.size(); i += 2) stamps[i] = kLost;
}

TEST(MomentsOfRows, LostStampsAreFilledInWhereRowsAreThere) {
  LineStamps jumping = Packets(20, 10, 50);
  jumping.UnixS[10] -= 25 * kGroupS;
  LineStamps notJumping = jumping;
  notJumping.MostJumpS = 20;
  const struct {
    const char* label;
    LineStamps stamps;
    double firstRow;
    std::vector<std::pair<int, double>> rows;  ///< row, seconds since the start
    double toleranceS = 1e-4;
  } cases[] = {
      {"about their stamps", Packets(9, 9, 0), 0, {{0, -4 * kRowS}, {4, 0}, {7, 3 * kRowS}, {8, 4 * kRowS}}},
      {"another first row", Packets(9, 9, 0), 2.5, {{0, -1.5 * kRowS}, {6, 4.5 * kRowS}}},
      {"half of them lost",
       Packets(20, 20, 0, LoseOdd),
       0,
       {{25, 3 * kGroupS - 3 * kRowS}, {28, 3 * kGroupS}}},
      {"left out, and no stamp lost", Packets(20, 10, 5), 0, {{76, 9 * kGroupS}, {84, 15 * kGroupS}}},
      {"left out between lost ones",
       Packets(20, 10, 5, Lose(10, 12)),
       0,
       {{76, 9 * kGroupS}, {84, kNaN}, {92, kNaN}, {100, 17 * kGroupS}}},
      {"wrong ones",
       Packets(20, 20, 0, Put({{3, -100}, {6, 500}, {9, -kGroupS}, {12, 1e300}, {14, kNaN}})),
       0,
       {{28, 3 * kGroupS}, {52, 6 * kGroupS}, {76, 9 * kGroupS}, {100, 12 * kGroupS}, {116, 14 * kGroupS}}},
      {"a day off at first", Packets(20, 6, 86400), 0, {{4, kNaN}, {12, kNaN}, {20, 86402 * kGroupS}}},
      {"alone at the ends",
       Packets(20, 20, 0, Put({{0, -50}, {1, -30}, {18, 30}, {19, 50}})),
       0,
       {{4, 0}, {156, 19 * kGroupS}}},
      {"lost at the ends",
       Packets(20, 20, 0, [](auto& all) { Lose(0, 6)(all), Lose(14, 20)(all); }),
       0,
       {{12, kNaN}, {20, 2 * kGroupS}, {140, 17 * kGroupS}, {148, kNaN}, {100000, kNaN}}},
      {"one between gaps", jumping, 0, {{84, 35 * kGroupS}}},
      {"one that jumps too far", notJumping, 0, {{84, kNaN}, {92, 61 * kGroupS}}},
      {"milliseconds", Rows(3000, 6, 1e-3, Lose(1000, 2000)), 0, {{1500, 250}, {2999, 2999 / 6.0}}, 2e-3},
      {"one stamp", Rows(1, 2, 1e-3), 0, {{0, 0}, {1, kNaN}}},
      {"always the same", Rows(50, 1e9, 1), 0, {{25, kNaN}}},
      {"none", {}, 0, {{0, kNaN}}},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.label);
    const std::vector<double> moments = MomentsOfRows(one.stamps, one.firstRow, one.rows.back().first + 1);
    for (const auto& [row, seconds] : one.rows) {
      const double found = moments.at(static_cast<std::size_t>(row)) - kStart;
      if (std::isnan(seconds)) {
        EXPECT_TRUE(std::isnan(found)) << row << " has " << found;
      } else {
        EXPECT_NEAR(found, seconds, one.toleranceS) << row;
      }
    }
  }
}

/// Passes over rows that were left out and rows that were damaged: what is told is true and increases, and
/// nearly all is told.
TEST(MomentsOfRows, WeakPassesAreToldAsTheyWere) {
  std::mt19937 random(7);
  const auto chance = [&random](double share) {
    return static_cast<double>(random() % 10000) < share * 10000;
  };
  for (const int perStamp : {8, 1}) {
    for (const auto& [lost, wrong] : {std::pair{0.1, 0.4}, {0.5, 0.2}, {0.8, 0.05}}) {
      SCOPED_TRACE(testing::Message() << perStamp << " rows a stamp, lost " << lost << ", wrong " << wrong);
      const double periodS = perStamp == 8 ? kGroupS : 1 / 6.0;
      LineStamps stamps{{}, perStamp};
      std::vector<double> truth;
      double late = 0;
      for (int i = 0; i < 1000; ++i) {
        if (i % 250 == 125) late += 40 * periodS;
        truth.push_back(kStart + i * periodS + late);
        stamps.UnixS.push_back(chance(lost)    ? kLost
                               : chance(wrong) ? truth.back() + static_cast<double>(random() % 4000) - 2000
                                               : truth.back());
      }
      const std::vector<double> moments = MomentsOfRows(stamps, 0, 1000 * perStamp);
      int told = 0;
      double last = 0;
      for (int row = 0; row < 1000 * perStamp; ++row) {
        const double moment = moments[static_cast<std::size_t>(row)];
        if (std::isnan(moment)) continue;
        ++told;
        EXPECT_GT(moment, last) << row;
        last = moment;
        EXPECT_NEAR(moment, truth[static_cast<std::size_t>(row / perStamp)], periodS * 0.6) << row;
      }
      EXPECT_GT(told, 900 * perStamp);
    }
  }
}

}  // namespace
}  // namespace pelorin::swath
