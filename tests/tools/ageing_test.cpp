#include "tools/ageing.h"

#include <gtest/gtest.h>

#include "orbit/scalar_math.h"
#include "orbit/sgp4.h"
#include "tests/support/tables.h"

namespace pelorin::tools {
namespace {

/// The set that a satellite without drag would have some days later, were it then `aheadKm` ahead.
orbit::TSatellite Later(const orbit::TSatellite& set, double days, double aheadKm) {
  const orbit::OrbitTerms terms = orbit::InitialiseSgp4(set).terms;
  orbit::TSatellite later = set;
  later.Propagator = {};
  later.Epoch += days;
  const double minutes = days * 1440;
  later.MeanAnomaly = set.MeanAnomaly + terms.xmdot * minutes + aheadKm / 7228;
  later.ArgumentOfPerigee = set.ArgumentOfPerigee + terms.omgdot * minutes;
  later.RightAscensionOfNode = set.RightAscensionOfNode + terms.xnodot * minutes;
  return later;
}

TEST(Ageing, LawIsFoundThroughWhatWasMadeWrong) {
  orbit::TSatellite first = tests::DemonstrationSatellite("NOAA 19");
  first.BStar = 0;
  std::vector<orbit::TSatellite> sets;
  // Each of these satellites has two sets; that of later on is ahead as the square of the days has it.
  for (int days = 1; days <= 40; ++days) {
    first.CatalogueNumber = std::to_string(30000 + days);
    sets.push_back(first);
    sets.push_back(Later(first, days, 0.2 * days * days));
  }
  const elements::AgeingLaw clean = MeasureAgeing(sets, 60, 50).begin()->second.Law;
  EXPECT_NEAR(clean.BoundKm(10), 20, 1);
  EXPECT_NEAR(clean.BoundKm(40), 320, 10);
  EXPECT_EQ(clean.Sets, 80);
  EXPECT_EQ(clean.Satellites, 40);
  EXPECT_NEAR(clean.LongestDays, 40, 0.01);

  first.CatalogueNumber = "40000";
  for (int days = 0; days < 8; ++days)
    sets.push_back(Later(first, days, days == 4 ? 5000 : 0.2 * days * days));
  const auto spoilt = MeasureAgeing(sets, 60, 50);
  EXPECT_LT(spoilt.begin()->second.Law.BoundKm(40), 400) << "a twelfth of what is off by that set alone";
  EXPECT_EQ(spoilt.begin()->second.Law.Sets, 87) << "all but the one that lies far off";
  EXPECT_TRUE(MeasureAgeing({sets.begin(), sets.begin() + 20}, 60, 50).empty()) << "too few to tell";
}

}  // namespace
}  // namespace pelorin::tools
