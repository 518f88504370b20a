#include "map/map_grid.h"

#include <gtest/gtest.h>

namespace pelorin::map {
namespace {

using namespace Qt::StringLiterals;

constexpr MapFrame kNormal{772, 436, false}, kPacific{772, 436, true};

TEST(MapProjection, DegreesBecomePixels) {
  const struct {
    MapFrame Frame;
    double LatitudeDeg, LongitudeDeg;
    QPoint Pixel;
  } rows[] = {
      {kNormal, 90, -180, {0, 0}},        {kNormal, 0, 0, {386, 218}},
      {kNormal, -90, 180, {772, 436}},    {kNormal, 23.467, 181, {2, 161}},
      {kNormal, 0, -179, {2, 218}},       {kNormal, 0, -190, {-21, 218}},
      {kPacific, 0, 180, {386, 218}},     {kPacific, 0, 0, {772, 218}},
      {kPacific, 0, -150, {450, 218}},    {kPacific, 0, 0.5, {1, 218}},
      {{360, 180}, 89.5, -178.5, {2, 0}}, {{360, 180}, 88.5, -177.5, {2, 2}},  // ties go to the even pixel
      {{0, 0}, 47, 11, {0, 0}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MapPoint(row.Frame, row.LatitudeDeg, row.LongitudeDeg), row.Pixel)
        << row.LatitudeDeg << ' ' << row.LongitudeDeg << ' ' << row.Frame.PacificCentred;
  }
  for (const double longitude : {151.0, -160.0, 209.9, -150.1}) EXPECT_TRUE(IsPacificCentred(longitude));
  for (const double longitude : {150.0, 210.0, -150.0, -3.2}) EXPECT_FALSE(IsPacificCentred(longitude));
}

TEST(MapGrid, LinesAndLabelsOfBothCentrings) {
  // 13 × 9 pixels for "150°W", so that a half is no whole number.
  const auto measure = [](const QString& text) { return QSize(3 + 2 * static_cast<int>(text.size()), 9); };
  const struct {
    const char* Label;
    MapFrame Frame;
    std::size_t Index;  // 0 … 10 meridians from west to east, 11 … 15 parallels from the south
    QString Text;
    QPoint TextAt, From, To;
  } rows[] = {
      {"150 W", kNormal, 0, u"150°W"_s, {58, 426}, {64, 425}, {64, 0}},
      {"Greenwich", kNormal, 5, u"0°"_s, {383, 426}, {386, 425}, {386, 0}},
      {"equator", kNormal, 13, u"0"_s, {1, 214}, {0, 218}, {772, 218}},
      {"30 N", kNormal, 14, u"30°N"_s, {1, 141}, {0, 145}, {772, 145}},
      {"150 W, Pacific", kPacific, 0, u"150°W"_s, {444, 426}, {450, 425}, {450, 0}},
      {"180", kPacific, 5, u"180°"_s, {381, 426}, {386, 425}, {386, 0}},
      {"equator, Pacific", kPacific, 13, u"0"_s, {1, 214}, {2, 218}, {770, 218}},
  };
  for (const auto& row : rows) {
    const MapGrid grid = GridOf(row.Frame, measure);
    ASSERT_EQ(grid.Lines.size(), 16U);
    ASSERT_EQ(grid.Labels.size(), 16U);
    EXPECT_EQ(grid.Labels[row.Index].Text, row.Text) << row.Label;
    EXPECT_EQ(grid.Labels[row.Index].TopLeft, row.TextAt) << row.Label;
    EXPECT_EQ(grid.Lines[row.Index], Stroke({row.From, row.To})) << row.Label;
  }
  EXPECT_EQ(GridOf(kPacific, measure).Tropics,
            std::vector<Stroke>({{{2, 275}, {770, 275}}, {{2, 161}, {770, 161}}}));
  EXPECT_TRUE(GridOf({0, 436}, measure).Lines.empty());
}

}  // namespace
}  // namespace pelorin::map
