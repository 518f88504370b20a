#include "app/time_zone.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

/// Against the rules that the countries announced, to the second of the switch.
TEST(TimeZone, ClocksAreThoseOfTheMoment) {
  const struct {
    const char* Zone;
    const char* Utc;
    LocalClock Clock;
    YearOffsets Year;
  } rows[] = {
      {"Europe/Dublin", "20240331005959", {0, false, u"GMT"_s}, {0, 60}},
      {"Europe/Dublin", "20240331010000", {60, true, u"IST"_s}, {0, 60}},
      {"Europe/Dublin", "20241027010000", {0, false, u"GMT"_s}, {0, 60}},
      {"Europe/Dublin", "19700115120000", {60, false, u"IST"_s}, {60, 60}},
      {"Africa/Casablanca", "20240310015959", {60, true, u"+01"_s}, {0, 60}},
      {"Africa/Casablanca", "20240310020000", {0, false, u"+00"_s}, {0, 60}},
      {"Africa/Casablanca", "20240414020000", {60, true, u"+01"_s}, {0, 60}},
      {"Australia/Lord_Howe", "20240406145959", {660, true, u"+11"_s}, {630, 660}},
      {"Australia/Lord_Howe", "20240406150000", {630, false, u"+1030"_s}, {630, 660}},
      {"Australia/Lord_Howe", "20241005153000", {660, true, u"+11"_s}, {630, 660}},
      {"Asia/Kolkata", "20240701120000", {330, false, u"IST"_s}, {330, 330}},
      {"America/New_York", "20240310065959", {-300, false, u"EST"_s}, {-300, -240}},
      {"America/New_York", "20240310070000", {-240, true, u"EDT"_s}, {-300, -240}},
      {"America/New_York", "20060320120000", {-300, false, u"EST"_s}, {-300, -240}},
      {"Europe/Moscow", "20140701120000", {240, true, u"MSK"_s}, {180, 240}},
      {"UTC", "20240701120000", {0, false, u"UTC"_s}, {0, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Zone) + " " + row.Utc);
    const TimeZone zone{QTimeZone(row.Zone)};
    const orbit::TDateTime utc = orbit::ParseTimeString(row.Utc);
    const auto clock = zone.At(utc);
    ASSERT_TRUE(clock);
    EXPECT_EQ(clock->OffsetMinutes, row.Clock.OffsetMinutes);
    EXPECT_EQ(clock->IsDaylight, row.Clock.IsDaylight);
    EXPECT_EQ(clock->Name, row.Clock.Name);
    const YearOffsets year = zone.OffsetsIn(TakeApart(utc).Year);
    EXPECT_EQ(year.StandardMinutes, row.Year.StandardMinutes);
    EXPECT_EQ(year.DaylightMinutes, row.Year.DaylightMinutes);
  }
}

TEST(LocalTimeHint, HasTwoFormats) {
  const struct {
    QLocale::Language Language;
    QLocale::Territory Territory;
    const char *Zone, *Utc;
    QString Hint;
  } rows[] = {
      {QLocale::German, QLocale::Germany, "Europe/Berlin", "20011231233005",
       u"2002 January 01  00:30:05  CET"_s},
      {QLocale::German, QLocale::Germany, "America/St_Johns", "20010731003005", u"30.07.01 22:00:05  NDT"_s},
      {QLocale::English, QLocale::UnitedStates, "America/St_Johns", "20010731003005",
       u"7/30/01 10:00:05 PM  NDT"_s},
      {QLocale::Chinese, QLocale::China, "America/St_Johns", "20010731003005", u"2001/7/30 22:00:05  NDT"_s},
      {QLocale::English, QLocale::UnitedStates, "No/Where", "20010731003005", QString()},
  };
  for (const auto& row : rows) {
    QLocale::setDefault(QLocale(row.Language, row.Territory));
    const TimeZone zone{QTimeZone(row.Zone)};
    EXPECT_EQ(LocalTimeHint(orbit::ParseTimeString(row.Utc), zone).toStdString(), row.Hint.toStdString());
  }
  QLocale::setDefault(QLocale::c());
}

}  // namespace
}  // namespace pelorin::app
