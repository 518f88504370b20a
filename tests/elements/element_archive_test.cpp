#include "elements/element_archive.h"

#include <gtest/gtest.h>

#include <QDir>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "tests/support/element_messages.h"
#include "tests/support/folder_test.h"

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;

QByteArray SetOf(const char* name, const char* epoch, const char* end = "\r\n") {
  return QByteArray::fromStdString(tests::SetOf(name, "25338", epoch, end));
}

class ElementArchive : public tests::FolderTest {};

TEST_F(ElementArchive, KeepsEachSetOnceByTheMonthOfItsEpoch) {
  const QString source = Path("weather.2li"), archive = Path("user/archive");
  const QByteArray january = SetOf("NOAA 15", "22031.99999999"),
                   february = SetOf("NOAA 15", "22032.00000000"), old = SetOf("ESSA 8", "68352.50000000"),
                   none = SetOf("X", "22000.00000000");
  const struct {
    const char* Label;
    QByteArray Content;
    int Added;
  } rows[] = {{"first", january + february + old + none + january, 4},
              {"the same again", january + old, 0},
              {"with other line ends and name", SetOf("noaa-15 ", "22031.99999999", "\n"), 0},
              {"one more", february + SetOf("NOAA 15", "22033.50000000"), 1},
              {"no sets at all", "nothing\nto see\nhere\n", 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    files::ReplaceFile(source, row.Content);
    EXPECT_EQ(ArchiveElementFile(source, archive), row.Added);
  }
  const QDir kept(archive);
  EXPECT_EQ(kept.entryList(QDir::Files),
            QStringList({u"1968-12.2li"_s, u"2022-01.2li"_s, u"2022-02.2li"_s, u"undated.2li"_s}));
  EXPECT_EQ(files::ReadFile(kept.filePath(u"2022-01.2li"_s)), january);
  EXPECT_EQ(files::ReadFile(kept.filePath(u"2022-02.2li"_s)), february + SetOf("NOAA 15", "22033.50000000"));

  // Somebody's line at the end shifts nothing.
  files::ReplaceFile(kept.filePath(u"2022-01.2li"_s), january + "mine");
  files::ReplaceFile(source, SetOf("NOAA 15", "22007.00000000") + january);
  EXPECT_EQ(ArchiveElementFile(source, archive), 1);
  EXPECT_EQ(ArchiveElementFile(source, archive), 0);
}

TEST_F(ElementArchive, KeepsMessagesAsTheyAre) {
  const QString source = Path("a.csv"), json = Path("a.json"), archive = Folder();
  const QString kept = Path("2022-02.csv");
  const QByteArray header =
      "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,"
      "MEAN_ANOMALY,EPHEMERIS_TYPE,CLASSIFICATION_TYPE,NORAD_CAT_ID,ELEMENT_SET_NO,REV_AT_EPOCH,BSTAR,"
      "MEAN_MOTION_DOT,MEAN_MOTION_DDOT\r\n";
  const QByteArray first =
      "\"A, "
      "\"\"B\"\"\",1998-030A,2022-02-22T12:00:00.5,14.2,.001,98.5,1,2,3,0,U,799500123,999,25066,.1E-4,.2E-5,"
      "0\r\n";
  const QByteArray second = QByteArray(first).replace("22T12", "23T12"),
                   old = QByteArray(first).replace("2022-02-22", "1999-053");
  files::ReplaceFile(source, header + first + second + QByteArray(first).replace("\"A", "\"C") + old);
  EXPECT_EQ(ArchiveElementFile(source, archive), 3);
  EXPECT_EQ(files::ReadFile(kept), header + first + second);
  EXPECT_EQ(files::ReadFile(Path("1999-02.csv")), header + old);
  // Columns in another order, or a month's file that somebody has made.
  files::ReplaceFile(json,
                     R"({"NORAD_CAT_ID":5,"OBJECT_NAME":"J","EPOCH":"2022-02-01T00:00:00","MEAN_MOTION":14.2,
      "ECCENTRICITY":0.001,"INCLINATION":98.5,"RA_OF_ASC_NODE":1,"ARG_OF_PERICENTER":2,"MEAN_ANOMALY":3})");
  const QByteArray third = "J,,2022-02-01T00:00:00,14.2,0.001,98.5,1,2,3,,,5,,,,,\r\n";
  files::ReplaceFile(kept, "X," + header + "x," + first + "x," + second.chopped(2));
  EXPECT_EQ(ArchiveElementFile(json, archive), 1);
  EXPECT_EQ(files::ReadFile(kept), header + first + second + third);
  EXPECT_EQ(ArchiveElementFile(source, archive), 0);
}

TEST_F(ElementArchive, WhatAUserHandsOverIsToldByItsContent) {
  const QString archive = Path("archive"), text = Path("a.txt");
  const auto messages = tests::DemoMessages(0, 3);
  files::ReplaceFile(text, "Notes\n1 first\n2 second\n");
  files::ReplaceFile(Path("b.txt"), tests::CsvOf(messages));
  files::ReplaceFile(Path("c.2li"), tests::JsonOf({messages[0]}));
  QFile::copy(tests::kDemoFile, Path("d.2LI"));
  EXPECT_EQ(
      ArchiveElementFiles({text, Path("b.txt"), Folder(), u"/none/e.tle"_s}, archive),
      (QStringList{u"a.txt: no element sets"_s, u"b.txt: 3 element sets, 3 of them new"_s,
                   u"c.2li: 1 element sets, 1 of them new"_s, u"d.2LI: 45 element sets, 45 of them new"_s,
                   u"e.tle: Cannot read /none/e.tle: No such file or directory"_s}));
  EXPECT_EQ(ArchiveElementFiles({Path("b.txt")}, archive),
            QStringList(u"b.txt: 3 element sets, 0 of them new"_s));
  EXPECT_EQ(QDir(archive).entryList(QDir::Files), (QStringList{u"2022-02.2li"_s, u"2022-03.csv"_s}));
}

}  // namespace
}  // namespace pelorin::elements
