#include "elements/element_queries.h"

#include <gtest/gtest.h>

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;

TEST(ElementQueries, FollowTheNameOfTheFile) {
  const struct {
    QString Local, Query, Remote;
  } rows[] = {
      {u"Weather.2LI"_s, u"GROUP=weather"_s, u"weather.txt"_s},
      {u"amateur.radio.tle"_s, u"GROUP=amateur.radio"_s, u"amateur.radio.txt"_s},
      {u"tle-new.csv"_s, u"GROUP=last-30-days"_s, u"tle-new.txt"_s},
      {u"My Sats #1&X=2.TLE"_s, u"GROUP=my%20sats%20%231%26x%3D2"_s, u"my%20sats%20%231%26x%3D2.txt"_s},
      {u"25338.json"_s, u"CATNR=25338"_s, u"25338.txt"_s},
      {u"799500123.csv"_s, u"CATNR=799500123"_s, u"799500123.txt"_s},
      {u"2533800000.csv"_s, u"GROUP=2533800000"_s, u"2533800000.txt"_s}};
  for (const auto& row : rows) {
    EXPECT_EQ(QueryAddress(u"http://h/"_s, row.Local), u"http://h/gp.php?"_s + row.Query + u"&FORMAT=csv"_s);
    EXPECT_EQ(RemoteAddress(u"http://h/"_s, row.Local), u"http://h/"_s + row.Remote);
  }
}

}  // namespace
}  // namespace pelorin::elements
