#include "swath/decoder_product.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cmath>
#include <nlohmann/json.hpp>

#include "files/atomic_file.h"
#include "files/file_error.h"

namespace pelorin::swath {
namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;

constexpr const char* kLine1 = "1 59051U 24039A   25102.50000000  .00000123  00000-0  76543-4 0  9991";
constexpr const char* kLine2 = "2 59051  98.6000  60.0000 0008000 120.0000 240.0000 14.22000000 58001";

json Newer() {
  json product = json::parse(R"({
    "instrument": "msu_mr", "type": "image", "product_source": "some station", "product_timestamp": 1.7e9,
    "images": [{"file": "MSU-MR-1.png", "name": "1", "bit_depth": 10},
               {"file": "MSU-MR-2.png", "name": "2", "transform": {"bx": 2.5, "by": -8}},
               {"file": "gone.png", "name": "3"},
               {"file": "MSU-MR-4.png", "name": "4", "transform": {"type": 1, "ax": 1.01}}],
    "projection_cfg": {
      "type": "normal_single_line", "scan_angle": 110.1, "image_width": 1568, "roll_offset": -0.4,
      "pitch_offset": 0.25, "timestamp_offset": 1, "invert_scan": true,
      "timestamps": [1.7e9, -1, 1700000002.462282, null], "interpolate_timestamps": 8,
      "interpolate_timestamps_scantime": 0.16, "tle": {"norad": 59051, "name": "METEOR-M2 4"}}})");
  product["projection_cfg"]["tle"]["line1"] = std::string(kLine1) + "\r\n";
  product["projection_cfg"]["tle"]["line2"] = kLine2;
  return product;
}

json Older() {
  json product = Newer();
  product["tle"] = product["projection_cfg"]["tle"];
  product["projection_cfg"] = {{"type", "normal_single_line"}, {"yaw_offset", 3}};
  product["timestamps_type"] = 1;
  product["has_timestamps"] = true;
  for (int i = 0; i < 2; ++i) {
    auto& image = product["images"][i];
    image["timestamps"] = {1.7e9 + 10 * i, 1.7e9 + 10 * i + 1.231141};
    image["ifov_y"] = 8;
  }
  return product;
}

QByteArray Cbor(const json& product) {
  const auto bytes = json::to_cbor(product);
  return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

/// A pass with one product, "pass/MSU-MR", and a picture beside it that is none of its business.
class DecoderProductTest : public testing::Test {
 protected:
  DecoderProductTest() {
    QDir(root_.path()).mkpath(u"pass/MSU-MR/more"_s);
    for (const char* name : {"MSU-MR-1.png", "MSU-MR-2.png", "MSU-MR-4.png", "MSU-MR_rgb_221_corrected.png",
                             "MSU-MR_rgb_123.png", "MSU-MR_rgb.txt", "more/other.png", "../../outside.png"}) {
      Put(QByteArray("pass/MSU-MR/") + name, "x");
    }
    QFile::link(At("outside.png"), At("pass/MSU-MR/link.png"));
    QFile::link(At("outside.png"), At("pass/MSU-MR/link_rgb_1.png"));
  }

  QString At(const char* name) const {
    return QDir::cleanPath(QFileInfo(root_.path()).canonicalFilePath() + u'/' + QString::fromUtf8(name));
  }
  void Put(const char* name, const QByteArray& content) { files::ReplaceFile(At(name), content); }
  void PutProduct(const json& product) { Put("pass/MSU-MR/product.cbor", Cbor(product)); }
  /// What is wrong with it, without the root's path; empty when it can be read.
  std::string ProblemAt(const char* name) const {
    try {
      (void)ReadDecodedPass(At(name));
      return {};
    } catch (const files::FileError& error) {
      return error.Text().remove(At("")).toStdString();
    }
  }

  const QTemporaryDir root_;
};

TEST_F(DecoderProductTest, NewerFormTellsEverything) {
  PutProduct(Newer());
  Put("pass/dataset.json", R"({"satellite": "X", "products": ["MSU-MR", "gone", "../pass/MSU-MR"]})");
  const auto pass = ReadDecodedPass(At("pass"));
  ASSERT_TRUE(pass && pass->Products.size() == 1);
  ASSERT_EQ(pass->Problems.size(), 2) << "the others are told";
  EXPECT_TRUE(
      pass->Problems[0].endsWith(u"dataset.json: \"products[1]\" names a folder that is not there"_s));
  const DecodedProduct& product = pass->Products.front();
  EXPECT_EQ(product.Satellite + product.CatalogueNumber, u"METEOR-M2 459051"_s);
  EXPECT_EQ(product.ElementLine1.toStdString(), kLine1) << "without its line's end";
  EXPECT_EQ(product.ElementLine2.toStdString(), kLine2);
  ASSERT_TRUE(product.Geometry);
  EXPECT_EQ(product.Geometry->Line, (LineShape{1568, 110.1, ScanLaw::EvenAngles}));
  EXPECT_EQ(product.Geometry->Offsets, (Attitude{-0.4, 0.25, 0}));
  EXPECT_EQ(product.Geometry->TimeOffsetS, 1);
  EXPECT_TRUE(product.Geometry->InvertScan);

  std::string images;
  for (const DecodedImage& image : product.Images) {
    images += image.Channel.toStdString() + (image.IsComposite ? "+" : "") + (image.IsCorrected ? "c" : "") +
              (image.IsWarped ? "w" : "") + " ";
  }
  EXPECT_EQ(images, "1 2 4w MSU-MR_rgb_123+ MSU-MR_rgb_221_corrected+c ");
  EXPECT_EQ(product.Images[0].BitDepth, 10);
  EXPECT_EQ(product.Images[1].FirstColumn, 2.5);
  EXPECT_EQ(LineStampsOf(product, 0, 20)[12], 1.7e9 + 1.231141) << "the lost one, at the instrument's period";
  EXPECT_NEAR(LineStampsOf(product, 1, 20)[12], 1.7e9, 1e-4) << "of a channel that begins a group earlier";
  EXPECT_EQ(LineStampsOf(product, 3, 20)[4], 1.7e9) << "of a composite";
}

TEST_F(DecoderProductTest, OlderFormGivesStampsAndElementsAlone) {
  PutProduct(Older());
  const auto pass = ReadDecodedPass(At("pass/MSU-MR/product.cbor"));
  ASSERT_TRUE(pass);
  const DecodedProduct& product = pass->Products.front();
  EXPECT_TRUE(product.IsOlderForm);
  EXPECT_FALSE(product.Geometry);
  EXPECT_TRUE(product.GeometryProblem.contains(u"older form, whose angles are counted in another way"_s));
  EXPECT_EQ(product.ElementLine1.toStdString(), kLine1);
  EXPECT_EQ(LineStampsOf(product, 0, 9)[4], 1.7e9);
  EXPECT_EQ(LineStampsOf(product, 1, 9)[4], 1.7e9 + 10) << "each begins for itself";
  EXPECT_TRUE(std::isnan(LineStampsOf(product, 3, 9)[4])) << "and nobody knows how they were put together";

  json rows = Newer();
  rows["timestamps_type"] = 0;
  rows["timestamps"] = {1.7e9, 1.7e9 + 0.5};
  rows.erase("projection_cfg");
  PutProduct(rows);
  EXPECT_EQ(LineStampsOf(ReadDecodedPass(At("pass/MSU-MR"))->Products.front(), 0, 2)[1], 1.7e9 + 0.5);
}

TEST_F(DecoderProductTest, PicturesLeadToTheirProduct) {
  PutProduct(Newer());
  Put("pass/MSU-MR/composed.png", "x");
  const struct {
    const char *path, *channel;  ///< null: it belongs to no product
  } rows[] = {{"pass/MSU-MR/MSU-MR-2.png", "2"},
              {"pass/MSU-MR/MSU-MR_rgb_123.png", "MSU-MR_rgb_123"},
              {"pass/MSU-MR/composed.png", "composed"},
              {"pass/MSU-MR/more/other.png", nullptr},
              {"pass/MSU-MR/MSU-MR_rgb.txt", nullptr},
              {"outside.png", nullptr},
              {"pass", nullptr},
              {"gone", nullptr}};
  for (const auto& row : rows) {
    const auto pass = ReadDecodedPass(At(row.path));
    ASSERT_EQ(pass.has_value(), row.channel != nullptr) << row.path;
    if (!pass) continue;
    EXPECT_EQ(pass->Products.front().Images.at(static_cast<std::size_t>(pass->Image)).Channel,
              QString::fromUtf8(row.channel));
  }
  json other = Newer();
  other["type"] = "radiation";
  for (const QByteArray& unfit : {QByteArray("damaged"), Cbor(other)}) {
    Put("pass/MSU-MR/product.cbor", unfit);
    for (const char* picture : {"pass/MSU-MR/MSU-MR-1.png", "pass/MSU-MR/more/other.png"}) {
      QString problem;
      EXPECT_FALSE(ReadDecodedPass(At(picture), &problem)) << "it can do without";
      EXPECT_EQ(problem.remove(At("")).toStdString(), ProblemAt("pass/MSU-MR"));
    }
  }
}

TEST_F(DecoderProductTest, WhatIsWrongIsToldWithFileAndKey) {
  const struct {
    const char* key;  ///< that is changed
    json value;
    std::string problem;  ///< of that key; empty for none
  } rows[] = {
      {"/type", "sounder", R"(is "sounder": there are no pictures)"},
      {"/images", "many", "must be a list"},
      {"/images", json::array(), ""},
      {"/images", json(10001, json::object()), "must have at most 10000 items"},
      {"/images/1", 5, "must be an object"},
      {"/images/1/file", nullptr, "must be the name of a file"},
      {"/images/1/file", std::string("a\0b", 3), "must be the name of a file"},
      {"/images/1/file", "/etc/passwd", R"(is "/etc/passwd", which leads out of its folder)"},
      {"/images/1/file", "more/../../a", R"(is "more/../../a", which leads out of its folder)"},
      {"/images/1/file", "link.png", R"(is "link.png", which leads out of its folder)"},
      {"/images/1/transform", "unknown", ""},
      {"/projection_cfg", 1, "must be an object"},
      {"/projection_cfg/image_width", 0, "must be a number from 2 to 20000"},
      {"/projection_cfg/image_width", 1e5, "must be a number from 2 to 20000"},
      {"/projection_cfg/image_width", 5.5, "must be a whole number"},
      {"/projection_cfg/image_width", nullptr, "is missing"},
      {"/projection_cfg/scan_angle", std::nan(""), "must be a number from 1 to 150"},
      {"/projection_cfg/invert_scan", 1, "must be true or false"},
      {"/projection_cfg/timestamps/1", "x", "must be a number"},
      {"/projection_cfg/timestamps", {std::nan(""), 5, 4, -1e300, 1e300}, ""},
      {"/projection_cfg/timestamps", json(100001, 5), "must have at most 100000 items"},
      {"/projection_cfg/tle/line1", 3, "must be a text"},
  };
  for (const auto& row : rows) {
    json product = Newer();
    product[json::json_pointer(row.key)] = row.value;
    PutProduct(product);
    QString key = QString::fromLatin1(row.key + 1).replace(u"/1"_s, u"[1]"_s).replace(u'/', u'.');
    const std::string told = "/pass/MSU-MR/product.cbor: \"" + key.toStdString() + "\" " + row.problem;
    EXPECT_EQ(ProblemAt("pass/MSU-MR"), row.problem.empty() ? "" : told) << row.value.dump().substr(0, 80);
  }
}

TEST_F(DecoderProductTest, GeometryThatIsNotKnownIsTold) {
  const std::pair<const char*, const char*> rows[] = {
      {R"(null)", "its decoder wrote no geometry"},
      {R"({"type": "x"})", "its geometry is of the type \"x\", which is not supported"},
      {R"({"rotate_yaw": true})", "its geometry has \"rotate_yaw\", which is not supported"},
      {R"({"yaw_offset": -90})", "its scanner is turned by more than 10°, which is not supported"},
      {R"({"type": "noaa_apt_single_line", "image_width": null})", ""},
  };
  for (const auto& [change, problem] : rows) {
    json product = Newer();
    product["projection_cfg"].merge_patch(json::parse(change));
    PutProduct(product);
    const DecodedProduct read = ReadDecodedPass(At("pass/MSU-MR"))->Products.front();
    const std::string told = At("pass/MSU-MR/product.cbor").toStdString() + ": " + problem +
                             ". The angles of the table of scanners are used instead.";
    EXPECT_EQ(read.GeometryProblem.toStdString(), *problem ? told : "");
    EXPECT_EQ(read.Geometry && read.Geometry->Line.Law == ScanLaw::Zones, !*problem) << change;
  }
  json product = Newer();
  product["projection_cfg"]["type"] = "noaa_apt_single_line";
  PutProduct(product);
  EXPECT_TRUE(ProblemAt("pass/MSU-MR").ends_with(R"("projection_cfg.image_width" must be 909 for zones)"));
}

TEST_F(DecoderProductTest, DamagedFilesAreTold) {
  const QByteArray deep = QByteArray(1'000'000, '\x81'), tags(1'000'000, '\xc1'), texts(1'000'000, '\x7f');
  const QByteArray whole = Cbor(Newer());
  const std::pair<QByteArray, const char*> rows[] = {
      {"", "damaged"},
      {whole.left(whole.size() / 2), "damaged"},
      {"\xa1" + deep, "nested deeper"},
      {"\xa1\x61x" + deep, "nested deeper"},
      {"\xa1\x61x" + tags, "damaged"},
      {"\xa1\x61x" + texts, "damaged"},
      {QByteArray("\xa1\x61x\x9b\x00\x00\x00\xff\xff\xff\xff\xff", 12), "damaged"},
      {QByteArray("\xa1\x61x\x7b\x00\x00\x00\xff\xff\xff\xff\xff", 12), "damaged"},
      {QByteArray("\xa1\x61x\x9a\x00\x2d\xc6\xc0", 8) + QByteArray(3'000'000, '\0'), "more values"},
      {"[]", "damaged"},
      {"\x05", "not what a decoder writes"},
  };
  for (const auto& [content, problem] : rows) {
    Put("pass/MSU-MR/product.cbor", content);
    EXPECT_NE(ProblemAt("pass/MSU-MR").find(problem), std::string::npos)
        << problem << " for " << content.left(8).toHex().toStdString() << ": " << ProblemAt("pass/MSU-MR");
  }
  for (const char* text :
       {"", "{\"products\": [\"MSU-MR\",]}", "[]", "{\"products\": 5}", "{}", "{\"products\": [\"/\"]}"}) {
    Put("pass/dataset.json", text);
    EXPECT_TRUE(ProblemAt("pass").starts_with("/pass/dataset.json: ")) << text << ": " << ProblemAt("pass");
  }
  Put("pass/dataset.json", QByteArray(1'000'000, '['));
  EXPECT_NE(ProblemAt("pass").find("no JSON"), std::string::npos);
}

}  // namespace
}  // namespace pelorin::swath
