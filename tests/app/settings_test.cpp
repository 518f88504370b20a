#include "app/settings.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

const QString kProgram = u"Pelorin"_s;
const DefaultFolders kFolders{u"/opt/pelorin/"_s, u"/tmp/results/"_s};

TEST(Settings, WhatOneRunChangesTheNextOneFinds) {
  const QTemporaryDir folder;
  const RegistryStore store(folder.path());
  const SettingsSnapshot first = ReadSettings(store, kProgram, kFolders);
  EXPECT_EQ(first.Station.Height, u"150"_s);
  EXPECT_EQ(first.TwoLineDataPath, kFolders.Elements);
  EXPECT_TRUE(QDir(folder.path()).isEmpty()) << "looking writes nothing";
  const QString keyPath = u"\\Software\\Quillfen\\Pelorin"_s;
  store.WriteString(keyPath, u"FootprintShowLevel"_s, u"2"_s);
  store.WriteInteger(keyPath, u"MinPassElevation"_s, 40);
  store.WriteString(keyPath, u"ResultsPath"_s, QString());
  {
    Settings settings(store, kProgram, kFolders);
    EXPECT_EQ(settings.FootprintShowLevel.Value, 1) << "a text is no number";
    EXPECT_EQ(settings.MinPassElevation.Value, u"1.5"_s) << "a number is no text";
    EXPECT_EQ(settings.ResultsPath.Value, QString()) << "an empty text counts";
    settings.OvlTextLine[2].Value = 33;
    settings.SatelliteList.Value = ToCommaText({u"NOAA 15"_s, u"ISS"_s});
    settings.ObserverLongitude.Value = u" 12,5"_s;
  }
  EXPECT_EQ(store.ReadInteger(keyPath, u"FootprintShowLevel"_s), 1);
  EXPECT_EQ(store.ReadInteger(keyPath, u"OvlTextLine3"_s), 33);
  EXPECT_EQ(store.ReadString(keyPath, u"SatelliteList"_s), u"\"NOAA 15\",ISS"_s);
  EXPECT_EQ(store.ReadString(keyPath, u"ImagePathList"_s), u"C:\\Dunlow\\BMP\\"_s) << "defaults too";
  const SettingsSnapshot snapshot = ReadSettings(store, kProgram, kFolders);
  EXPECT_EQ(snapshot.SatelliteList, QStringList({u"NOAA 15"_s, u"ISS"_s}));
  EXPECT_EQ(snapshot.Station.Longitude, u" 12,5"_s);
}

}  // namespace
}  // namespace pelorin::app
