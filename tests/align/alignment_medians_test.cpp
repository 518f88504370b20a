#include "align/alignment_medians.h"

#include <gtest/gtest.h>

#include "tests/align/logged.h"

namespace pelorin::align {
namespace {

using namespace Qt::StringLiterals;
using tests::LoggedAt;

TEST(AlignmentMedians, TheStationsClockIsThatOfItsNearestPictures) {
  const LoggedAlignment picture = LoggedAt("20220223120000", 0);
  LoggedAlignment stamped = LoggedAt("20220223000000", 90), toMinute = stamped, rough = stamped;
  stamped.StartIsFrom = swath::StartFrom::Stamps;
  toMinute.StartIsFrom = swath::StartFrom::NameMinute;
  rough.How = FoundBy::CoastsRoughly;
  LoggedAlignment other = LoggedAt("20220222000000", 1.2);
  other.CatalogueNumber = u"28654"_s;
  const auto old = LoggedAt("20211201000000", 50), own = LoggedAt("20220223120000", 60);
  const auto a = LoggedAt("20220221000000", 1.4), b = LoggedAt("20220220000000", 3),
             c = LoggedAt("20220219000000", 1), d = LoggedAt("20220218000000", 1.3),
             e = LoggedAt("20220217000000", 99), later = LoggedAt("20220224000000", 2);
  const struct {
    const char* Label;
    std::vector<LoggedAlignment> Log;
    QString Text;
  } rows[] = {
      {"nothing", {}, {}},
      {"not of the recorder's clock, rough, too old, or the picture's own",
       {stamped, toMinute, rough, old, own},
       {}},
      {"a single one", {a}, u"Clock: take +1.4 s, as of the last picture"_s},
      {"even number", {a, b}, u"Clock: take +2.2 s, the median of the last 2"_s},
      {"whatever satellite, five at most",
       {e, d, other, a, stamped, b, c},
       u"Clock: take +1.3 s, the median of the last 5"_s},
      {"opened out of turn", {later, a, b}, u"Clock: take +2.0 s, the median of the nearest 3"_s},
      {"what it has", {LoggedAt("20220222000000", 0.2)}, {}},
  };
  for (const auto& row : rows) {
    const auto offer = OfferClock(row.Log, picture);
    EXPECT_EQ(offer ? TextOf(*offer) : QString(), row.Text) << row.Label;
  }
  LoggedAlignment byStamps = picture;
  byStamps.StartIsFrom = swath::StartFrom::Stamps;
  const std::vector<LoggedAlignment> log{a, b};
  EXPECT_FALSE(OfferClock(log, byStamps)) << "its clock is the satellite's";
  EXPECT_EQ(TipOf(*OfferClock(log, picture)),
            u"What the recorder's clock was off, by pictures that you have aligned:\n"
            "2022 Feb 21 00:00  NOAA 19  +1.4 s\n2022 Feb 20 00:00  NOAA 19  +3.0 s"_s);
}

TEST(AlignmentMedians, HowASatelliteFliesIsOfItsSeasonAndScanner) {
  const auto at = [](const char* start, double roll, double yaw) {
    LoggedAlignment one = LoggedAt(start, 0);
    one.Offsets = {roll, 5, yaw};
    return one;
  };
  const LoggedAlignment picture = at("20220115120000", 0, 0);
  const auto jan = at("20210101000000", -0.1, 0.4), dec = at("20201231000000", -0.3, 0.6),
             feb = at("20220201000000", -0.2, 0.2), mar = at("20220301000000", 9, 9);
  LoggedAlignment other = jan, wide = jan, rough = jan;
  other.CatalogueNumber = u"28654"_s;
  wide.ScannerColumns = 2048;
  rough.How = FoundBy::CoastsRoughly;
  const QString text = u"Attitude: take roll \u22120.20°, yaw 0.40°, the median of 3"_s;
  const struct {
    const char* Label;
    std::vector<LoggedAlignment> Log;
    QString Text;
  } rows[] = {
      {"New Year between them", {jan, dec, feb}, text},
      {"others", {jan, mar, other, dec, wide, feb, rough}, text},
      {"too few", {jan, feb, mar, other, wide, rough}, {}},
      {"less than a column", {at("20220101000000", 0.04, 0), jan, at("20220103000000", 0.04, -0.04)}, {}},
  };
  for (const auto& row : rows) {
    const auto offer = OfferAttitude(row.Log, picture);
    EXPECT_EQ(offer ? TextOf(*offer) : QString(), row.Text) << row.Label;
  }
}

}  // namespace
}  // namespace pelorin::align
