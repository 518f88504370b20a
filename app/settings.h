#pragma once

#include <QString>
#include <QStringList>
#include <array>

#include "app/program_paths.h"
#include "app/registry_values.h"
#include "app/station_entry.h"

namespace pelorin::app {

/// Everything that the program remembers, in the order in which start-up reads it. Made at start-up, written
/// back as its members go at shutdown.
struct Settings {
  /// `folders` are where element files are looked for and results go until the user says otherwise.
  Settings(const RegistryStore& store, const QString& programName, const DefaultFolders& folders);

  TRegistryString ObserverLatitude;   ///< degrees, north positive, as typed
  TRegistryString ObserverLongitude;  ///< degrees, east positive, as typed
  TRegistryString ObserverHeight;     ///< metres, as typed; see ReplaceUnsavedHeight
  TRegistryString MinPassElevation;   ///< degrees, as typed
  TRegistryBoolean SavePassDetails;
  TRegistryBoolean ShowOverlay;
  TRegistryBoolean OverlayLinesOnly;            ///< boundaries and grid only, and those always
  std::array<TRegistryInteger, 3> OvlTextLine;  ///< item bits of the overlay's text lines
  TRegistryString TwoLineDataPath;              ///< folder of the element files
  TRegistryString ResultsPath;                  ///< folder of the results
  TRegistryString SatelliteList;                ///< comma text: the active satellites
  TRegistryString PrimarySatellite;             ///< empty when none is chosen
  TRegistryInteger FootprintShowLevel;          ///< 0 none, 1 the selected satellite's, 2 all
  TRegistryInteger UpdateInterval;              ///< seconds between the map's steps
  TRegistryString ImagePathList;                ///< comma text: folders of received pictures
  TRegistryString ClockCorrections;             ///< of the recorders; see overlay/time_correction.h

 private:
  class Maker;
  Settings(const Maker& make, const DefaultFolders& folders);
};

/// The same settings as plain values, for programs that only look.
struct SettingsSnapshot {
  StationTexts Station;  ///< with a usable height
  bool SavePassDetails = false;
  bool ShowOverlay = false;
  std::array<int, 3> OvlTextLine{};
  QString TwoLineDataPath, ResultsPath;
  QStringList SatelliteList;
  QString PrimarySatellite;
  int FootprintShowLevel = 0;
  int UpdateInterval = 0;
  QStringList ImagePathList;
};

/// What the program of that name saved last, or the defaults. Writes nothing.
SettingsSnapshot ReadSettings(const RegistryStore& store, const QString& programName,
                              const DefaultFolders& folders);

/// Notes in the store where the program lies: key "\Software\Quillfen\App Paths", the program's name, the
/// executable's full path.
void RegisterAppPath(const RegistryStore& store, const QString& programName, const QString& executablePath);

/// Lists in one line; see orbit/comma_text.h.
QString ToCommaText(const QStringList& items);
QStringList FromCommaText(const QString& text);

}  // namespace pelorin::app
