#include <gtest/gtest.h>

#include <utility>

#include "orbit/scalar_math.h"
#include "overlay/flight_replay.h"
#include "tests/support/recordings.h"
#include "tests/support/tables.h"

namespace pelorin::overlay {
namespace {

constexpr int kWidth = 3;

/// The first pixel of each row, the lines having been numbered.
std::vector<int> Rows(const FlightImage& flight) {
  std::vector<int> rows;
  for (int y = 0; y < flight.Image().height(); ++y) {
    rows.push_back(static_cast<int>(flight.Image().pixel(0, y) & 0xFF));
  }
  return rows;
}

void DrawLines(FlightImage& flight, std::uint32_t first, std::uint32_t last) {
  for (std::uint32_t line = first; line <= last; ++line) {
    std::uint32_t pixel = 0xFF000000U + line;
    for (std::uint32_t& target : flight.NextRow()) target = std::exchange(pixel, pixel + 0x010000U);
  }
}

TEST(FlightImage, LinesEnterAndGiveWayOnTheSideOfTheDirectionAlsoWhenTurned) {
  FlightImage south(kWidth, 11, true), north(kWidth, 11, false);
  DrawLines(south, 1, 12);
  DrawLines(north, 1, 12);
  EXPECT_EQ(Rows(south), std::vector<int>({9, 10, 11, 12, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Rows(north), std::vector<int>({0, 0, 0, 0, 0, 0, 0, 12, 11, 10, 9}));

  FlightImage flight(kWidth, 9, true);
  DrawLines(flight, 1, 3);
  flight.Turn();
  EXPECT_EQ(Rows(flight), std::vector<int>({0, 0, 0, 0, 0, 0, 0x03, 0x02, 0x01}));
  EXPECT_EQ(flight.Image().pixel(0, 6), 0xFF020003U) << "the row's pixels are turned, too";
  EXPECT_EQ(flight.Image().pixel(2, 6), 0xFF000003U);
  DrawLines(flight, 4, 5);
  EXPECT_EQ(Rows(flight), std::vector<int>({0, 0, 0, 0, 5, 4, 3, 2, 1}));
  flight.Turn();
  DrawLines(flight, 6, 6);
  EXPECT_EQ(Rows(flight), std::vector<int>({1, 2, 3, 4, 5, 6, 0, 0, 0}));
}

/// NOAA 12 at the time of its elements.
class FlightReplayTest : public testing::Test {
 protected:
  void Start(orbit::TDateTime now, int height = 600) {
    flight.Start(tests::RecordingOf(tests::ReferenceSatellite("NOAA 12")), {}, Marks::None, now, height);
  }
  static orbit::TDateTime At(double seconds) {
    return {orbit::MakeDateTime(1999, 2, 3, 9, 0, 2).Days + seconds / 86400};
  }

  FlightReplay flight;
};

TEST_F(FlightReplayTest, LinesComeAtTheSatellitesRate) {
  Start(At(0));
  EXPECT_EQ(flight.Tick(At(0)), 21) << "ten seconds at once, and the line that begins now";
  // Two seconds after the full minute: black and white mark it.
  for (const auto& [line, space] : {std::pair{14, 128U}, {16, 0U}, {18, 255U}, {20, 128U}}) {
    EXPECT_EQ(flight.Picture()->Image().pixel(60, line) & 0xFF, space) << line;
  }
  const struct {
    const char* Label;
    double Seconds;
    int Lines;
  } ticks[] = {
      {"a tick", 0.1, 0},
      {"a line is due", 0.5, 1},
      {"the same moment again", 0.5, 0},
      {"the clock was set back", -60, 0},
      {"a pause of five seconds", 5.5, 10},
      {"a night's sleep", 36000, 600},
      {"on from there", 36000.6, 1},
  };
  int lines = 21;
  for (const auto& tick : ticks) {
    EXPECT_EQ(flight.Tick(At(tick.Seconds)), tick.Lines) << tick.Label;
    lines += tick.Lines;
    EXPECT_EQ(flight.Lines(), lines) << tick.Label;
  }
  EXPECT_EQ(FlightStatus(flight.Lines(), At(0.07)), QStringLiteral(" Line: 0633 1999 Feb 03  09:00:02.07"));
}

TEST_F(FlightReplayTest, StopsAtTheTickAfterTheRequest) {
  Start(At(0));
  flight.Tick(At(0));
  flight.RequestStop();
  EXPECT_TRUE(flight.Running());
  EXPECT_EQ(flight.Tick(At(0.6)), 1) << "the tick that ends it still draws";
  EXPECT_FALSE(flight.Running());
  EXPECT_FALSE(flight.StopRequested());
  EXPECT_EQ(flight.Tick(At(9)), 0);
}

TEST_F(FlightReplayTest, ElementsWithoutAPositionAreRefused) {
  constexpr double dayOfTurns = orbit::kTwoPi / 1440;
  const struct {
    const char* Label;
    double TurnsPerDay, Eccentricity, Age;
  } rows[] = {
      {"it stands still", 0, 0.001, 0},
      {"nearly a parabola, through the Earth", 14.2, 0.9999999, 0},
      {"come down", 15.8, 0.001, 1000},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    Start(At(0));
    flight.Tick(At(0));
    const QImage before = flight.Picture()->Image().copy();
    orbit::TSatellite lost = tests::ReferenceSatellite("NOAA 12");
    lost.MeanMotion = row.TurnsPerDay * dayOfTurns;
    lost.Eccentricity = row.Eccentricity;
    lost.Epoch -= row.Age;
    lost.Propagator = {};
    EXPECT_THROW(flight.Start(tests::RecordingOf(lost), {}, Marks::None, At(0), 100), OverlayError);
    EXPECT_FALSE(flight.Running());
    EXPECT_EQ(flight.Tick(At(60)), 0);
    EXPECT_EQ(flight.Picture()->Image(), before) << "the last flight is still seen";
  }
}

}  // namespace
}  // namespace pelorin::overlay
