#include "passes/ephemeris_file.h"

#include <gtest/gtest.h>

#include <QStringDecoder>
#include <QTemporaryDir>

#include "files/file_error.h"
#include "files/read_file.h"

namespace pelorin::passes {
namespace {

using namespace Qt::StringLiterals;

PassDetails Pass(const QString& name, int riseHour, bool southBound) {
  const orbit::TDateTime rise = orbit::MakeDateTime(2022, 2, 23, riseHour, 55, 12);
  return {
      name,  u"33591"_s, rise, {rise.Days + 400.0 / 86400}, {rise.Days + 800.5 / 86400}, 9.96, 87.4, 170.5,
      63.24, southBound, 801};
}

const EphemerisOutput kReport{{u"3.20°W"_s, u"second"_s},
                              {Pass(u"B"_s, 9, false), Pass(u"A;\"B\", \\C"_s, 7, true)},
                              u"3.20°W, 55.91°N"_s,
                              orbit::MakeDateTime(2022, 2, 22, 6, 0, 1)};

/// The values of one property, in order.
QStringList Values(const EphemerisOutput& report, const char* property) {
  QStringList values;
  const QString unfolded = QString::fromUtf8(EphemerisCalendar(report)).remove(u"\r\n "_s);
  for (const QString& line : unfolded.split(u"\r\n"_s)) {
    if (line.startsWith(QLatin1String(property) + u':')) values.append(line.section(u':', 1));
  }
  return values;
}

TEST(EphemerisFile, ExtensionDecidesOnTheForm) {
  const QTemporaryDir folder;
  const std::pair<QString, QByteArray> rows[] = {{u"a.txt"_s, "3.20\xB0W\r\nsecond\r\n"},
                                                 {u"plain"_s, "3.20\xB0W\r\nsecond\r\n"},
                                                 {u"b.CSV"_s, EphemerisCsv(kReport.Passes)},
                                                 {u"c.ics"_s, EphemerisCalendar(kReport)}};
  for (const auto& [name, expected] : rows) {
    SaveEphemeris(folder.filePath(name), kReport);
    EXPECT_EQ(files::ReadFile(folder.filePath(name)), expected) << name.toStdString();
    EXPECT_THROW(SaveEphemeris(folder.filePath(u"missing/"_s + name), kReport), files::FileError);
  }
}

TEST(EphemerisFile, SpreadsheetHasAPassALineInTimeOrder) {
  const QByteArrayList lines = EphemerisCsv(kReport.Passes).split('\n');
  ASSERT_EQ(lines.size(), 4);
  EXPECT_EQ(lines[0].count(','), lines[2].count(','));
  EXPECT_EQ(lines[1],
            "\"A;\"\"B\"\", "
            "\\C\",33591,2022-02-23T07:55:12Z,2022-02-23T08:01:52Z,2022-02-23T08:08:32Z,10.0,87.4,170.5,"
            "63.2,S,801\r");
  EXPECT_TRUE(lines[2].startsWith("B,33591,2022-02-23T09:55:12Z,")) << lines[2].toStdString();
}

TEST(EphemerisFile, CalendarKeepsToItsGrammar) {
  const QByteArray calendar = EphemerisCalendar(kReport);
  EXPECT_TRUE(calendar.startsWith("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:"));
  EXPECT_TRUE(calendar.endsWith("END:VEVENT\r\nEND:VCALENDAR\r\n"));
  EXPECT_EQ(calendar.count('\n'), calendar.count("\r\n"));
  EXPECT_EQ(Values(kReport, "SUMMARY"),
            (QStringList{u"A\\;\"B\"\\, \\\\C\\, 63° southbound"_s, u"B\\, 63° northbound"_s}));
  EXPECT_EQ(Values(kReport, "DTSTART"), (QStringList{u"20220223T075512Z"_s, u"20220223T095512Z"_s}));
  EXPECT_EQ(Values(kReport, "DTEND").first(), u"20220223T080832Z"_s);
  EXPECT_EQ(Values(kReport, "DTSTAMP").last(), u"20220222T060001Z"_s);
  EXPECT_EQ(Values(kReport, "DESCRIPTION").first(),
            u"Rises 07:55:12 UTC\\, azimuth 10°\\nHighest 08:01:52 UTC\\, azimuth 87°\\, elevation 63°\\n"
            "Sets 08:08:32 UTC\\, azimuth 171°\\nSeen from 3.20°W\\, 55.91°N"_s);
}

TEST(EphemerisFile, AnEventKeepsItsIdentifier) {
  const QStringList before = Values(kReport, "UID");
  ASSERT_EQ(before.size(), 2);
  EXPECT_NE(before[0], before[1]);
  EphemerisOutput later = kReport;
  later.Saved.Days += 3;
  for (PassDetails& pass : later.Passes) pass.Rise.Days += 0.0001, pass.Culmination.Days += 0.0001;
  EXPECT_EQ(Values(later, "UID"), before);
  later.Station = u"3.20°E, 55.91°N"_s;
  EXPECT_NE(Values(later, "UID")[0], before[0]);
}

TEST(EphemerisFile, LongLinesAreFoldedBetweenCharacters) {
  for (int head = 60; head < 80; ++head) {
    const QString line = QString(head, u'x') + QString(80, u'°') + u"\U0001F6F0 end"_s;
    const QByteArray folded = FoldedLine(line.toUtf8());
    EXPECT_EQ(QString::fromUtf8(folded).remove(u"\r\n "_s), line + u"\r\n"_s);
    for (const QByteArray& part : folded.split('\n')) {
      EXPECT_LE(part.size(), 76) << "75 and the CR, " << head;
      QStringDecoder decoder(QStringDecoder::Utf8);
      const QString text = decoder(part);
      EXPECT_FALSE(decoder.hasError() || text.contains(QChar::ReplacementCharacter)) << head;
    }
  }
}

}  // namespace
}  // namespace pelorin::passes
