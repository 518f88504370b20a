#include <gtest/gtest.h>

#include <cmath>
#include <ctime>

#include "orbit/comma_text.h"
#include "orbit/date_time.h"
#include "orbit/element_fields.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"
#include "orbit/time_stamp.h"
#include "tests/support/tables.h"

namespace pelorin::orbit {
namespace {

TEST(ScalarMath, AnglesStayInTheirRanges) {
  const struct {
    double sinPart, cosPart, angle;
  } rows[] = {{-1, 1, -kPi / 4}, {0, -1, kPi},        {-1, 0, 1.5 * kPi},  {0, 0, 1.5 * kPi},
              {1, 0, kPi / 2},   {1, -1, 0.75 * kPi}, {-1, -1, 1.25 * kPi}};
  for (const auto& row : rows) {
    EXPECT_DOUBLE_EQ(AcTan(row.sinPart, row.cosPart), row.angle) << row.sinPart << " " << row.cosPart;
  }
  EXPECT_DOUBLE_EQ(FMod2p(-0.5), kTwoPi - 0.5);
  EXPECT_LT(FMod2p(-1e-17), kTwoPi);
  EXPECT_TRUE(std::isnan(FMod2p(std::nan(""))));
  EXPECT_THROW(Power(0, 2), MathError);
  EXPECT_THROW(Power(std::nan(""), 2), MathError);
  EXPECT_NEAR(Power(10, -3), 1e-3, 1e-18);
}

TEST(ElementFields, ReadNumbersAsTheyStandInElementLines) {
  const struct {
    const char* text;
    double real;
    int integer;
  } rows[] = {{"   ", 0, 0},  {" .5", 0.5, 0}, {"-1.5", -1.5, 0}, {" 12", 12, 12},
              {"-4", -4, -4}, {"1A2", 0, 0},   {"inf", 0, 0},     {"99999999999", 99999999999.0, 0},
              {"+-1", 0, 0}};
  for (const auto& row : rows) {
    EXPECT_DOUBLE_EQ(RealField(row.text, 1, 14), row.real) << row.text;
    EXPECT_EQ(IntegerField(row.text, 1, 14), row.integer) << row.text;
  }
  EXPECT_EQ(IntegerField("12345", 4, 9), 45);
  EXPECT_EQ(IntegerField("12345", 7, 2), 0);
}

TEST(DateTime, WritesMomentsByPattern) {
  const TDateTime moment = MakeDateTime(2024, 2, 29, 23, 59, 58, 999);
  EXPECT_EQ(FormatDateTime("mmddhhnnss", moment), "0229235958");
  EXPECT_EQ(FormatDateTime("yyyy mmm dd, hh:nn-zzz", moment), "2024 Feb 29, 23:59-999");
  // A millisecond from the end of a day, rounding carries into the next one.
  EXPECT_EQ(FormatDateTime("yyyymmdd hhnn", {moment.Days + 1.0007 / 86400}), "20240301 0000");
  EXPECT_EQ(MakeDateTime(1899, 12, 30).Days, 0);
  EXPECT_EQ(MakeDateTime(2000, 1, 1, 12).Days, 36526.5);
  EXPECT_THROW(MakeDateTime(2023, 2, 29), ConvertError);
  EXPECT_THROW(MakeDateTime(2023, 2, 28, 24), ConvertError);
  EXPECT_NEAR(NowUTC().Days, 25569 + static_cast<double>(std::time(nullptr)) / 86400, 0.01);
}

TEST(DateTime, ReadsPassStrings) {
  const TDateTime now = MakeDateTime(2022, 7, 9, 1, 2, 3);
  const std::pair<const char*, const char*> rows[] = {
      {"1115143005", "20221115143005"},   {"20011115143005", "20011115143005"},
      {"1231000000", "20221231000000"},   {"12312359", "20221231235900"},
      {"200104121831", "20010412183100"}, {"02222038", "20220222203800"}};
  for (const auto& [text, moment] : rows) {
    EXPECT_EQ(FormatDateTime("yyyymmddhhnnss", ParseTimeString(text, now)), moment) << text;
  }
  for (const char* bad : {"", "1115", "11x51430", "13011200", "0230120000", "02-81200", "0228126000",
                          "022812000", "0228120000000000"}) {
    EXPECT_THROW(ParseTimeString(bad, now), ConvertError) << bad;
  }
}

TEST(JulianDate, AgreesWithPublishedDates) {
  EXPECT_EQ(JulianDateOfYear(1980), 2444238.5);  // 1980 January 0.0 (Astronomical Almanac)
  EXPECT_EQ(JulianDateOfDateTime(MakeDateTime(2000, 1, 1, 12)), 2451545.0);
  EXPECT_NEAR(JulianDateOfDateTime(MakeDateTime(1957, 10, 4, 19, 26, 24)), 2436116.31,
              1e-8);  // Meeus, example 7.a
  EXPECT_DOUBLE_EQ(JulianDateOfEpoch(99365.5), JulianDateOfDateTime(MakeDateTime(1999, 12, 31, 12)));
  EXPECT_DOUBLE_EQ(JulianDateOfEpoch(56001.0), JulianDateOfDateTime(MakeDateTime(2056, 1, 1)));
  EXPECT_DOUBLE_EQ(JulianDateOfEpoch(57001.0), JulianDateOfDateTime(MakeDateTime(1957, 1, 1)));
  EXPECT_EQ(DayOfYear(2000, 12, 31), 366);
  EXPECT_EQ(DayOfYear(2100, 3, 1), 60);
  // Garbage in the columns is no date, and never the newest one.
  for (const double epoch : {1e14, -5.0, 22999.5})
    EXPECT_LT(JulianDateOfEpoch(epoch), JulianDateOfEpoch(22053.5));
  EXPECT_EQ(FormatDateTime("yyyy", {1e100}), "1899");
  const TDateTime moment = MakeDateTime(2019, 5, 21, 15, 25, 38, 250);
  EXPECT_NEAR(DateTimeOfJulianDate(JulianDateOfDateTime(moment)).Days, moment.Days, 1e-9);
}

TEST(JulianDate, TextsRoundAndCarry) {
  const double midnight = JulianDateOfDateTime(MakeDateTime(2001, 11, 15));
  EXPECT_EQ(JulianDateToString(midnight - 0.4 / 86400, 0), "2001 Nov 15");
  EXPECT_EQ(JulianDateToString(midnight - 0.4 / 86400, 1), "2001 Nov 14");
  EXPECT_EQ(JulianDateToString(2451545.0, 0), "2000 Jan 01");
  EXPECT_EQ(TimeOfDayToString(0.5 + 1.26 / 86400, 1, true), "12:00:01.3");
  EXPECT_EQ(TimeOfDayToString(0.5 + 61.0 / 86400, 0, false), "120101");
  EXPECT_EQ(TimeOfDayToString(0.9999999, 0, true), "00:00:00");
}

TEST(SteppedTime, MinutesCarryIntoHourAndDate) {
  const struct {
    const char *Label, *Before, *Date;
    int Hour, Minute;
    const char* After;
  } rows[] = {
      {"up over the year's end", "20011231235930", "20011231000000", 23, 0, "2002-01-01 00:00:00.000"},
      {"down over midnight", "20010301000000", "20010301000000", 0, 59, "2001-02-28 23:59:00.000"},
      {"hour and minute typed", "20010412175901", "20010412000000", 18, 0, "2001-04-12 18:00:00.000"},
      {"58 to 0 is no step", "20010412175801", "20010412000000", 17, 0, "2001-04-12 17:00:00.000"},
      {"date with a time in it", "20010412175837", "20010514101112", 17, 58, "2001-05-14 17:58:00.000"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", SteppedTime(ParseTimeString(row.Date), row.Hour,
                                                                    row.Minute, ParseTimeString(row.Before))),
              row.After)
        << row.Label;
  }
}

TEST(TimeStamp, NamesOfPicturesTellTheirTime) {
  const struct {
    const char *Name, *Time;
    int Seconds = -1;  // −1: none
  } rows[] = {{"05211525V.png", "2019-05-21 15:25"},
              {"0521152538-2.jpg", "2019-05-21 15:25", 38},
              {"0521152560.png", "2019-05-21 15:25"},
              {"05211525381.png", "2019-05-21 15:25"}};
  for (const auto& row : rows) {
    EXPECT_EQ(SecondsOfStamp(row.Name).value_or(-1), row.Seconds) << row.Name;
    EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn", TimeOfStamp(row.Name, 2019)), row.Time);
  }
  for (const char* other :
       {"20190521152538.png", "02291015.jpg", "0521152.png", "+5-21525.png", "picture.png"}) {
    EXPECT_THROW(TimeOfStamp(other, 2019), ConvertError) << other;
    EXPECT_EQ(SecondsOfStamp(other), std::nullopt) << other;
  }
}

TEST(Sidereal, AgreesWithThePublishedFormula) {
  for (const auto& row : tests::ReadTable("sidereal.csv")) {
    const double theta = ThetaGOfJulianDate(row.Number("jd"));
    EXPECT_NEAR(theta, row.Number("gmst_iau1982_rad"), 1e-8) << row.Text("utc");
    EXPECT_NEAR(Degrees(theta), row.Number("gmst_iau2006_deg"), 5e-5) << row.Text("utc");
  }
  // The element epoch's own form, and the days it counts from 1950 January 0.5.
  const EpochSidereal epoch = ThetaG(80230.29629788);
  EXPECT_NEAR(epoch.AngleRad, ThetaGOfJulianDate(JulianDateOfEpoch(80230.29629788)), 1e-8);
  EXPECT_NEAR(epoch.DaysSince1950, JulianDateOfEpoch(80230.29629788) - 2433281.5, 1e-8);
}

TEST(CommaText, SurvivesEveryCharacter) {
  const std::vector<std::string> items{"NOAA 15", "METEOR-M2", "a,b", "say \"N\"", ""};
  EXPECT_EQ(JoinCommaText(items), R"("NOAA 15",METEOR-M2,"a,b","say ""N""","")");
  EXPECT_EQ(SplitCommaText(JoinCommaText(items)), items);
  EXPECT_EQ(SplitCommaText("A B , C"), (std::vector<std::string>{"A", "B", "C"}));
  EXPECT_EQ(SplitCommaText("\"open"), (std::vector<std::string>{"open"}));
  EXPECT_TRUE(SplitCommaText(" ").empty());
}

}  // namespace
}  // namespace pelorin::orbit
