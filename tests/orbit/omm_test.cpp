#include "orbit/omm.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <chrono>
#include <cmath>
#include <fstream>
#include <random>

#include "elements/known_sets.h"
#include "orbit/propagation.h"

namespace pelorin::orbit {
namespace {

namespace fs = std::filesystem;

using Message = std::vector<std::pair<std::string, std::string>>;

const Message kMessage{
    {"OBJECT_NAME", "NOAA 12"},      {"OBJECT_ID", "1991-032A"},      {"EPOCH", "1999-02-03T05:02:05.265024"},
    {"MEAN_MOTION", "14.22950462"},  {"ECCENTRICITY", ".001325"},     {"INCLINATION", "98.5313"},
    {"RA_OF_ASC_NODE", "39.9325"},   {"ARG_OF_PERICENTER", "4.9627"}, {"MEAN_ANOMALY", "355.168"},
    {"NORAD_CAT_ID", "21263"},       {"ELEMENT_SET_NO", "148"},       {"BSTAR", ".13981E-3"},
    {"MEAN_MOTION_DOT", "+.272E-5"}, {"MEAN_MOTION_DDOT", "0"}};

Message With(Message message, const Message& changes) {
  for (auto& [keyword, value] : message) {
    for (const auto& [changed, to] : changes) {
      if (keyword == changed) value = to;
    }
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

/// The message of a two-line set, its values copied column by column.
Message MessageOf(std::string_view name, std::string_view line1, std::string_view line2) {
  using namespace std::chrono;
  const auto field = [](std::string_view line, std::size_t column, std::size_t length) {
    std::string text(line.substr(column - 1, length));
    std::erase(text, ' ');
    return text;
  };
  const auto scaled = [&](std::size_t column) {
    const std::string sign = line1[column - 1] == '-' ? "-" : "";
    return sign + "." + field(line1, column + 1, 5) + "E" + field(line1, column + 6, 2);
  };
  const int yy = std::stoi(field(line1, 19, 2));
  const sys_days newYear = year{yy < 57 ? 2000 + yy : 1900 + yy} / 1 / 1;
  const auto day = std::stoll(field(line1, 21, 3)) - 1;
  const auto moment = newYear + days{day} + microseconds{std::stoll(field(line1, 25, 8)) * 864};
  const year_month_day date{floor<days>(moment)};
  const hh_mm_ss time{moment - floor<days>(moment)};
  char epoch[40];
  std::snprintf(epoch, sizeof epoch, "%d-%02u-%02uT%02ld:%02ld:%02ld.%06ld", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<long>(time.hours().count()), static_cast<long>(time.minutes().count()),
                static_cast<long>(time.seconds().count()), static_cast<long>(time.subseconds().count()));
  return With(kMessage, {{"OBJECT_NAME", std::string(name)},
                         {"EPOCH", epoch},
                         {"MEAN_MOTION", field(line2, 53, 11)},
                         {"ECCENTRICITY", "0." + field(line2, 27, 7)},
                         {"INCLINATION", field(line2, 9, 8)},
                         {"RA_OF_ASC_NODE", field(line2, 18, 8)},
                         {"ARG_OF_PERICENTER", field(line2, 35, 8)},
                         {"MEAN_ANOMALY", field(line2, 44, 8)},
                         {"NORAD_CAT_ID", field(line1, 3, 5)},
                         {"ELEMENT_SET_NO", field(line1, 65, 4)},
                         {"BSTAR", scaled(54)},
                         {"MEAN_MOTION_DOT", field(line1, 34, 10)},
                         {"MEAN_MOTION_DDOT", scaled(45)}});
}

class Omm : public testing::Test {
 protected:
  fs::path Folder() const { return folder_.path().toStdString(); }
  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(Folder() / name, std::ios::binary) << text;
  }
  std::vector<TSatellite> Sets(const std::string& name, const std::string& text) {
    Write(name, text);
    rejected_.clear();
    return ReadAllElementSets(Folder() / name, rejected_);
  }
  std::vector<RejectedSet> rejected_;

 private:
  QTemporaryDir folder_;
};

TEST_F(Omm, EveryFormOfASetGivesTheSameState) {
  const fs::path reference = fs::path(PELORIN_TEST_DATA) / "elements.2li";
  std::vector<Message> messages;
  ReadElementTriples(reference, [&](std::string_view name, std::string_view line1, std::string_view line2) {
    if (line1.size() > 63) messages.push_back(MessageOf(name, line1, line2));
  });
  auto lines = ReadAllElementSets(reference, rejected_);
  int deepSpace = 0;
  for (const char* form : {"a.csv", "a.JSON"}) {
    auto sets = Sets(form, form[2] == 'c' ? Csv(messages) : Json(messages));
    ASSERT_EQ(sets.size(), lines.size()) << form;
    for (std::size_t i = 0; i < sets.size(); ++i) {
      TSatellite &omm = sets[i], &twoLine = lines[i];
      const std::string label = std::string(form) + " " + twoLine.Name;
      EXPECT_EQ(omm.Name, twoLine.Name);
      EXPECT_EQ(omm.SourceFile, form);
      EXPECT_EQ(omm.CatalogueKey(), twoLine.CatalogueKey()) << label;
      EXPECT_EQ(omm.ElementSetNumber, twoLine.ElementSetNumber) << label;
      EXPECT_EQ(omm.Epoch, twoLine.Epoch) << label;
      EXPECT_EQ(omm.EpochRaw, twoLine.EpochRaw) << label;
      EXPECT_NEAR(omm.MeanMotionDot, twoLine.MeanMotionDot, 1e-20) << label;
      EXPECT_NEAR(omm.MeanMotionDotDot, twoLine.MeanMotionDotDot, 1e-20) << label;
      EXPECT_EQ(omm.IsDeepSpace, twoLine.IsDeepSpace) << label;
      deepSpace += omm.IsDeepSpace ? 1 : 0;
      const Vector a = SatelliteStateKm(omm, twoLine.Epoch + 1).Position;
      const Vector b = SatelliteStateKm(twoLine, twoLine.Epoch + 1).Position;
      EXPECT_LT(std::hypot(a.x - b.x, a.y - b.y, a.z - b.z), 1e-4) << label;
    }
  }
  EXPECT_GT(deepSpace, 10);
  EXPECT_GT(2 * lines.size() - static_cast<std::size_t>(deepSpace), 10u);
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
              {"EPOCH", "1999-034T05:02:05.265024Z", 1, 0},
              {"EPOCH", "2000-02-29T12:00:00", 1, 0, 60.5},
              {"EPOCH", "1998-12-31T23:59:60.864", 1, 0, 98366.00001},
              {"EPOCH", "1998-12-31T23:59:61", 0, 1},
              {"ELEMENT_SET_NO", "1999", 1, 0, 99034.20978316, "999"},
              {"MEAN_MOTION", "x", 0, 1},
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
  const Message good = With(kMessage, {{"OBJECT_NAME", "GOOD"}});
  for (const auto& row : rows) {
    const std::vector<Message> messages{With(kMessage, {{row.keyword, row.value}}), good};
    for (const bool csv : {true, false}) {
      const auto sets = Sets(csv ? "a.csv" : "a.json", csv ? Csv(messages) : Json(messages));
      EXPECT_EQ(rejected_.size(), row.rejected) << row.keyword << " " << row.value << " " << csv;
      ASSERT_EQ(sets.size(), 1 + row.sets) << row.keyword << " " << row.value << " " << csv;
      EXPECT_EQ(sets.back().Name, "GOOD");
      EXPECT_NEAR(sets.front().EpochRaw, row.epoch, 1e-9) << row.value;
      EXPECT_EQ(sets.front().ElementSetNumber, row.setNumber) << row.value;
    }
  }
}

TEST_F(Omm, TablesOfEveryKind) {
  const Message second = With(kMessage, {{"OBJECT_NAME", "SECOND"}});
  const std::string csv = Csv({kMessage, second}), json = Json({kMessage, second});
  const std::string row = csv.substr(csv.find("NOAA"));
  const std::string cut = json.substr(0, json.size() / 2);
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
      {"a quote never closed", "a.csv", csv.substr(0, csv.find("NOAA")) + "\"" + row, 1},
      {"cut in a row", "a.csv", csv.substr(0, csv.size() - 60), 1},
      {"a pass list", "a.csv", "satellite,catalogue_number,epoch_utc\nNOAA 12,21263,1999\n" + row, 0},
      {"no rows", "a.csv", csv.substr(0, csv.find("NOAA")), 0},
      {"noise", "a.csv", noise, 0},
      {"noise below a header", "a.csv", csv.substr(0, csv.find("NOAA")) + noise, 0},
      {"one object", "a.json", json.substr(1, json.find('}')), 1},
      {"numbers and nested values", "a.json",
       R"([{"OBJECT_NAME":"NOAA 12","X":{"OBJECT_NAME":"NO","Z":[]},"EPOCH":"1999-02-03T05:02:05","MEAN_MOTION":14.2,
           "ECCENTRICITY":1e-3,"INCLINATION":98,"RA_OF_ASC_NODE":-0.5,"ARG_OF_PERICENTER":4,"NORAD_CAT_ID":5,
           "MEAN_ANOMALY":355,"BSTAR":null,"Y":["EPOCH"]}])",
       1},
      {"cut", "a.json", cut + json.substr(json.size() / 2, 60), 1},
      {"a hole in the first", "a.json", holed, 1},
      {"other objects", "a.json", R"([{"satellite":"NOAA 12"},{"OBJECT_NAME":"A","NORAD_CAT_ID":5},3])", 0},
      {"empty", "a.json", "", 0},
      {"brackets without end", "a.json", std::string(100000, '['), 0},
      {"braces without end", "a.json", std::string(100000, '{'), 0},
      {"noise", "a.json", noise, 0}};
  for (const auto& table : rows) {
    const auto sets = Sets(table.file, table.text);
    EXPECT_EQ(sets.size(), table.sets) << table.file << " " << table.label;
    for (const TSatellite& set : sets) EXPECT_TRUE(set.Name == "NOAA 12" || set.Name == "SECOND");
  }
}

TEST_F(Omm, TheNewestOfASatelliteWinsInWhateverForm) {
  const auto lines = [](const std::string& name, const std::string& number) {
    return name + "\n1 " + number + "U 91032A   99034.20978316  .00000272  00000-0  13981-3 0  1482\n2 " +
           number + "  98.5313  39.9325 0013250   4.9627 355.1680 14.22950462401115\n";
  };
  const struct {
    const char* label;
    const char *lineNumber, *ommNumber, *epoch;
    std::vector<std::string> names;
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
  for (const auto& row : rows) {
    Write("z.2li", lines("LINES", row.lineNumber));
    Write("a.csv",
          Csv({With(kMessage,
                    {{"OBJECT_NAME", "OMM"}, {"NORAD_CAT_ID", row.ommNumber}, {"EPOCH", row.epoch}})}));
    elements::KnownSets known(Folder(), {});
    const elements::TSatelliteList& list = known.Satellites();
    ASSERT_EQ(list.Count(), static_cast<int>(row.names.size())) << row.label;
    for (std::size_t i = 0; i < row.names.size(); ++i) {
      EXPECT_EQ(list.Name(static_cast<int>(i)), row.names[i]) << row.label;
    }
  }
  elements::KnownSets known(Folder(), {});
  const elements::TSatelliteList& list = known.Satellites();
  EXPECT_EQ(list.Satellite(1).CatalogueNumber, "799521263");
  EXPECT_EQ(list.IndexOfCatalogueNumber("21263"), 0);
  EXPECT_EQ(list.IndexOfCatalogueNumber("799521263"), -1);
  for (const char* name : {"c.json", "d.TLE", "b.CSV", "e.2LI", "f.txt"}) Write(name, "");
  std::vector<std::string> order;
  for (const fs::path& file : ElementFilesIn(Folder())) order.push_back(file.filename().string());
  EXPECT_EQ(order, (std::vector<std::string>{"e.2LI", "z.2li", "d.TLE", "a.csv", "b.CSV", "c.json"}));
}

}  // namespace
}  // namespace pelorin::orbit
