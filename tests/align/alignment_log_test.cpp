#include "align/alignment_log.h"

#include <QDir>
#include <future>

#include "align/log_columns.h"
#include "files/atomic_file.h"
#include "files/read_file.h"
#include "tests/align/logged.h"
#include "tests/support/folder_test.h"

namespace pelorin::align {
namespace {

using namespace Qt::StringLiterals;
using tests::LoggedAt;

const QByteArray kHeader =
    "picture,satellite,catalogue_number,start_utc,start_from,columns,rows,scanner_columns,clock_correction_s,"
    "shift_columns,roll_deg,pitch_deg,yaw_deg,drift_ppm,how,chance_peaks,accepted_utc\n";
const QByteArray kFull =
    "a.png,NOAA 19,33591,2022-02-23T07:51:42.000Z,second,1040,1200,909,2.000,0.000,-0.250,0.125,0.500,40.0,"
    "coasts,0.0002,2022-03-01T12:00:00.000Z\n";
const QByteArray kNeeded = "satellite,start_utc,columns,rows,clock_correction_s";

class AlignmentLogTest : public tests::FolderTest {
 protected:
  QString File() const { return Path("data/alignments.csv"); }
  QByteArray Bytes() const { return files::ReadFile(File()); }
  void Give(const QByteArray& bytes) {
    AlignmentLog(File()).Remove({});
    files::ReplaceFile(File(), bytes);
  }
};

TEST_F(AlignmentLogTest, ARowIsWhatWasAcceptedAndIsReadBack) {
  AlignmentLog log(File());
  EXPECT_TRUE(log.Rows().empty());
  LoggedAlignment meteor = LoggedAt("20220223173312", -12.3456, "MSU \"1\", a.png");
  meteor.Start.Days += 0.25 / orbit::kSecondsPerDay;
  meteor.StartIsFrom = swath::StartFrom::Stamps;
  meteor.ShiftColumns = 1.5;
  meteor.How = FoundBy::Hand;
  meteor.ChancePeaks.reset();
  log.Add(LoggedAt("20220223075142", 2));
  log.Add(meteor);
  EXPECT_EQ(Bytes(),
            kHeader + kFull +
                "\"MSU \"\"1\"\", a.png\",NOAA 19,33591,2022-02-23T17:33:12.250Z,stamps,1040,1200,909,"
                "-12.346,1.500,-0.250,0.125,0.500,40.0,by hand,,2022-03-01T12:00:00.000Z\n");
  const LoggedAlignment* found = log.Find(meteor);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(LogFields(*found), LogFields(meteor));
  EXPECT_TRUE(LiesAlike(*found, meteor)) << "to what is written down";
  EXPECT_FALSE(LiesAlike(*found, LoggedAt("20220223173312", -12.3456)));
}

TEST_F(AlignmentLogTest, APictureIsKnownByItsSatelliteBeginAndSize) {
  AlignmentLog log(File());
  log.Add(LoggedAt("20220223075142", 2));
  const struct {
    const char* Label;
    bool IsFound;
    void (*Change)(LoggedAlignment&);
  } rows[] = {
      {"another folder, renamed satellite", true, [](LoggedAlignment& one) { one.Satellite = u"NOAA-19"_s; }},
      {"another channel", true, [](LoggedAlignment& one) { one.Picture = u"b.png"_s; }},
      {"decoded once more, to its end", true, [](LoggedAlignment& one) { one.Rows = 1300; }},
      {"of another recorder", false,
       [](LoggedAlignment& one) {
         one.Picture = u"b.png"_s;
         one.Rows = 1300;
       }},
      {"part of a second later", true, [](LoggedAlignment& one) { one.Start.Days += 0.4 / 86400; }},
      {"a second later, called alike", false, [](LoggedAlignment& one) { one.Start.Days += 1.0 / 86400; }},
      {"another width", false, [](LoggedAlignment& one) { one.Columns = 909; }},
      {"another satellite", false, [](LoggedAlignment& one) { one.CatalogueNumber = u"28654"_s; }},
      {"no number", true, [](LoggedAlignment& one) { one.CatalogueNumber.clear(); }},
      {"no number, another name", false,
       [](LoggedAlignment& one) {
         one.CatalogueNumber.clear();
         one.Satellite = u"NOAA 1"_s;
       }},
  };
  for (const auto& row : rows) {
    LoggedAlignment picture = LoggedAt("20220223075142", 0);
    row.Change(picture);
    EXPECT_EQ(log.Find(picture) != nullptr, row.IsFound) << row.Label;
  }
  log.Add(LoggedAt("20220223075142", 3, "b.png"));
  ASSERT_EQ(log.Rows().size(), 1U) << "one alignment a recording";
  EXPECT_EQ(log.Rows().front().ClockS, 3);
  log.Remove({LoggedAt("20220223075142", 0)});
  EXPECT_EQ(Bytes(), kHeader);
}

TEST_F(AlignmentLogTest, WhatIsNotUnderstoodIsToldAndStays) {
  const QByteArray good = "NOAA 19,2022-02-23T07:51:42Z,1040,1200,1.5";
  const struct {
    const char* Label;
    QByteArray Before;
    std::size_t Rows;
    const char* Note;  ///< a part of it; null for none
  } rows[] = {
      {"least of columns", kNeeded + "\n" + good + "\n", 1, nullptr},
      {"no line's end, another order, a mark and blanks",
       "\xEF\xBB\xBFrows, columns,clock_correction_s,satellite,start_utc\r\n1200,1040,1.5,\"NOAA 19\" "
       ",2022-02-23T07:51:42",
       1, nullptr},
      {"empty", "", 0, nullptr},
      {"blank line", kNeeded + "\n\n" + good + "\n", 1, nullptr},
      {"foreign columns", kNeeded + ",mood\n" + good + ",fine\n", 1, "columns that are not known: \"mood\""},
      {"cut row", kNeeded + "\n" + good + "\nNOAA 19,2022-02-2", 1, "rows that are not understood (line 3)"},
      {"not a number", kNeeded + "\n" + good.chopped(3) + "nan\n" + good, 1, "(line 2)"},
      {"not possible", kNeeded + "\n" + good + "e6\n" + good, 1, "(line 2)"},
      {"no such time", kNeeded + "\nNOAA 19,2022-02-30T07:51:42Z,1040,1200,1\n" + good, 1, "(line 2)"},
      {"no columns", kNeeded + "\nNOAA 19,2022-02-20T07:51:42Z,0,1200,1\n" + good, 1, "(line 2)"},
      {"open quote", kNeeded + "\n\"NOAA 19,x\n" + good, 1, "(line 2)"},
      {"field too many", kHeader + kFull.chopped(1) + ",5\n" + kFull, 1, "(line 2)"},
      {"how unknown", kNeeded + ",how\n" + good + ",by magic\n" + good, 1, "(line 2)"},
      {"other signs between", "satellite;start_utc\nNOAA 19;2\n", 0, "(line 1, 2)"},
      {"bytes that are no text", kNeeded + "\n\xFF\xFE,1\n" + good, 1, "(line 2)"},
      {"many", kNeeded + QByteArray(7, '\n').replace("\n", "\nx"), 0, "(line 2, 3, 4, 5, 6 and 2 more)"},
  };
  for (const auto& row : rows) {
    Give(row.Before);
    AlignmentLog log(File());
    EXPECT_EQ(log.Rows().size(), row.Rows) << row.Label;
    EXPECT_EQ(log.Note().isEmpty(), row.Note == nullptr) << row.Label << log.Note().toStdString();
    EXPECT_TRUE(row.Note == nullptr || log.Note().contains(QString::fromUtf8(row.Note))) << row.Label;
    log.Add(LoggedAt("20220301120000", 4));
    EXPECT_EQ(log.Rows().size(), row.Rows + 1) << row.Label;
    const QByteArray after = Bytes();
    for (QByteArray line : row.Before.split('\n')) {
      if (line.endsWith('\r')) line.chop(1);
      const bool isHeader = line.contains("start_utc,") || line.endsWith("start_utc");
      EXPECT_TRUE(isHeader || after.contains(line)) << row.Label << ": " << line.toStdString();
    }
  }
}

TEST_F(AlignmentLogTest, WhatCannotBeReadIsNotReplaced) {
  ASSERT_TRUE(QDir().mkpath(File()));
  AlignmentLog log(File());
  EXPECT_TRUE(log.Rows().empty());
  EXPECT_FALSE(log.WasRead());
  EXPECT_TRUE(log.Note().contains(File())) << log.Note().toStdString();
  EXPECT_TRUE(tests::ErrorOf([&] { log.Add(LoggedAt("20220301120000", 4)); }).contains(File()));
  ASSERT_TRUE(QDir().rmdir(File()));
  EXPECT_TRUE(log.WasRead()) << "until it can be";
}

TEST_F(AlignmentLogTest, ColumnsOfOthersStayWithTheirPicture) {
  Give("mood," + kNeeded + "\nfine,NOAA 19,2022-02-23T07:51:42Z,1040,1200,1.5\n");
  AlignmentLog log(File());
  log.Add(LoggedAt("20220223075142", 9));
  log.Add(LoggedAt("20220224075142", 8));
  const QList<QByteArray> lines = Bytes().split('\n');
  EXPECT_TRUE(lines[0].startsWith("mood," + kNeeded + ",picture,"));
  EXPECT_TRUE(lines[1].startsWith("fine,NOAA 19,2022-02-23T07:51:42.000Z,1040,1200,9.000,a.png,"));
  EXPECT_TRUE(lines[2].startsWith(",NOAA 19,2022-02-24T07:51:42.000Z,1040,1200,8.000,a.png,"));
}

TEST_F(AlignmentLogTest, TheOldestGoWhenThereAreTooMany) {
  QByteArray full = "damaged\n";
  for (std::size_t row = 0; row < kMostLogged; ++row) {
    full += "NOAA 19,2022-02-23T07:51:42Z,1040," + QByteArray::number(qsizetype(row + 1)) + ",1\n";
  }
  Give(kNeeded + "\n" + full);
  AlignmentLog log(File());
  ASSERT_EQ(log.Rows().size(), kMostLogged);
  log.Add(LoggedAt("20220301120000", 4));
  ASSERT_EQ(log.Rows().size(), kMostLogged);
  EXPECT_EQ(log.Rows().front().Rows, 2);
  EXPECT_EQ(log.Rows().back().ClockS, 4);
  EXPECT_TRUE(Bytes().contains("\ndamaged\n"));
}

TEST_F(AlignmentLogTest, TwoProgramsLoseNothingOfEachOthers) {
  constexpr int each = 20;
  const auto write = [&](int first) {
    AlignmentLog log(File());
    for (int day = first; day < first + each; ++day) {
      LoggedAlignment one = LoggedAt("20220101075142", day);
      one.Start.Days += day;
      log.Add(one);
    }
  };
  AlignmentLog reader(File());
  EXPECT_TRUE(reader.Rows().empty());
  auto other = std::async(std::launch::async, write, 0);
  write(each);
  other.get();
  EXPECT_EQ(reader.Rows().size(), 2U * each) << "and who reads sees what others wrote";
}

}  // namespace
}  // namespace pelorin::align
