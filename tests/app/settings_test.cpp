#include "app/settings.h"

#include <gtest/gtest.h>

#include <QDir>

#include "app/element_address.h"
#include "tests/support/folder_test.h"

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

const QString kKey = u"\\Software\\Quillfen\\Pelorin"_s;
const DefaultFolders kFolders{u"/opt/pelorin/"_s, u"/tmp/results/"_s};

class SettingsTest : public tests::FolderTest {
 protected:
  std::unique_ptr<Settings> Read(const QString& program = u"Pelorin"_s) const {
    return std::make_unique<Settings>(store_, program, kFolders);
  }
  void Give(const QString& name, const RegistryDocument::Value& value, const QString& key = kKey) const {
    store_.Update([&](RegistryDocument& document) { document.Set(key, name, value); });
  }
  std::optional<QString> Text(const QString& name) const { return store_.Read().Find<QString>(kKey, name); }
  std::optional<int> Number(const QString& name) const {
    return store_.Read().Find<std::int32_t>(kKey, name);
  }

  const RegistryStore store_{Folder()};
};

TEST_F(SettingsTest, WhatOneRunChangesTheNextOneFinds) {
  EXPECT_EQ(Read()->Station().Height, u"150"_s);
  EXPECT_EQ(Read()->TwoLineDataPath.Value, kFolders.Elements);
  EXPECT_TRUE(QDir(Folder()).isEmpty()) << "looking writes nothing";
  Give(u"FootprintShowLevel"_s, u"2"_s);
  Give(u"ResultsPath"_s, QString());
  const auto settings = Read();
  EXPECT_EQ(settings->FootprintShowLevel.Value, 1) << "a text is no number";
  EXPECT_EQ(settings->ResultsPath.Value, QString()) << "an empty text counts";
  settings->OvlTextLine[2].Value = 33;
  settings->SavePassDetails.Value = true;
  settings->SatelliteList.Value = ToCommaText({u"NOAA 15"_s, u"ISS"_s});
  settings->ObserverLongitude.Value = u" 12,5"_s;
  settings->Save();
  EXPECT_EQ(Number(u"FootprintShowLevel"_s), 1) << "of its kind again";
  EXPECT_EQ(Number(u"SavePassDetails"_s), 1);
  EXPECT_EQ(Text(u"SatelliteList"_s), u"\"NOAA 15\",ISS"_s);
  EXPECT_EQ(Text(u"ImagePathList"_s), u"C:\\Dunlow\\BMP\\"_s) << "defaults too";
  EXPECT_EQ(Text(u"ElementsAddress"_s), std::nullopt) << "the user's own";
  EXPECT_EQ(Read()->Station().Longitude, u" 12,5"_s);
  EXPECT_EQ(Read(u"other"_s)->Station().Longitude, u"-3.2"_s);
}

TEST_F(SettingsTest, TwoProgramsKeepWhatTheOtherOneChanged) {
  const auto first = Read(), second = Read();
  first->ResultsPath.Value = u"/mine/"_s;
  first->FootprintShowLevel.Value = 0;
  second->FootprintShowLevel.Value = 2;
  first->Save();
  second->Save();
  EXPECT_EQ(Text(u"ResultsPath"_s), u"/mine/"_s) << "the second one did not touch it";
  EXPECT_EQ(Number(u"FootprintShowLevel"_s), 2) << "the last word counts";
}

TEST_F(SettingsTest, ElementAddressComesFromTheNearestOfThree) {
  const QByteArray before = qgetenv("PELORIN_ELEMENTS_URL");
  const struct {
    const char* Variable;
    QString Setting, Address;
    bool IsPublic = false;
  } rows[] = {{"http://here", u"https://mirror/e"_s, u"http://here/"_s},
              {" ", u" https://mirror/e "_s, u"https://mirror/e/"_s},
              {"http://celestrak.org/e", {}, u"http://celestrak.org/e/"_s, true},
              {"", u"mirror/e"_s, u"https://mirror/e/"_s},
              {"", u""_s, u"https://celestrak.org/NORAD/elements/"_s, true}};
  for (const auto& row : rows) {
    qputenv("PELORIN_ELEMENTS_URL", row.Variable);
    Give(u"ElementsAddress"_s, row.Setting, kKey + u"\\Network"_s);
    EXPECT_EQ(ElementAddress(*Read()), row.Address);
    EXPECT_EQ(IsPublicService(row.Address), row.IsPublic) << row.Address.toStdString();
  }
  qputenv("PELORIN_ELEMENTS_URL", before);
}

}  // namespace
}  // namespace pelorin::app
