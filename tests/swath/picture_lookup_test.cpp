#include "swath/picture_lookup.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "files/atomic_file.h"
#include "orbit/scalar_math.h"

namespace pelorin::swath {
namespace {

using namespace Qt::StringLiterals;

/// Two picture folders, "a" before "b".
class PictureLookupTest : public testing::Test {
 protected:
  void Make(const QString& name) {
    QDir(root_.path()).mkpath(name.section(u'/', 0, -2));
    files::ReplaceFile(root_.filePath(name), "x");
  }
  /// The path found, below the root.
  QString LookUp(int preference, int standardMinutes = 0, int daylightMinutes = 0,
                 const QString& key = u"03010001"_s) {
    searched_.clear();
    const FoundPicture found = LookUpPicture(key, preference, folders_, standardMinutes, daylightMinutes,
                                             [this](const QString& name) { searched_.append(name); });
    minutesLater_ = found.MinutesLater;
    return found.Path.mid(root_.path().size() + 1);
  }

  const QTemporaryDir root_;
  const QStringList folders_ = {QString(), root_.filePath(u"missing"_s), root_.filePath(u"a//\\"_s),
                                root_.filePath(u"b"_s)};
  QStringList searched_;
  int minutesLater_ = 0;
};

TEST_F(PictureLookupTest, BestSuffixOfTheFirstFolderWins) {
  for (const char* suffix : {".png", ".bmp", "-4.jpg", "-2.jpg"})
    Make(u"b/03010001"_s + QLatin1StringView(suffix));
  EXPECT_EQ(LookUp(0), u"b/03010001-2.jpg"_s);
  EXPECT_EQ(LookUp(1), u"b/03010001-4.jpg"_s);
  EXPECT_EQ(LookUp(2), u"b/03010001.bmp"_s);
  Make(u"a/03010001.PNG"_s);
  EXPECT_EQ(LookUp(0), u"a/03010001.PNG"_s) << "folders before suffixes, letters of any case";
  Make(u"a/03010001.png"_s);
  EXPECT_EQ(LookUp(0), u"a/03010001.png"_s) << "of two that differ in case the exact one";
}

TEST_F(PictureLookupTest, MinutesAroundThePassAreSearched) {
  EXPECT_EQ(LookUp(2), QString());
  EXPECT_EQ(searched_.size(), 13);
  EXPECT_EQ(searched_.at(1), u"02292359"_s) << "over the leap day";
  EXPECT_EQ(searched_.last(), u"03010010"_s);
  LookUp(2, -210, 60);
  EXPECT_EQ(searched_.size(), 37);
  EXPECT_EQ(searched_.at(13), u"02292029"_s);
  EXPECT_EQ(searched_.at(25), u"03010059"_s);
  Make(u"b/03010109.jpg"_s);
  EXPECT_EQ(LookUp(2, 0, 60), u"b/03010109.jpg"_s);
  EXPECT_EQ(minutesLater_, 8) << "by the clock of UTC";
  Make(u"b/02292359.jpg"_s);
  EXPECT_EQ(LookUp(2, 0, 60), u"b/02292359.jpg"_s);
  EXPECT_EQ(minutesLater_, -2);
  Make(u"b/03010001.jpg"_s);
  EXPECT_EQ(LookUp(2, 0, 60), u"b/03010001.jpg"_s);
  EXPECT_EQ(minutesLater_, 0) << "the minute itself goes before those around it";
  LookUp(2, 0, 0, u"01010001-and more"_s);
  EXPECT_EQ(searched_.at(1), u"12312359"_s) << "over the turn of the year";
}

TEST_F(PictureLookupTest, OtherNamesTellTheirPassWithTheYear) {
  const struct {
    const char *Name, *Satellite;
    int LocalMinutes;
    bool IsFound;
  } rows[] = {
      {"b/METEOR-M2-4_20250412_193512.png", "METEOR-M2 4", 0, true},
      {"b/METEOR-M2-4_20250412_193512.png", "METEOR-M2 3", 0, false},
      {"b/METEOR-M2-4_20240412_193512.png", "METEOR-M2 4", 0, false},
      {"b/2025-04-12_21-35_noaa_apt.jpg", "NOAA 19", 120, true},
      {"b/2025-04-12T21:35:12Z.jpg", "NOAA 19", 120, false},
      {"b/2025-04-12_19-31.tif", "NOAA 19", 0, false},
      {"b/2025-04-12_19-43.tif", "NOAA 19", 0, true},
      {"a/2025-04-12_19-34_lrpt/product.cbor", "METEOR-M2 4", 0, true},
      {"a/2025-04-12_19-34_lrpt/notes.txt", "METEOR-M2 4", 0, false},
      {"b/04121935.png", "METEOR-M2 4", 0, false},
  };
  for (const auto& row : rows) {
    for (const char* folder : {"a", "b"}) QDir(root_.filePath(QLatin1StringView(folder))).removeRecursively();
    const auto name = QLatin1StringView(row.Name);
    Make(name);
    const QString found =
        FindDatedPicture(orbit::ParseTimeString("202504121934"), QLatin1StringView(row.Satellite), folders_,
                         row.LocalMinutes, row.LocalMinutes);
    EXPECT_EQ(!found.isEmpty(), row.IsFound) << row.Name << ' ' << row.Satellite;
    EXPECT_TRUE(!row.IsFound || QFileInfo(root_.filePath(name)).filePath().startsWith(QDir::cleanPath(found)))
        << found.toStdString();
  }
}

TEST(PictureNamedFor, NameIsOfAMinuteThatIsSearched) {
  const std::pair<const char*, std::optional<int>> rows[] = {
      {"a/01010000V.png", 0}, {"12312358.jpg", -2}, {"0101000959-C.jpg", 9}, {"12312130.png", 0},
      {"01010103.png", 3},    {"12312357.png", {}}, {"01010010.png", {}},    {"party.png", {}}};
  for (const auto& [name, minutesLater] : rows) {
    const auto found =
        PictureNamedFor(QLatin1StringView(name), orbit::ParseTimeString("202001010000"), -150, 60);
    EXPECT_EQ(found ? std::optional(found->MinutesLater) : std::nullopt, minutesLater) << name;
  }
}

TEST_F(PictureLookupTest, KeyIsAFileOrATime) {
  Make(u"a/pass.bmp"_s);
  EXPECT_EQ(LookUp(0, 0, 0, root_.filePath(u"a/pass.bmp"_s)), u"a/pass.bmp"_s);
  for (const char* key : {"", "pass.bmp", "02300000", "03012400"}) {
    EXPECT_THROW(LookUp(0, 0, 0, QLatin1StringView(key)), orbit::ConvertError) << key;
  }
}

}  // namespace
}  // namespace pelorin::swath
