#include "align/alignment_plot.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "align/alignment_table.h"
#include "tests/align/logged.h"

namespace pelorin::align {
namespace {

using namespace Qt::StringLiterals;
using tests::LoggedAt;

QString TextOf(const PlotAxis& axis) {
  QStringList texts;
  for (const AxisTick& tick : axis.Ticks) texts.append(tick.Text);
  return texts.join(u'|');
}

TEST(AlignmentPlot, AxesHaveRoundTicksAroundWhatTheyShow) {
  const struct {
    const char* Label;
    double Lowest, Highest, Least;
    int Most;
    QString Ticks;
  } rows[] = {
      {"one value", 1.25, 1.25, 2, 5, u"0.0|0.5|1.0|1.5|2.0|2.5"_s},
      {"across zero", -0.13, 0.21, 0.2, 5, u"\u22120.2|\u22120.1|0.0|0.1|0.2|0.3"_s},
      {"on the ticks", -10, 30, 2, 5, u"\u221210|0|10|20|30"_s},
      {"little room", -900, 900, 2, 2, u"\u22122000|0|2000"_s},
      {"hundredths", 0.101, 0.119, 0.01, 4, u"0.10|0.11|0.12"_s},
  };
  for (const auto& row : rows) {
    const PlotAxis axis = ValueAxis(row.Lowest, row.Highest, row.Least, row.Most);
    EXPECT_EQ(TextOf(axis), row.Ticks) << row.Label;
    EXPECT_LE(axis.From, row.Lowest) << row.Label;
    EXPECT_GE(axis.To, row.Highest) << row.Label;
    EXPECT_DOUBLE_EQ(axis.From, axis.Ticks.front().At) << row.Label;
  }
  const struct {
    const char *Label, *First, *Last;
    int Most;
    QString Ticks;
  } times[] = {
      {"one moment", "20220223075142", "20220223075142", 4,
       u"Feb 23 00:00|Feb 23 06:00|Feb 23 12:00|Feb 23 18:00"_s},
      {"days", "20220226230000", "20220301020000", 4, u"2022 Feb 27|2022 Feb 28|2022 Mar 01"_s},
      {"months over New Year", "20211120000000", "20220301000000", 4,
       u"2021 Dec|2022 Jan|2022 Feb|2022 Mar"_s},
      {"years", "20070401000000", "20220301000000", 4, u"2010|2015|2020"_s},
  };
  for (const auto& row : times) {
    const PlotAxis axis =
        TimeAxis(orbit::ParseTimeString(row.First).Days, orbit::ParseTimeString(row.Last).Days, row.Most);
    EXPECT_EQ(TextOf(axis), row.Ticks) << row.Label;
  }
}

TEST(AlignmentPlot, PanelsHaveTheirPointsAndMedians) {
  LoggedAlignment other = LoggedAt("20220225000000", 5);
  other.Satellite = u"METEOR-M2 4"_s;
  other.CatalogueNumber = u"59051"_s;
  other.StartIsFrom = swath::StartFrom::Stamps;
  other.Offsets = {1, 0, 2};
  LoggedAlignment toMinute = LoggedAt("20220226000000", 40), rough = LoggedAt("20220227000000", 3);
  toMinute.StartIsFrom = swath::StartFrom::NameMinute;
  rough.How = FoundBy::CoastsRoughly;
  const std::vector<LoggedAlignment> rows{LoggedAt("20220223000000", 1), LoggedAt("20220224000000", 2), other,
                                          toMinute, rough};
  const AlignmentPlot plot = PlotOf(rows, 4, 4);
  EXPECT_EQ(plot.Satellites, QStringList({u"METEOR-M2 4"_s, u"NOAA 19"_s}));
  const struct {
    QString Panel, Points, Medians;
  } panels[] = {{u"Clock correction, s"_s, u"0:1:1 1:2:1 2:5:0 4:3:0"_s, u"-1:1.5"_s},
                {u"Roll, °"_s, u"0:-0.25:1 1:-0.25:1 2:1:1 3:-0.25:1"_s, u"0:1 1:-0.25"_s},
                {u"Yaw, °"_s, u"0:0.5:1 1:0.5:1 2:2:1 3:0.5:1"_s, u"0:2 1:0.5"_s}};
  ASSERT_EQ(plot.Panels.size(), std::size(panels));
  for (std::size_t at = 0; at < std::size(panels); ++at) {
    const PlotPanel& panel = plot.Panels[at];
    EXPECT_EQ(panel.Title, panels[at].Panel);
    QStringList points, medians;
    for (const PlotPoint& point : panel.Points)
      points.append(u"%1:%2:%3"_s.arg(point.Row).arg(point.Value).arg(point.Counts ? 1 : 0));
    for (const PlotMedian& median : panel.Medians)
      medians.append(u"%1:%2"_s.arg(median.Satellite).arg(median.Value));
    EXPECT_EQ(points.join(u' '), panels[at].Points);
    EXPECT_EQ(medians.join(u' '), panels[at].Medians);
  }
  EXPECT_EQ(MedianLines(rows).join(u'\n').toStdString(),
            "Station's clock: +1.5 s, by the last 2\n"
            "NOAA 19, 909 columns: roll −0.25°, yaw 0.50°, by 3 of the season of Feb 2022");
  EXPECT_TRUE(PlotOf({}, 4, 4).Panels.empty());
}

}  // namespace
}  // namespace pelorin::align
