#include "picture/minute_marks.h"

#include <gtest/gtest.h>

#include <random>

#include "picture/whole_line.h"

namespace pelorin::picture {
namespace {

constexpr int kBandBegin = 39, kBandColumns = 47, kWidth = 100;

struct Band {
  const char* Label;
  int Height;
  int Tone, First, Second;  ///< of the band, of the first two rows of a mark and of its last two
  double Noise;
  std::vector<int> Marks;
  std::vector<int> Found;
};

QImage Draw(const Band& band, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> noise(0, 1);
  QImage picture(kWidth, band.Height, QImage::Format_RGB32);
  for (int y = 0; y < band.Height; ++y) {
    int tone = band.Tone;
    for (const int mark : band.Marks) {
      if (y >= mark && y < mark + 4) tone = y < mark + 2 ? band.First : band.Second;
    }
    for (int x = 0; x < kWidth; ++x) {
      const bool isBand = x >= kBandBegin && x < kBandBegin + kBandColumns;
      const double seen = isBand ? tone + band.Noise * noise(random) : 128 + 90 * noise(random);
      const int grey = std::clamp(static_cast<int>(seen), 0, 255);
      picture.setPixel(x, y, qRgb(grey, grey, grey));
    }
  }
  return picture;
}

TEST(MinuteMarks, AreFoundWhereTheyKeepTheMinute) {
  const std::vector<int> minutes{37, 157, 277};
  const Band bands[] = {
      {"dark band", 300, 12, 2, 255, 20, minutes, minutes},
      {"dark band, much noise", 300, 12, 2, 255, 120, minutes, minutes},
      {"white band", 300, 240, 0, 250, 60, minutes, minutes},
      {"the band of our maps", 300, 128, 0, 255, 0, minutes, minutes},
      {"white rows first", 300, 128, 255, 0, 40, minutes, minutes},
      {"at both ends", 124, 128, 0, 255, 20, {0, 120}, {0, 120}},
      {"a lost line, and a mark that was lost", 500, 12, 2, 255, 40, {37, 156, 396}, {37, 156, 396}},
      {"something else between them", 300, 12, 2, 255, 40, {37, 90, 157}, {37, 157}},
      {"one mark", 150, 12, 2, 255, 20, {37}, {}},
      {"not a minute apart", 300, 12, 2, 255, 20, {37, 137, 237}, {}},
      {"no marks", 900, 12, 2, 255, 40, {}, {}},
      {"low contrast", 300, 120, 115, 125, 5, minutes, {}},
      {"no rows", 3, 12, 2, 255, 20, {}, {}},
  };
  for (const Band& band : bands) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
      EXPECT_EQ(FindMinuteMarks(Draw(band, seed), kBandBegin, kBandColumns), band.Found)
          << band.Label << seed;
    }
  }
  EXPECT_TRUE(FindMinuteMarks(Draw(bands[0], 1), 0, kBandBegin).empty()) << "beside the band";
  EXPECT_TRUE(FindMinuteMarks(Draw(bands[0], 1), kWidth, kBandColumns).empty()) << "outside";
}

TEST(MinuteMarks, TellTheClock) {
  const struct {
    std::vector<int> Rows;
    double LinesPerSecond, SecondOfStart, SecondOfMarks;
    double Wanted;
  } rows[] = {
      {{10, 130, 250}, 2, 50, 0, 5},      // 50 s + 5 s is 5 s early
      {{10, 130}, 2, 57.5, 0, -2.5},      // and 62.5 s late
      {{10, 130}, 4, 57.5, 0, 0},         // lines twice as fast
      {{71, 191, 311}, 2, 38, 13, -0.5},  // marks that count minutes of their own
      {{0, 120}, 2, 30, 0, 30},           // as far as can be told
      {{0, 120}, 2, 29, 0, -29},         {{20, 140, 259}, 2, 50, 0, 0},  // the last one after a lost line
  };
  for (const auto& row : rows) {
    const auto offset =
        ClockOffsetFromMarks(row.Rows, row.LinesPerSecond, row.SecondOfStart, row.SecondOfMarks);
    ASSERT_TRUE(offset);
    EXPECT_NEAR(*offset, row.Wanted, 1e-9) << row.SecondOfStart;
  }
  EXPECT_FALSE(ClockOffsetFromMarks({10}, 2, 50));
}

TEST(WholeLine, IsCutIntoItsChannels) {
  QImage picture(kWholeLineWidth, 2, QImage::Format_RGB32);
  picture.fill(Qt::black);
  picture.setPixel(1039, 1, 0xFF111111);
  picture.setPixel(1040, 0, 0xFF222222);
  const auto [left, right] = CutWholeLines(picture);
  EXPECT_EQ(left.size(), QSize(1040, 2));
  EXPECT_EQ(left.pixel(1039, 1), 0xFF111111);
  EXPECT_EQ(right.size(), QSize(1040, 2));
  EXPECT_EQ(right.pixel(0, 0), 0xFF222222);
  EXPECT_TRUE(HoldsWholeLines(picture.width()) && !HoldsWholeLines(left.width()));
}

}  // namespace
}  // namespace pelorin::picture
