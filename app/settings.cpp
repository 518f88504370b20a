#include "app/settings.h"

#include <string>
#include <vector>

#include "orbit/comma_text.h"

namespace pelorin::app {

/// Makes the setting objects of one program.
class Settings::Maker {
 public:
  Maker(const RegistryStore& store, const QString& programName)
      : store_(store), keyPath_(SettingsKeyPath(programName)) {}

  TRegistryString Text(const char* name, const QString& defaultValue) const {
    return {store_, keyPath_, QString::fromLatin1(name), defaultValue};
  }
  TRegistryInteger Integer(const char* name, std::int32_t defaultValue) const {
    return {store_, keyPath_, QString::fromLatin1(name), defaultValue};
  }
  TRegistryBoolean Boolean(const char* name, bool defaultValue) const {
    return {store_, keyPath_, QString::fromLatin1(name), defaultValue};
  }

 private:
  const RegistryStore& store_;
  const QString keyPath_;
};

Settings::Settings(const RegistryStore& store, const QString& programName, const DefaultFolders& folders)
    : Settings(Maker(store, programName), folders) {}

Settings::Settings(const Maker& make, const DefaultFolders& folders)
    : ObserverLatitude(make.Text("ObserverLatitude", QStringLiteral("55.905"))),
      ObserverLongitude(make.Text("ObserverLongitude", QStringLiteral("-3.2"))),
      ObserverHeight(make.Text("ObserverHeight", QString::fromUtf16(kHeightNeverSaved))),
      MinPassElevation(make.Text("MinPassElevation", QStringLiteral("1.5"))),
      SavePassDetails(make.Boolean("SavePassDetails", false)),
      ShowOverlay(make.Boolean("ShowOverlay", false)),
      OverlayLinesOnly(make.Boolean("OverlayLinesOnly", false)),
      OvlTextLine{make.Integer("OvlTextLine1", 0), make.Integer("OvlTextLine2", 0),
                  make.Integer("OvlTextLine3", 0)},
      TwoLineDataPath(make.Text("TwoLineDataPath", folders.Elements)),
      ResultsPath(make.Text("ResultsPath", folders.Results)),
      SatelliteList(make.Text("SatelliteList", QString())),
      PrimarySatellite(make.Text("PrimarySatellite", QString())),
      FootprintShowLevel(make.Integer("FootprintShowLevel", 1)),
      UpdateInterval(make.Integer("UpdateInterval", 5)),
      ImagePathList(make.Text("ImagePathList", QStringLiteral("C:\\Dunlow\\BMP\\"))),
      ClockCorrections(make.Text("ClockCorrections", QString())) {}

SettingsSnapshot ReadSettings(const RegistryStore& store, const QString& programName,
                              const DefaultFolders& folders) {
  const RegistryStore quiet = store.ReadOnly();
  const Settings settings(quiet, programName, folders);
  SettingsSnapshot snapshot;
  snapshot.Station = {settings.ObserverLatitude.Value, settings.ObserverLongitude.Value,
                      settings.ObserverHeight.Value, settings.MinPassElevation.Value};
  ReplaceUnsavedHeight(snapshot.Station.Height);
  snapshot.SavePassDetails = settings.SavePassDetails.Value;
  snapshot.ShowOverlay = settings.ShowOverlay.Value;
  for (std::size_t line = 0; line < settings.OvlTextLine.size(); ++line) {
    snapshot.OvlTextLine[line] = settings.OvlTextLine[line].Value;
  }
  snapshot.TwoLineDataPath = settings.TwoLineDataPath.Value;
  snapshot.ResultsPath = settings.ResultsPath.Value;
  snapshot.SatelliteList = FromCommaText(settings.SatelliteList.Value);
  snapshot.PrimarySatellite = settings.PrimarySatellite.Value;
  snapshot.FootprintShowLevel = settings.FootprintShowLevel.Value;
  snapshot.UpdateInterval = settings.UpdateInterval.Value;
  snapshot.ImagePathList = FromCommaText(settings.ImagePathList.Value);
  return snapshot;
}

void RegisterAppPath(const RegistryStore& store, const QString& programName, const QString& executablePath) {
  store.WriteString(QStringLiteral("\\Software\\Quillfen\\App Paths"), programName, executablePath);
}

QString ToCommaText(const QStringList& items) {
  std::vector<std::string> texts;
  for (const QString& item : items) texts.push_back(item.toStdString());
  return QString::fromStdString(orbit::JoinCommaText(texts));
}

QStringList FromCommaText(const QString& text) {
  QStringList items;
  for (const std::string& item : orbit::SplitCommaText(text.toStdString())) {
    items.append(QString::fromStdString(item));
  }
  return items;
}

}  // namespace pelorin::app
