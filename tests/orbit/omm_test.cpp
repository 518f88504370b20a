#include "orbit/omm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <random>
#include <sstream>

#include "orbit/propagation.h"
#include "tests/support/folder_test.h"
#include "tests/support/tables.h"

namespace pelorin::orbit {
namespace {

using Message = std::vector<std::pair<std::string, std::string>>;

/// A message by its values, separated by commas.
Message MessageOf(const char* text) {
  Message message;
  std::istringstream values(text);
  for (const char* keyword :
       {"OBJECT_NAME", "OBJECT_ID", "EPOCH", "MEAN_MOTION", "ECCENTRICITY", "INCLINATION", "RA_OF_ASC_NODE",
        "ARG_OF_PERICENTER", "MEAN_ANOMALY", "NORAD_CAT_ID", "ELEMENT_SET_NO", "BSTAR", "MEAN_MOTION_DOT",
        "MEAN_MOTION_DDOT"}) {
    std::getline(values, message.emplace_back(keyword, "").second, ',');
  }
  return message;
}

const Message kMessage = MessageOf(
    "NOAA 12,1991-032A,1999-02-03T05:02:05.265024,14.22950462,.001325,98.5313,39.9325,4.9627,355.168,21263,"
    "148,.13981E-3,+.272E-5,0");

Message With(Message message, const std::string& changed, const std::string& to) {
  for (auto& [keyword, value] : message) {
    if (keyword == changed) value = to;
  }
  return message;
}

std::string Csv(const std::vector<Message>& messages) {
  std::string header, rows;
  for (const auto& [keyword, value] : messages[0]) header += (header.empty() ? "" : ",") + keyword;
  for (const Message& message : messages) {
    for (const auto& [keyword, value] : message) rows += value + ",";
    rows.replace(rows.size() - 1, 1, "\r\n");
  }
  return header + "\r\n" + rows;
}

std::string Json(const std::vector<Message>& messages) {
  std::string text = "[";
  for (const Message& message : messages) {
    text += text.size() > 1 ? ",{" : "{";
    for (const auto& [keyword, value] : message) text += "\"" + keyword + "\":\"" + value + "\",";
    text.back() = '}';
  }
  return text + "]";
}

class Omm : public tests::FolderTest {
 protected:
  std::vector<TSatellite> Sets(const char* name, const std::string& text) {
    const std::string path = Path(name).toStdString();
    std::ofstream(path, std::ios::binary) << text;
    rejected_.clear();
    return ReadAllElementSets(path, rejected_);
  }
  std::vector<RejectedSet> rejected_;
};

/// The published sets in lines and as messages, converted by hand: one with a second derivative, and a
/// deep-space one.
TEST_F(Omm, EveryFormOfASetGivesTheSameState) {
  const std::vector<Message> messages{
      kMessage,
      MessageOf(
          "STR3-88888,,1980-10-01T23:41:24.113760,16.05824518,0.0086731,72.8435,115.9689,52.6988,110.5714,"
          "88888,8,.66816E-4,.73094E-3,.13844E-3"),
      MessageOf(
          "STR3-11801,,1980-230T07:06:40.136832Z,2.28537848,7.318036E-1,46.7916,230.4354,47.4722,10.4117,"
          "11801,0,0.14311E-1,.01431103,0")};
  for (const char* form : {"a.csv", "a.JSON"}) {
    const auto sets = Sets(form, form[2] == 'c' ? Csv(messages) : Json(messages));
    EXPECT_EQ(sets.size(), messages.size()) << form;
    for (const TSatellite& omm : sets) {
      SCOPED_TRACE(std::string(form) + " " + omm.Name);
      const TSatellite twoLine = tests::ReferenceSatellite(omm.Name);
      EXPECT_EQ(omm.SourceFile, form);
      EXPECT_EQ(omm.CatalogueKey(), twoLine.CatalogueKey());
      EXPECT_EQ(omm.ElementSetNumber, twoLine.ElementSetNumber);
      EXPECT_EQ(omm.EpochRaw, twoLine.EpochRaw);
      EXPECT_NEAR(omm.MeanMotionDot, twoLine.MeanMotionDot, 1e-20);
      EXPECT_NEAR(omm.MeanMotionDotDot, twoLine.MeanMotionDotDot, 1e-20);
      const Vector a = SatelliteStateKm(omm, twoLine.Epoch + 1).Position;
      const Vector b = SatelliteStateKm(twoLine, twoLine.Epoch + 1).Position;
      EXPECT_LT(std::hypot(a.x - b.x, a.y - b.y, a.z - b.z), 1e-4);
    }
  }
}

TEST_F(Omm, DamagedValuesCostTheirOwnSetOnly) {
  const struct {
    const char* keyword;
    const char* value;
    std::size_t sets, rejected;
    double epoch = 99034.20978316;
    const char* setNumber = "148";
  } rows[] = {{"OBJECT_NAME", "  ", 0, 0},
              {"EPOCH", "", 0, 0},
              {"EPOCH", "1999-13-03T05:02:05", 0, 1},
              {"EPOCH", "1999-02-29T05:02:05", 0, 1},
              {"EPOCH", "1999-02-03", 0, 1},
              {"EPOCH", "2057-02-03T05:02:05", 0, 1},
              {"EPOCH", "1999-02-03T05:02:05.2x", 0, 1},
              {"EPOCH", "2000-02-29T12:00:00", 1, 0, 60.5},
              {"EPOCH", "1998-12-31T23:59:60.864", 1, 0, 98366.00001},
              {"EPOCH", "1998-12-31T23:59:61", 0, 1},
              {"ELEMENT_SET_NO", "1999", 1, 0, 99034.20978316, "999"},
              {"MEAN_MOTION", "0", 0, 1},
              {"ECCENTRICITY", "1", 0, 1},
              {"INCLINATION", "", 0, 1},
              {"INCLINATION", "nan", 0, 1},
              {"MEAN_ANOMALY", "1e30", 0, 1},
              {"BSTAR", "", 1, 0},
              {"BSTAR", "1.2.3", 0, 1},
              {"NORAD_CAT_ID", "1234567890", 0, 1},
              {"NORAD_CAT_ID", "-21263", 0, 1},
              {"NORAD_CAT_ID", "123456789", 1, 0}};
  const Message good = With(kMessage, "OBJECT_NAME", "GOOD");
  for (const auto& row : rows) {
    const std::vector<Message> messages{With(kMessage, row.keyword, row.value), good};
    for (const bool csv : {true, false}) {
      const auto sets = Sets(csv ? "a.csv" : "a.json", csv ? Csv(messages) : Json(messages));
      SCOPED_TRACE(std::string(row.keyword) + " " + row.value + (csv ? " csv" : " json"));
      EXPECT_EQ(rejected_.size(), row.rejected);
      ASSERT_EQ(sets.size(), 1 + row.sets);
      EXPECT_EQ(sets.back().Name, "GOOD");
      EXPECT_NEAR(sets.front().EpochRaw, row.epoch, 1e-9);
      EXPECT_EQ(sets.front().ElementSetNumber, row.setNumber);
    }
  }
}

TEST_F(Omm, TablesOfEveryKind) {
  const Message second = With(kMessage, "OBJECT_NAME", "SECOND");
  const std::string csv = Csv({kMessage, second}), json = Json({kMessage, second});
  const std::string header = csv.substr(0, csv.find("NOAA")), row = csv.substr(header.size());
  std::string holed = json;
  holed.insert(holed.find("\"ECC"), "\"X");
  std::mt19937 random(7);
  std::string noise;
  for (int i = 0; i < 20000; ++i) noise += "{}[]\",:\n\x80x"[random() % 11];
  const struct {
    const char* label;
    const char* file;
    std::string text;
    std::size_t sets;
  } rows[] = {
      {"other order, quotes, more columns", "a.csv",
       "\xEF\xBB\xBF\"mean_motion\", NORAD_CAT_ID,X,EPOCH,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,"
       "ARG_OF_PERICENTER,MEAN_ANOMALY,OBJECT_NAME\n\"14.2\", 5 ,\"a, \"\"b\"\"\","
       "\"1999-02-03T05:02:05\",.1,98,39,4,355,\"NOAA 12\"\n",
       1},
      {"a quote never closed", "a.csv", header + "\"" + row, 1},
      {"cut in a row", "a.csv", csv.substr(0, csv.size() - 60), 1},
      {"a pass list", "a.csv", "satellite,catalogue_number,epoch_utc\nNOAA 12,21263,1999\n" + row, 0},
      {"no rows", "a.csv", header, 0},
      {"noise below a header", "a.csv", header + noise, 0},
      {"one object", "a.json", json.substr(1, json.find('}')), 1},
      {"numbers and nested values", "a.json",
       R"([{"OBJECT_NAME":"NOAA 12","X":{"OBJECT_NAME":"NO","Z":[]},"EPOCH":"1999-02-03T05:02:05","MEAN_MOTION":14.2,
           "ECCENTRICITY":1e-3,"INCLINATION":98,"RA_OF_ASC_NODE":-0.5,"ARG_OF_PERICENTER":4,"NORAD_CAT_ID":5,
           "MEAN_ANOMALY":355,"BSTAR":null,"Y":["EPOCH"]}])",
       1},
      {"cut", "a.json", json.substr(0, json.size() / 2 + 60), 1},
      {"a hole in the first", "a.json", holed, 1},
      {"other objects", "a.json", R"([{"satellite":"NOAA 12"},{"OBJECT_NAME":"A","NORAD_CAT_ID":5},3])", 0},
      {"braces without end", "a.json", std::string(100000, '{'), 0},
      {"noise", "a.json", noise, 0}};
  for (const auto& table : rows) {
    const auto sets = Sets(table.file, table.text);
    EXPECT_EQ(sets.size(), table.sets) << table.file << " " << table.label;
    for (const TSatellite& set : sets) EXPECT_TRUE(set.Name == "NOAA 12" || set.Name == "SECOND");
  }
}

}  // namespace
}  // namespace pelorin::orbit
