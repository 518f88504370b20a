#include "orbit/element_file.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <fstream>
#include <random>

#include "elements/satellite_list.h"

namespace pelorin::elements {
namespace {

namespace fs = std::filesystem;

class ElementFiles : public testing::Test {
 protected:
  fs::path Folder() const { return folder_.path().toStdString(); }
  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(Folder() / name, std::ios::binary) << text;
  }
  static std::string Set(const std::string& name, const std::string& number, const std::string& epoch,
                         const std::string& lineEnd = "\r\n", const std::string& eccentricity = "0013250") {
    return name + lineEnd + "1 " + number + "U 91032A   " + epoch + "  .00000272  00000-0  13981-3 0  1482" +
           lineEnd + "2 " + number + "  98.5313  39.9325 " + eccentricity +
           "   4.9627 355.1680 14.22950462401115" + lineEnd;
  }

 private:
  QTemporaryDir folder_;
};

TEST_F(ElementFiles, TheNewerSetOfASatelliteWins) {
  Write("b.TLE", Set("NOAA 12", "21263", "99034.20978316") + Set("other", "11111", "99001.00000000"));
  Write("a.2li", Set("noaa 12", "21263", "99034.10000000", "\n") +
                     Set("Alpha", "A0001", "99001.00000000", "\n") +
                     Set("alpha", "22222", "99001.00000000", "\n"));
  Write("c.txt", Set("IGNORED", "33333", "99034.20978316"));
  const TSatelliteList list(Folder());
  ASSERT_EQ(list.Count(), 3);
  EXPECT_EQ(list.Name(0), "Alpha");  // the second set of that name is not taken
  EXPECT_EQ(list.Satellite(0).CatalogueNumber, "A0001");
  EXPECT_EQ(list.Name(1), "NOAA 12");
  EXPECT_EQ(list.Satellite(1).SourceFile, "b.TLE");
  EXPECT_EQ(list.IndexOf("OTHER"), 2);
  EXPECT_EQ(list.IndexOfCatalogueNumber("a0001"), 0);
  EXPECT_EQ(list.IndexOfCatalogueNumber("2126"), -1);
}

TEST_F(ElementFiles, OfEqualEpochsTheFirstReadStays) {
  Write("a.2li", Set("FIRST", "21263", "99034.20978316"));
  Write("a.tle", Set("SECOND", "21263", "99034.20978316"));
  const TSatelliteList list(Folder());
  ASSERT_EQ(list.Count(), 1);
  EXPECT_EQ(list.Name(0), "FIRST");
}

TEST_F(ElementFiles, TriplesAreTakenOrPassedOverWhole) {
  const std::string good = Set("GOOD", "21263", "99034.20978316");
  const struct {
    const char* label;
    std::string text;
    int count;
  } rows[] = {{"blank name", Set("   ", "21263", "99034.20978316") + good, 1},
              {"no name line shifts the rest", good.substr(good.find('\n') + 1) + good, 0},
              {"0 NAME stands as it is", Set("0 GOOD", "21263", "99034.20978316"), 1},
              {"blanks at line ends", Set("GOOD", "21263", "99034.20978316", "  \r\n"), 1},
              {"cut in line 2", good.substr(0, good.size() - 30), 1},
              {"cut in line 1", good.substr(0, 40), 0},
              {"eccentricity 1 and more", Set("BAD", "21263", "99034.20978316", "\n", "9999999") + good, 1},
              {"empty", "", 0}};
  for (const auto& row : rows) {
    Write("a.2li", row.text);
    EXPECT_EQ(TSatelliteList(Folder()).Count(), row.count) << row.label;
  }
}

TEST_F(ElementFiles, GarbageAndMissingFoldersDoNoHarm) {
  std::mt19937 random(7);
  std::string noise;
  for (int i = 0; i < 20000; ++i)
    noise += i % 40 == 0 ? '\n' : i % 40 == 1 ? "12x"[random() % 3] : static_cast<char>(random() % 256);
  Write("a.2li", noise);
  std::vector<orbit::RejectedSet> rejected;
  for (const orbit::TSatellite& set : orbit::ReadAllElementSets(Folder(), rejected)) EXPECT_TRUE(set.Valid);
  EXPECT_EQ(TSatelliteList("").Count(), 0);
  EXPECT_EQ(TSatelliteList(Folder() / "missing").Count(), 0);
  EXPECT_THROW(orbit::ReadAllElementSets(Folder() / "missing", rejected), orbit::ReadError);
  Write("huge.tle", "");
  fs::resize_file(Folder() / "huge.tle", std::uintmax_t{40} << 30);
  for (const char* name : {"missing.tle", "huge.tle"}) {
    try {
      orbit::ReadElementTriples(Folder() / name, [](auto, auto, auto) {});
      ADD_FAILURE() << name;
    } catch (const orbit::ReadError& error) {
      EXPECT_NE(std::string(error.what()).find(name), std::string::npos) << error.what();
    }
  }
}

TEST_F(ElementFiles, APictureGetsTheElementsOfItsOwnDays) {
  Write("a.tle", Set("NOAA 12", "21263", "99034.20978316") + Set("NOAA 12", "21263", "99134.20978316") +
                     Set("NOAA 12", "21263", "98334.20978316") +
                     Set("STILL", "21264", "98334.20978316", "\n", "XXXXXXX") +
                     "DEAD\r\n1 00001U\r\n2 00001\r\n");
  std::vector<orbit::RejectedSet> rejected;
  const auto sets = orbit::ReadAllElementSets(Folder() / "a.tle", rejected);
  ASSERT_EQ(sets.size(), 4u);
  ASSERT_EQ(rejected.size(), 1u);
  EXPECT_EQ(rejected[0].Name, "DEAD");
  EXPECT_NEAR(orbit::NearestElementSet(sets, "noaa 12", sets[0].Epoch + 30)->EpochRaw, 99034.2, 0.1);
  EXPECT_NEAR(orbit::NearestElementSet(sets, "NOAA 12", sets[0].Epoch - 999)->EpochRaw, 98334.2, 0.1);
  EXPECT_NEAR(orbit::NewestElementSet(sets, "NOAA 12")->EpochRaw, 99134.2, 0.1);
  EXPECT_EQ(orbit::NewestElementSet(sets, "NOAA 1"), nullptr);
}

}  // namespace
}  // namespace pelorin::elements
