#include "align/alignment_text.h"

#include <gtest/gtest.h>

namespace pelorin::align {
namespace {

using namespace Qt::StringLiterals;

TEST(AlignmentText, SaysWhatWasFound) {
  swath::Recording before;
  before.OffsetS = -2.5;
  before.Offsets = {-0.1, 0.7, 1.2};
  const auto moved = [&](double timeS, double columns, double rollDeg, double yawDeg) {
    swath::Recording after = before;
    after.OffsetS += timeS;
    after.ShiftColumns += columns;
    after.Offsets.RollDeg += rollDeg;
    after.Offsets.YawDeg += yawDeg;
    return after;
  };
  const struct {
    const char* Label;
    Finding Is;
    swath::Recording After;
    double ChancePeaks;
    NotFoundFor Reason;
    QString Text;
  } rows[] = {
      {"later, less yaw", Finding::Found, moved(1.24, 0, 0, -0.3), 1e-9, NotFoundFor::Nothing,
       u"Found: 1.24 s later, 0.30° less yaw (chance: fewer than 1 in a million)."_s},
      {"everything", Finding::Found, moved(-12, -1.54, 0.25, 0.5), 2e-4, NotFoundFor::Nothing,
       u"Found: 12.00 s earlier, lines 1.5 columns more to the left, 0.25° more roll, 0.50° more yaw (chance: fewer than 1 in 1,000)."_s},
      {"what rounds to nothing", Finding::Found, moved(0.001, 0.04, -0.001, 0), 0.003, NotFoundFor::Nothing,
       u"Found: where it lies already (chance: fewer than 1 in 100)."_s},
      {"roughly", Finding::Roughly, moved(11.7, 0, 0, 0), 1e-5, NotFoundFor::Nothing,
       u"Found roughly: 12 s later. To about 2 s, please check."_s},
      {"one colour", Finding::NotFound, before, 1, NotFoundFor::OneColour,
       u"Not found: The picture shows nothing: it is of one colour. Nothing was changed."_s},
      {"stopped", Finding::Stopped, before, 0, NotFoundFor::Nothing, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    PictureAlignment found;
    found.Is = row.Is;
    found.Reason = row.Reason;
    found.Aligned = row.After;
    found.ChancePeaks = row.ChancePeaks;
    EXPECT_EQ(TextOf(found, before), row.Text);
  }
  // Of a power of ten itself, and where logarithms end.
  EXPECT_EQ(ChanceText(1e-5), u"fewer than 1 in 100,000"_s);
  EXPECT_EQ(ChanceText(0), u"fewer than 1 in a million"_s);
  EXPECT_EQ(ChanceText(3), u"likely"_s);
}

}  // namespace
}  // namespace pelorin::align
