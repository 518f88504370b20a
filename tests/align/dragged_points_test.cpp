#include "align/dragged_points.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "lines/map_lines.h"
#include "tests/support/tables.h"

namespace pelorin::align {
namespace {

using swath::PixelPoint;
using swath::Recording;

/// A picture of the Mediterranean, turned.
Recording Pass() {
  Recording recording;
  recording.Elements = std::make_shared<const orbit::TSatellite>(tests::DemonstrationSatellite("NOAA 19"));
  recording.SeenBy = {"scanner", {909, 110.74, swath::ScanLaw::Zones}, 2, false};
  recording.Start = orbit::MakeDateTime(2022, 2, 23, 7, 55);
  recording.Rows = 900;
  recording.Columns = 1040;
  recording.FirstColumn = 86;
  recording.Lies.Turned = true;
  return recording;
}

const lines::FineLines& Coasts() {
  static const auto file = lines::FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"));
  return *file;
}

/// Somewhere on a line, well inside, so many columns from the left at least.
PixelPoint OnALine(const DraggedPoints& points, double fromColumn, double fromRow) {
  for (const lines::PixelLine& line : points.Lines()->Shores) {
    for (const PixelPoint& place : line) {
      const bool isRight = place.Column > fromColumn && place.Column < fromColumn + 250;
      if (isRight && place.Row > fromRow && place.Row < fromRow + 200) return place;
    }
  }
  ADD_FAILURE() << "no line";
  return {};
}

/// Takes a line there and pulls it so far, with stops on the way.
void Pull(DraggedPoints& points, PixelPoint from, double columns, double rows) {
  ASSERT_TRUE(points.Grab({from.Column + 2, from.Row - 3}, {1, 1}));
  for (const double part : {0.3, 1.0}) {
    points.DragTo({from.Column + 2 + part * columns, from.Row - 3 + part * rows});
  }
  points.Drop();
}

double Apart(PixelPoint a, PixelPoint b) { return std::hypot(a.Column - b.Column, a.Row - b.Row); }

TEST(DraggedPoints, LinesFollowThePointerAndLieAsTheFitTells) {
  DraggedPoints points(Pass(), Coasts());
  EXPECT_EQ(points.Told(), QStringLiteral("Drag a line to where the picture shows it."));
  const PixelPoint a = OnALine(points, 200, 500);
  EXPECT_FALSE(points.Grab({-500, -500}, {1, 1}));
  ASSERT_TRUE(points.Grab({a.Column + 2, a.Row - 3}, {1, 1}));
  const auto grabbed = points.Points()[0].Pixel;
  points.DragTo({a.Column + 10, a.Row - 40});
  const PixelPoint pulled{grabbed.Column + 8, grabbed.Row - 37};
  for (const double most : {0.6, 0.1}) {
    const auto near = points.LineAt(pulled, {1, 1});
    ASSERT_TRUE(near);
    EXPECT_LT(Apart(*near, pulled), most) << "it stays under the pointer";
    points.Drop();
  }
  EXPECT_NEAR(points.Fit().Fitted.OffsetS, -18.5, 0.01);
  EXPECT_TRUE(points.Told().startsWith(QStringLiteral("1 point: time and shift only (time -18.50 s, roll")));

  Pull(points, OnALine(points, 650, 60), 0, 7);
  EXPECT_TRUE(points.Told().startsWith(QStringLiteral("2 points: time, shift and yaw (")));
  EXPECT_GT(std::fabs(points.Fit().Fitted.Offsets.YawDeg), 0.2);
  const auto exact = lines::MapLinesOf(points.Fit().Fitted, &Coasts(), {}).Coasts;
  int compared = 0;
  for (std::size_t i = 0; i < exact.size(); i += 31) {
    const auto drawn = points.LineAt(exact[i].front(), {1, 1});
    ASSERT_TRUE(drawn);
    EXPECT_LT(Apart(*drawn, exact[i].front()), 0.5);
    ++compared;
  }
  EXPECT_GT(compared, 5);
  points.SetThird(Third::Drift);
  EXPECT_EQ(points.Fit().Fitted.Offsets.YawDeg, 0);
  EXPECT_TRUE(points.Told().contains(QStringLiteral("ppm"))) << points.Told().toStdString();
}

TEST(DraggedPoints, EveryStepIsUndoneAndDoneAgain) {
  DraggedPoints points(Pass(), Coasts());
  const PixelPoint a = OnALine(points, 200, 500), b = OnALine(points, 700, 300);
  std::vector<std::pair<double, std::size_t>> seen;
  const auto note = [&] { seen.emplace_back(points.Fit().Fitted.OffsetS, points.Points().size()); };
  note();
  points.Nudge(0, 1);
  EXPECT_NEAR(points.Fit().Fitted.OffsetS, 0.5, 1e-9) << "a row down is a line earlier, where it is turned";
  EXPECT_TRUE(points.Told().startsWith(QStringLiteral("The whole map: time and shift only")));
  note();
  Pull(points, a, 8, -36);
  note();
  Pull(points, {b.Column + 8, b.Row - 36}, 0, 6);
  note();
  points.Nudge(1, -2);
  EXPECT_EQ(points.Chosen(), 1);
  note();
  ASSERT_TRUE(points.Grab(points.Points()[0].Pixel, {1, 1})) << "a point of before";
  points.DragTo({100, 100});
  points.GiveUp();
  EXPECT_NEAR(points.Fit().Fitted.OffsetS, seen.back().first, 1e-6);
  ASSERT_TRUE(points.Grab(points.Points()[0].Pixel, {1, 1}));
  points.Drop();
  EXPECT_EQ(points.Chosen(), 0) << "a click chooses";
  points.Remove();
  EXPECT_EQ(points.Chosen(), -1);
  note();
  for (std::size_t step = seen.size() - 1; step-- > 0;) {
    ASSERT_TRUE(points.CanUndo());
    points.Undo();
    EXPECT_NEAR(points.Fit().Fitted.OffsetS, seen[step].first, 1e-6) << step;
    EXPECT_EQ(points.Points().size(), seen[step].second) << step;
  }
  EXPECT_FALSE(points.CanUndo());
  for (std::size_t step = 1; step < seen.size(); ++step) {
    points.Redo();
    EXPECT_NEAR(points.Fit().Fitted.OffsetS, seen[step].first, 1e-6) << step;
  }
  points.Undo();
  points.Nudge(0, 1);
  EXPECT_FALSE(points.CanRedo()) << "another way was taken";
}

TEST(DraggedPoints, PointsThatContradictAreTold) {
  DraggedPoints points(Pass(), Coasts());
  for (const auto& [column, row] : {std::pair{150, 100}, {150, 600}, {450, 350}, {750, 150}, {750, 500}}) {
    Pull(points, OnALine(points, column, row), 0, 0);
  }
  Pull(points, points.Points()[2].Pixel, 30, 0);
  EXPECT_TRUE(points.Fit().IsLeftOut[2]);
  EXPECT_NEAR(points.Fit().MisfitPixels[2], 30, 1);
  EXPECT_TRUE(points.Told().startsWith(QStringLiteral("4 points: time, shift and yaw; 1 left out (")))
      << points.Told().toStdString();
}

}  // namespace
}  // namespace pelorin::align
