#include "orbit/element_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "elements/element_notes.h"
#include "elements/known_sets.h"
#include "orbit/julian_date.h"
#include "tests/support/element_messages.h"
#include "tests/support/folder_test.h"

namespace pelorin::elements {
namespace {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using tests::SetOf;

using Names = std::vector<std::string>;

class ElementFiles : public tests::FolderTest {
 protected:
  fs::path Place(const char* name = "") const { return Path(name).toStdString(); }
  void Write(const char* name, const std::string& text) const {
    std::ofstream(Place(name), std::ios::binary) << text;
  }
  static Names NamesOf(const TSatelliteList& list) {
    Names all;
    for (int index = 0; index < list.Count(); ++index) all.push_back(list.Name(index));
    return all;
  }
};

TEST_F(ElementFiles, TheNewerSetOfASatelliteWins) {
  Write("b.TLE", SetOf("NOAA 12", "21263", "99034.20978316") + SetOf("other", "11111", "99001.00000000"));
  Write("a.2li", SetOf("noaa 12", "21263", "99034.10000000", "\n") +
                     SetOf("Alpha", "A0001", "99001.00000000", "\n") +
                     SetOf("alpha", "22222", "99001.00000000", "\n"));
  Write("c.txt", SetOf("IGNORED", "33333", "99034.20978316"));
  KnownSets known(Place(), {});
  const TSatelliteList& list = known.Satellites();
  ASSERT_EQ(NamesOf(list), (Names{"Alpha", "NOAA 12", "other"}));
  EXPECT_EQ(list.Satellite(1).SourceFile, "b.TLE");
  EXPECT_EQ(list.IndexOf("OTHER"), 2);
  EXPECT_EQ(list.IndexOfCatalogueNumber("a0001"), 0) << "the second set of that name is not taken";
  EXPECT_EQ(list.IndexOfCatalogueNumber("2126"), -1);
  EXPECT_EQ(LeftOutTexts(known.LeftOut()),
            QStringList(u"ALPHA in a.2li, because another satellite has that name"_s));
  EXPECT_EQ(known.Find("22222")->CatalogueNumber, "22222") << "by its number it can be had";
  EXPECT_EQ(known.Find(" a0001")->Name, "ALPHA");
  EXPECT_EQ(known.Find(""), nullptr);
}

TEST_F(ElementFiles, TheNewestOfASatelliteWinsInWhateverForm) {
  const struct {
    const char* label;
    const char *lineNumber, *ommNumber, *epoch;
    Names names;
  } rows[] = {
      {"equal epochs: files are read in order", "21263", "21263", "1999-02-03T05:02:05.265024", {"LINES"}},
      {"the message is newer", "21263", "21263", "1999-02-03T05:02:05.266", {"OMM"}},
      {"the message is older", "21263", "21263", "1999-02-03T05:02:05.264", {"LINES"}},
      {"alpha-5", "A0000", "100000", "1999-02-04T00:00:00", {"OMM"}},
      {"alpha-5 in lower case, beyond O", "p1234", "231234", "1999-02-04T00:00:00", {"OMM"}},
      {"alpha-5 to its end", "Z9999", "339999", "1999-02-04T00:00:00", {"OMM"}},
      {"I is no alpha-5", "I0000", "180000", "1999-02-04T00:00:00", {"LINES", "OMM"}},
      {"numbers are filled up", "00005", "5", "1999-02-04T00:00:00", {"OMM"}},
      {"nine digits", "21263", "799521263", "1999-02-04T00:00:00", {"LINES", "OMM"}}};
  orbit::OmmRecord message = tests::DemoMessages(0, 1)[0];
  message[orbit::kOmmName] = "OMM";
  for (const auto& row : rows) {
    Write("z.2li", SetOf("LINES", row.lineNumber, "99034.20978316"));
    message[orbit::kOmmCatalogueNumber] = row.ommNumber;
    message[orbit::kOmmEpoch] = row.epoch;
    Write("a.csv", tests::CsvOf({message}).toStdString());
    EXPECT_EQ(NamesOf(KnownSets(Place(), {}).Satellites()), row.names) << row.label;
  }
  const KnownSets known(Place(), {});
  EXPECT_EQ(known.Satellites().IndexOfCatalogueNumber("21263"), 0);
  EXPECT_EQ(known.Satellites().IndexOfCatalogueNumber("799521263"), -1);
  for (const char* name : {"c.json", "d.TLE", "b.CSV", "e.2LI", "f.txt"}) Write(name, "");
  Names order;
  for (const fs::path& file : orbit::ElementFilesIn(Place())) order.push_back(file.filename().string());
  EXPECT_EQ(order, (Names{"e.2LI", "z.2li", "d.TLE", "a.csv", "b.CSV", "c.json"}));
}

TEST_F(ElementFiles, AWrongChecksumIsTakenWhereNothingBetterIs) {
  const auto doubtful = [](const char* name, const char* number, const char* epoch) {
    return SetOf(name, number, epoch, "\n", "0013250", 1);
  };
  Write("a.2li",
        SetOf("NOAA 12", "21263", "99034.00000000") + doubtful("NOAA 12", "21263", "99039.00000000") +
            doubtful("NOAA 14", "23455", "99039.00000000") + SetOf("NOAA 11", "19531", "98001.00000000") +
            doubtful("NOAA 11", "19531", "99039.00000000"));
  KnownSets known(Place(), {});
  EXPECT_EQ(known.Find("NOAA 12")->EpochRaw, 99034.0);
  EXPECT_EQ(known.FindNearest("21263", orbit::JulianDateOfEpoch(99039))->EpochRaw, 99034.0);
  EXPECT_EQ(known.Find("NOAA 11")->EpochRaw, 99039.0) << "a set of a year ago is no better";
  EXPECT_EQ(LeftOutTexts(known.LeftOut()),
            QStringList(u"NOAA 12 in a.2li, because a checksum of its lines is wrong"_s));
  const QStringList doubts = DoubtTexts(known.Satellites());
  EXPECT_TRUE(doubts.size() == 2 && doubts[0].startsWith(u"NOAA 11 in"_s) &&
              doubts[1].startsWith(u"NOAA 14 in a.2li is used, although"_s));
  const ElementNotes notes = NotesOn(known, {u"GONE"_s}, {known.Find("NOAA 12"), known.Find("NOAA 11")},
                                     orbit::JulianDateOfEpoch(99095.5));
  EXPECT_EQ(notes.Line, u"Left out of the elements: 1  Wrong checksums: 2  No elements: 1  Stale: 1"_s);
  EXPECT_EQ(notes.Details.last(), u"The elements of NOAA 12 are 61 days old"_s);
}

TEST_F(ElementFiles, NamesOfOtherSourcesAreFound) {
  Write("a.2li", SetOf("NOAA 20 (JPSS-1)", "43013", "99034.00000000") +
                     SetOf("METEOR-M2 4", "59051", "99034.00000000") +
                     SetOf("NOAA 2 [-]", "06235", "99034.00000000") +
                     SetOf("COSMOS 1 [A]", "00011", "99034.00000000") +
                     SetOf("COSMOS 1 [B]", "00012", "99034.00000000"));
  const KnownSets known(Place(), {});
  const struct {
    const char *Wanted, *Number;
  } rows[] = {{"noaa-20", "43013"}, {"METEOR-M 2-4", "59051"}, {"43013", "43013"},
              {"NOAA 2", "06235"},  {"COSMOS 1", ""},          {"(JPSS-1)", ""}};
  for (const auto& row : rows) {
    const orbit::TSatellite* found = known.Find(row.Wanted);
    EXPECT_EQ(found == nullptr ? "" : found->CatalogueNumber, row.Number) << row.Wanted;
  }
}

TEST_F(ElementFiles, TriplesAreTakenOrPassedOverWhole) {
  const std::string good = SetOf("GOOD", "21263", "99034.20978316");
  const struct {
    const char* label;
    std::string text;
    int count;
    const char* name = "GOOD";
  } rows[] = {
      {"a byte order mark", "\xEF\xBB\xBF" + good, 1},
      {"blank name", SetOf("   ", "21263", "99034.20978316") + good, 1},
      {"no name line shifts the rest", good.substr(good.find('\n') + 1) + good, 0},
      {"0 NAME stands as it is", SetOf("0 GOOD", "21263", "99034.20978316"), 1, "0 GOOD"},
      {"blanks at line ends", SetOf("GOOD", "21263", "99034.20978316", "  \r\n"), 1},
      {"cut in line 2, before the mean motion", good.substr(0, good.size() - 30), 0},
      {"eccentricity 1 and more", SetOf("BAD", "21263", "99034.20978316", "\n", "9999999") + good, 1}};
  for (const auto& row : rows) {
    Write("a.2li", row.text);
    const KnownSets known(Place(), {});
    EXPECT_EQ(known.Satellites().Count(), row.count) << row.label;
    EXPECT_EQ(known.Satellites().IndexOf(row.name), row.count - 1) << row.label;
  }
}

TEST_F(ElementFiles, GarbageAndMissingFoldersDoNoHarm) {
  std::mt19937 random(7);
  std::string noise;
  for (int i = 0; i < 20000; ++i)
    noise += i % 40 == 0 ? '\n' : i % 40 == 1 ? "12x"[random() % 3] : static_cast<char>(random() % 256);
  Write("a.2li", noise);
  std::vector<orbit::RejectedSet> rejected;
  for (const orbit::TSatellite& set : orbit::ReadAllElementSets(Place(), rejected)) EXPECT_TRUE(set.Valid);
  EXPECT_EQ(KnownSets().Satellites().Count(), 0);
  EXPECT_EQ(KnownSets(Place("missing"), {}).Satellites().Count(), 0);
  Write("huge.tle", "");
  fs::resize_file(Place("huge.tle"), std::uintmax_t{40} << 30);
  for (const char* name : {"missing", "missing.tle", "huge.tle"}) {
    const QString error = tests::ErrorOf([&] { orbit::ReadAllElementSets(Place(name), rejected); });
    EXPECT_TRUE(error.contains(Path(name))) << name << ": " << error.toStdString();
  }
}

TEST_F(ElementFiles, ATimeGetsTheSetNearestToIt) {
  const QString archive = Path("archive");
  fs::create_directory(Place("archive"));
  Write("a.tle", SetOf("NOAA 12", "21263", "99034.20978316") + SetOf("NOAA 12", "21263", "99134.20978316") +
                     SetOf("NOAA-12", "21263", "98334.20978316"));
  Write("archive/1998-12.2li",
        SetOf("noaa 12 [-]", "21263", "98340.00000000") + SetOf("NOAA 11", "19531", "98341.00000000"));
  Write("archive/1999-02.2li", SetOf("NOAA 12", "21263", "99033.00000000"));
  Write("archive/undated.2li", SetOf("NOAA 12", "21263", "99000.00000000"));
  const struct {
    const char* label;
    const char* wanted;
    double epoch;     // of the time asked for
    double expected;  // 0 for none
    const char* name;
  } rows[] = {{"a loaded one", "NOAA 12", 99034.9, 99034.20978316, "NOAA 12"},
              {"the newest", "noaa 12", 99365.0, 99134.20978316, "NOAA 12"},
              {"an older one of another name", "21263", 98001.0, 98334.20978316, "NOAA 12"},
              {"one of the archive", "NOAA 12", 98350.0, 98340.0, "NOAA 12"},
              {"one of another month of it", "NOAA 12", 99020.0, 99033.0, "NOAA 12"},
              {"by an earlier name", "NOAA-12", 99033.1, 99033.0, "NOAA-12"},
              {"one that the archive alone knows", "noaa 11", 99365.0, 98341.0, "NOAA 11"},
              {"the same by its number", "19531", 98001.0, 98341.0, "NOAA 11"},
              {"nobody", "NOAA 1", 99001.0, 0, ""}};
  const auto check = [&] {
    KnownSets known(Place(), archive);
    EXPECT_EQ(known.Satellites().Count(), 1) << "what the archive holds is not listed";
    for (const auto& row : rows) {
      const auto found = known.FindNearest(row.wanted, orbit::JulianDateOfEpoch(row.epoch));
      EXPECT_EQ(found ? found->EpochRaw : 0, row.expected) << row.label;
      EXPECT_EQ(found ? found->Name : "", row.name) << row.label;
    }
  };
  check();
  std::string near;
  for (const auto& set : KnownSets(Place(), archive).AllNearest(orbit::JulianDateOfEpoch(99020))) {
    near += set.Name + " of " + set.SourceFile + ", ";
  }
  EXPECT_EQ(near, "NOAA 11 of 1998-12.2li, NOAA 12 of 1999-02.2li, ");
  const auto written = fs::last_write_time(Place("archive/index.txt"));
  check();  // by the index
  EXPECT_EQ(fs::last_write_time(Place("archive/index.txt")), written) << "nothing had changed";
  for (const char* wrong :
       {"Pelorin archive index 1\r\n>0 0 1999-02.2li\r\n21263 1 2 X\r\n>9 9 gone.2li\r\n", "21263 1 2 X"}) {
    Write("archive/index.txt", wrong);
    check();
  }
  Write("archive/1999-02.2li",
        SetOf("NOAA 12", "21263", "99032.00000000") + SetOf("Y", "2", "99033.00000000"));
  EXPECT_EQ(KnownSets(Place(), archive).FindNearest("NOAA 12", orbit::JulianDateOfEpoch(99020))->EpochRaw,
            99032.0);
}

TEST_F(ElementFiles, WhatCannotBeUsedIsToldAndDoesNotEndTheLoading) {
  const std::string still = "STILL\n1 21264U\n2 21264  98.5313  39.9325 0013250   4.9627 355.1680\n";
  Write("b.tle", SetOf("NOAA 12", "21263", "99034.20978316") + SetOf("STILL", "21264", "98334.20978316") +
                     still + still + "DEAD\r\n1 00001U\r\n2 00001\r\n");
  fs::create_symlink("nowhere.2li", Place("a.2li"));
  KnownSets known(Place(), {});
  EXPECT_EQ(known.Satellites().Count(), 2) << "an older set does where the newer one has no orbit";
  EXPECT_EQ(LeftOutTexts(known.LeftOut()),
            (QStringList{u"a.2li, because it cannot be read"_s,
                         u"STILL in b.tle (2 times), because its elements describe no orbit"_s,
                         u"DEAD in b.tle, because its elements describe no orbit"_s}));
}

}  // namespace
}  // namespace pelorin::elements
