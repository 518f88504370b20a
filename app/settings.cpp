#include "app/settings.h"

#include <string>
#include <vector>

#include "orbit/comma_text.h"

namespace pelorin::app {

Settings::Settings(const RegistryStore& store, const QString& programName, const DefaultFolders& folders)
    : RegistryVariables(store, SettingsKeyPath(programName)), Defaults(folders) {
  if (!folders.Left.isEmpty() && ResultsPath.Value == folders.Left) ResultsPath.Value = folders.Results;
}

StationTexts Settings::Station() const {
  StationTexts station{ObserverLatitude.Value, ObserverLongitude.Value, ObserverHeight.Value,
                       MinPassElevation.Value};
  ReplaceUnsavedHeight(station.Height);
  return station;
}

QString SettingsKeyPath(const QString& programName) {
  return QStringLiteral("\\Software\\Quillfen\\") + programName;
}

void RegisterAppPath(const RegistryStore& store, const QString& programName, const QString& executablePath) {
  store.Update([&](RegistryDocument& document) {
    document.Set(QStringLiteral("\\Software\\Quillfen\\App Paths"), programName, executablePath);
  });
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
