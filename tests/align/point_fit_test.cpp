#include "align/point_fit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "tests/support/tables.h"

namespace pelorin::align {
namespace {

using swath::PixelPoint;
using swath::Recording;
using swath::ScanLaw;

Recording PassSeenBy(const swath::LineShape& line, double rowsPerSecond, int rows) {
  Recording recording;
  recording.Elements = std::make_shared<const orbit::TSatellite>(tests::DemonstrationSatellite("NOAA 19"));
  recording.SeenBy = {"scanner", line, rowsPerSecond, false};
  recording.Start = orbit::MakeDateTime(2022, 2, 23, 7, 55);
  recording.Rows = rows;
  recording.Columns = line.Columns;
  return recording;
}

Recording Apt(ScanLaw law = ScanLaw::Zones) { return PassSeenBy({909, 110.74, law}, 2, 1200); }
Recording Lrpt() { return PassSeenBy({1568, 110.1, ScanLaw::EvenAngles}, 6.498, 4000); }

/// In a file with a frame, turned.
Recording Turned(Recording recording) {
  recording.Columns += 131;
  recording.FirstColumn = 86;
  recording.Lies.Turned = true;
  return recording;
}

/// 300 lines in the middle came half a minute late, and the ten before them not at all.
Recording Parted(Recording recording) {
  std::vector<double> seconds;
  for (int line = 0; line < recording.Rows; ++line) {
    const int late = line - recording.Rows / 2;
    const double lost = late < 0 && late >= -10 ? std::nan("") : 0;
    seconds.push_back(line / recording.SeenBy.RowsPerSecond + (late < 0 ? 0 : 30) + lost);
  }
  recording.LineTimesS = std::make_shared<const std::vector<double>>(seconds);
  return recording;
}

/// What a recording is off by; the shift is a roll where the law knows one.
struct Off {
  double Seconds = 0, RollDeg = 0, Columns = 0, YawDeg = 0, DriftPpm = 0;
};

Recording With(Recording recording, const Off& off) {
  recording.OffsetS += off.Seconds;
  recording.Offsets.RollDeg += off.RollDeg;
  recording.Offsets.YawDeg += off.YawDeg;
  recording.ShiftColumns += off.Columns;
  recording.DriftPpm += off.DriftPpm;
  return recording;
}

/// A point of a received line, by shares of the scanner's columns and of the lines.
struct Place {
  double Across, Along;
  double MissedBy = 0;  ///< pixels, by who shows it
};

/// What a picture shows there.
TiePoint Shown(const Recording& truth, const Place& place) {
  const PixelPoint pixel =
      swath::InFile(truth, {truth.FirstColumn + place.Across * (truth.SeenBy.Line.Columns - 1),
                            std::round(place.Along * (truth.Rows - 1))});
  const auto ground = swath::PixelGeometry(truth).GroundOf(pixel);
  EXPECT_TRUE(ground);
  return {*ground, {pixel.Column + 0.6 * place.MissedBy, pixel.Row - 0.8 * place.MissedBy}};
}

PointFit Fit(const Recording& recording, const Off& off, const std::vector<Place>& places, Third third) {
  std::vector<TiePoint> points;
  for (const Place& place : places) points.push_back(Shown(With(recording, off), place));
  return FitPoints(recording, points, third);
}

TEST(PointFit, GetsBackWhatARecordingIsOffBy) {
  const Off lateAndTurned{3.2, 0.4, 0, -1.2}, early{-70, -0.3};
  const std::vector<Place> one{{0.3, 0.4}}, two{{0.2, 0.3}, {0.9, 0.5}};
  const std::vector<Place> many{{0.1, 0.1}, {0.95, 0.2}, {0.5, 0.3}, {0.3, 0.9}, {0.8, 0.95}};
  const struct {
    const char* Label;
    Recording Base;
    Off By;
    std::vector<Place> Places;
    align::Third Third;
    Untold Why;
  } rows[] = {
      {"old format, one point", Apt(), early, one, Third::Yaw, Untold::TooFew},
      {"turned in its file, two points", Turned(Apt()), lateAndTurned, two, Third::Yaw, Untold::Nothing},
      {"even angles, many points", Lrpt(), lateAndTurned, many, Third::Yaw, Untold::Nothing},
      {"with a gap", Parted(Lrpt()), lateAndTurned, many, Third::Yaw, Untold::Nothing},
      {"over a gap", Turned(Parted(Apt())), early, {{0.3, 0.4}, {0.4, 0.7}}, Third::Yaw, Untold::TooClose},
      {"table on a sphere",
       Turned(Apt(ScanLaw::ZonesSphere)),
       {-4.4, 0, 6.3},
       two,
       Third::Yaw,
       Untold::DoesNotTurn},
      {"a clock's drift", Lrpt(), {8, -0.2, 0, 0, 900}, many, Third::Drift, Untold::Nothing},
      {"a drift with a gap, by two",
       Parted(Apt(ScanLaw::ZonesSphere)),
       {8, 0, -3, 0, -700},
       {{0.1, 0.1}, {0.2, 0.8}},
       Third::Drift,
       Untold::Nothing},
      {"points at one distance", Apt(), early, {{0.31, 0.3}, {0.33, 0.9}}, Third::Yaw, Untold::TooClose},
      {"points in one line", Apt(), early, {{0.1, 0.5}, {0.9, 0.51}}, Third::Drift, Untold::TooClose},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const PointFit fit = Fit(row.Base, row.By, row.Places, row.Third);
    const Recording truth = With(row.Base, row.By);
    EXPECT_EQ(fit.WhyNoThird, row.Why);
    EXPECT_NEAR(fit.Fitted.OffsetS, truth.OffsetS, 0.004);
    EXPECT_NEAR(fit.Fitted.Offsets.RollDeg, truth.Offsets.RollDeg, 0.002);
    EXPECT_NEAR(fit.Fitted.ShiftColumns, truth.ShiftColumns, 0.02);
    EXPECT_NEAR(fit.Fitted.Offsets.YawDeg, truth.Offsets.YawDeg, 0.002);
    EXPECT_NEAR(fit.Fitted.DriftPpm, truth.DriftPpm, 2);
    for (const double misfit : fit.MisfitPixels) EXPECT_LT(misfit, 0.02);
    EXPECT_EQ(std::count(fit.IsLeftOut.begin(), fit.IsLeftOut.end(), true), 0);
  }
}

TEST(PointFit, PointsThatContradictTheOthersAreLeftOut) {
  const Off off{3.2, 0.4, 0, -1.2};
  const struct {
    const char* Label;
    std::vector<Place> Places;
    std::vector<std::size_t> LeftOut;
  } rows[] = {
      {"one of five", {{0.1, 0.1}, {0.9, 0.2, 30}, {0.5, 0.3}, {0.3, 0.9}, {0.8, 0.95}}, {1}},
      {"two of seven, among rough ones",
       {{0.1, 0.1, 0.5},
        {0.9, 0.2, 30},
        {0.5, 0.3, -0.6},
        {0.3, 0.9, 0.4},
        {0.8, 0.95, -0.5},
        {0.05, 0.5, -12},
        {0.6, 0.7, 0.5}},
       {1, 5}},
      {"nobody knows which of three", {{0.1, 0.1}, {0.9, 0.2, 30}, {0.5, 0.3}}, {}},
      {"one for yaw is not outvoted", {{0.1, 0.1}, {0.12, 0.3}, {0.14, 0.6}, {0.9, 0.5, 30}}, {}},
      {"rough ones are no liars", {{0.1, 0.1, 2}, {0.9, 0.2, -2.5}, {0.5, 0.3, 2}, {0.3, 0.9, -2}}, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const PointFit fit = Fit(Turned(Apt()), off, row.Places, Third::Yaw);
    for (std::size_t i = 0; i < row.Places.size(); ++i) {
      const bool isExpected = std::ranges::find(row.LeftOut, i) != row.LeftOut.end();
      EXPECT_EQ(fit.IsLeftOut[i], isExpected) << i;
      if (isExpected) {
        EXPECT_NEAR(fit.MisfitPixels[i], std::fabs(row.Places[i].MissedBy), 2) << i;
      }
    }
    if (row.LeftOut.empty()) continue;
    EXPECT_NEAR(fit.Fitted.OffsetS, off.Seconds, 0.3);
    EXPECT_NEAR(fit.Fitted.Offsets.YawDeg, off.YawDeg, 0.15);
  }
}

TEST(PointFit, PointsOfNoUseChangeNothing) {
  const Recording apt = Parted(Apt());
  const TiePoint good = Shown(With(apt, {3.2, 0.4}), {0.3, 0.4});
  const TiePoint beyond{{-60, 100}, {300, 300}}, lost{good.Ground, {300, 595}},
      nowhere{good.Ground, {std::nan(""), 20}};
  const PointFit fit = FitPoints(apt, std::vector{beyond, good, lost, nowhere}, Third::Yaw);
  EXPECT_NEAR(fit.Fitted.OffsetS, 3.2, 0.004);
  EXPECT_EQ(fit.IsLeftOut, (std::vector{true, false, true, true}));
  EXPECT_TRUE(std::isnan(fit.MisfitPixels[0]) && std::isnan(fit.MisfitPixels[2]));
  EXPECT_EQ(FitPoints(apt, {}, Third::Drift).Fitted.OffsetS, 0);
  const PointFit far = FitPoints(apt, std::vector<TiePoint>{{good.Ground, {9e9, -9e9}}}, Third::Yaw);
  EXPECT_TRUE(far.IsLeftOut[0]) << "no line is there";
  const PointFit wild = FitPoints(Apt(), std::vector<TiePoint>{{good.Ground, {9e9, -9e9}}}, Third::Yaw);
  EXPECT_EQ(std::fabs(wild.Fitted.Offsets.RollDeg), swath::kMostTurnedDeg);
}

}  // namespace
}  // namespace pelorin::align
