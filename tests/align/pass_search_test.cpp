#include "align/pass_search.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/painted_pass.h"
#include "tests/support/tables.h"

namespace pelorin::align {
namespace {

using swath::Recording;

/// Pictures of passes over a station, of which nothing is known but their width.
class PassSearchTest : public testing::Test {
 protected:
  PassSearchTest() : shores_(lines::FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"))) {
    std::vector<std::string> problems;
    scanners_ = swath::LoadScannerTables({QStringLiteral(PELORIN_SCANNERS)}, problems);
  }

  std::vector<PassCandidate> Candidates(QSize size, double latitudeDeg, double longitudeDeg) const {
    const std::vector<orbit::TSatellite> satellites{tests::DemonstrationSatellite("NOAA 15"),
                                                    tests::DemonstrationSatellite("NOAA 18"),
                                                    tests::DemonstrationSatellite("NOAA 19")};
    return CandidatesOf(size, satellites, scanners_, orbit::ObserverFromDegrees(latitudeDeg, longitudeDeg, 0),
                        orbit::MakeDateTime(2022, 2, 23), 1);
  }

  Ground Earth() const { return {earth_.Surfaces(), &*shores_}; }

  tests::PaintedEarth earth_;
  std::optional<lines::FineLines> shores_;
  swath::ScannerTable scanners_;
};

TEST_F(PassSearchTest, FindsTheOneAndHowItIsStored) {
  const struct {
    const char* Label;
    QSize Size;
    double AfterRiseS;
    swath::Stored Lies;
    tests::Weather Weather;
  } rows[] = {
      {"north up", {909, 1200}, 100, {true, false}, {0.4, 10}},
      {"as received, begun before the rise", {909, 1300}, -50, {false, false}, {0.3, 20, true, 3}},
      {"mirrored", {2048, 2400}, 60, {false, true}, {0.3, 5}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const std::vector<swath::Stored> ways{{!row.Lies.Turned, row.Lies.Mirrored}, row.Lies};
    const auto candidates = Candidates(row.Size, 48, 12);
    ASSERT_GT(candidates.size(), 2u);
    const std::size_t truth = candidates.size() / 2;
    Recording recording = candidates[truth].Recording;
    recording.Start.Days += row.AfterRiseS / orbit::kSecondsPerDay;
    recording.Lies = row.Lies;
    const QImage picture = tests::PaintedPass(recording, earth_, row.Weather);
    double last = -1;
    const PassSearch search =
        FindPass(candidates, ways, std::span(&picture, 1), Earth(), [&last](double share) {
          EXPECT_GE(share, last);
          last = share;
          return true;
        });
    ASSERT_EQ(search.Places.size(), candidates.size() * ways.size());
    EXPECT_EQ(search.Places.front().Candidate, truth);
    EXPECT_EQ(search.Places.front().Lies, row.Lies);
    EXPECT_NEAR(search.Places.front().TimeS, row.AfterRiseS, 4);
    EXPECT_TRUE(search.IsClear()) << search.Margin;
    ASSERT_TRUE(search.Best);
    EXPECT_NEAR((search.Best->Aligned.FirstLine().Days - recording.FirstLine().Days) * orbit::kSecondsPerDay,
                0, 0.5);
  }
}

TEST_F(PassSearchTest, AnAlignmentTellsHowThePictureIsStored) {
  Recording recording = Candidates({909, 1000}, 48, 12).front().Recording;
  const auto storedAs = [&](const swath::Stored& truth, const swath::Stored& known) {
    recording.Lies = truth;
    const QImage picture = tests::PaintedPass(recording, earth_, {0.3, 5});
    recording.Lies = known;
    const auto found =
        AlignInAnyWay(recording, std::span(&picture, 1), Earth(), {}, [](double) { return true; });
    EXPECT_EQ(found.Is == Finding::Found, truth == known);
    return found.StoredAs;
  };
  EXPECT_EQ(storedAs({true, false}, {true, false}), std::nullopt);
  EXPECT_EQ(storedAs({true, false}, {false, false}), swath::Stored({true, false}));
  EXPECT_EQ(storedAs({false, true}, {true, false}), swath::Stored({false, true}));
}

TEST_F(PassSearchTest, SaysWhenNoneIsClear) {
  const std::vector<swath::Stored> ways{{false, false}, {true, false}};
  const auto candidates = Candidates({909, 1000}, 48, 12);
  Recording elsewhere = candidates.front().Recording;
  elsewhere.Start.Days += 0.27;
  const QImage picture = tests::PaintedPass(elsewhere, earth_, {0.3, 5});
  const auto search =
      FindPass(candidates, ways, std::span(&picture, 1), Earth(), [](double) { return true; });
  EXPECT_FALSE(search.Places.empty());
  EXPECT_FALSE(search.IsClear()) << search.Margin;

  EXPECT_TRUE(
      FindPass({}, ways, std::span(&picture, 1), Earth(), [](double) { return true; }).Places.empty());
  EXPECT_TRUE(
      FindPass(candidates, ways, std::span(&picture, 1), Earth(), [](double share) { return share < 0.3; })
          .Places.empty())
      << "ended";
  EXPECT_TRUE(Candidates({1568, 1000}, 48, 12).empty()) << "none of them sends such pictures";
}

}  // namespace
}  // namespace pelorin::align
