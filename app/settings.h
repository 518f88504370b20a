#pragma once

#include <QString>
#include <QStringList>
#include <array>

#include "app/program_paths.h"
#include "app/registry_values.h"
#include "app/station_entry.h"

namespace pelorin::app {

/// Which pictures are aligned unasked: none; each that is opened, and the result offered; and what is clear
/// is taken, too.
inline constexpr int kAlignNever = 0, kAlignOffering = 1, kAlignTaking = 2;

/// Everything that is remembered, for the desktop program and the console program alike: a setting is a line
/// here. Read when this is made, saved when the desktop program says so.
struct Settings : RegistryVariables {
  using WrittenBy = TRegistryVariable::WrittenBy;

  /// Reads what the program of that name saved last. `folders` are where element files are looked for and
  /// results go until the user says otherwise.
  Settings(const RegistryStore& store, const QString& programName, const DefaultFolders& folders);

  const DefaultFolders Defaults;

  /// Degrees, north and east positive, metres, degrees; all as typed. The height may be one that nobody
  /// saved: see StationTexts.
  TRegistryString ObserverLatitude{*this, "ObserverLatitude", QStringLiteral("55.905")};
  TRegistryString ObserverLongitude{*this, "ObserverLongitude", QStringLiteral("-3.2")};
  TRegistryString ObserverHeight{*this, "ObserverHeight", QString::fromUtf16(kHeightNeverSaved)};
  TRegistryString MinPassElevation{*this, "MinPassElevation", QStringLiteral("1.5")};
  TRegistryBoolean SavePassDetails{*this, "SavePassDetails", false};
  TRegistryBoolean ShowOverlay{*this, "ShowOverlay", false};
  TRegistryBoolean OverlayLinesOnly{*this, "OverlayLinesOnly", false};  ///< coasts and grid only, always
  /// Item bits of the overlay's text lines.
  std::array<TRegistryInteger, 3> OvlTextLine{
      {{*this, "OvlTextLine1", 0}, {*this, "OvlTextLine2", 0}, {*this, "OvlTextLine3", 0}}};
  TRegistryString TwoLineDataPath{*this, "TwoLineDataPath", Defaults.Elements};  ///< folder of element files
  TRegistryString ResultsPath{*this, "ResultsPath", Defaults.Results};           ///< folder of the results
  TRegistryString ResultsTrouble{
      *this, "ResultsTrouble", {}};  ///< told of the results folder; see Session::SaveUnasked
  TRegistryString SatelliteList{*this, "SatelliteList", {}};        ///< comma text: the active satellites
  TRegistryString SatelliteNumbers{*this, "SatelliteNumbers", {}};  ///< comma text: theirs, "33591 NOAA 19"
  TRegistryString PrimarySatellite{*this, "PrimarySatellite", {}};  ///< empty when none is chosen
  TRegistryInteger FootprintShowLevel{*this, "FootprintShowLevel", 1};  ///< 0 no, 1 the selected one's, 2 all
  TRegistryInteger UpdateInterval{*this, "UpdateInterval", 5};          ///< seconds between the map's steps
  /// Comma text: folders of received pictures.
  TRegistryString ImagePathList{*this, "ImagePathList", QStringLiteral("C:\\Dunlow\\BMP\\")};
  TRegistryBoolean NorthUp{*this, "NorthUp", true};  ///< pictures are turned until north is up
  TRegistryInteger AlignOpened{*this, "AlignOpened", kAlignNever};
  TRegistryString RecentPictures{*this, "RecentPictures", {}};  ///< comma text: what was opened, latest first
  TRegistryString ClockCorrections{*this, "ClockCorrections", {}};  ///< see swath/clock_corrections.h
  TRegistryString AttitudeCorrections{
      *this, "AttitudeCorrections", {}};                             ///< see swath/attitude_corrections.h
  TRegistryString WindowPlace{*this, "Window\\Place", {}};           ///< on the screen, as Qt saves it
  TRegistryString AlignmentsPlace{*this, "Window\\Alignments", {}};  ///< the dialog's, likewise
  TRegistryInteger WindowColours{*this, "Window\\Colours", 0};       ///< a desktop::Look
  /// A mirror of the element service; empty for the public one.
  TRegistryString ElementsAddress{*this, "Network\\ElementsAddress", {}};
  /// From so many lines on that a map may be off, its elements' age is shown in yellow, or in red.
  TRegistryInteger NotableLines{*this, "NotableLines", 3, WrittenBy::User};
  TRegistryInteger GraveLines{*this, "GraveLines", 20, WrittenBy::User};
  TRegistryInteger ElementRenewal{*this, "ElementRenewal", 1};  ///< an elements::Renewal
  TRegistryInteger RenewalDays{*this, "RenewalDays", 7};        ///< the age of sets that are renewed
  TRegistryString LastRenewal{*this, "LastRenewal", {}};        ///< the day, yyyy-mm-dd, of the last turn
  /// How long a run without its pass waits for somebody to read why; see session/unattended_run.h.
  TRegistryInteger UnattendedMinutes{*this, "UnattendedMinutes", 10, WrittenBy::User};

  /// The station as it was saved, with the height that a first run begins with.
  StationTexts Station() const;
};

/// Where a program keeps its settings: "\Software\Quillfen\" and the program's name. A copy of the program
/// under another name has settings of its own.
QString SettingsKeyPath(const QString& programName);

/// Notes in the store where the program lies: key "\Software\Quillfen\App Paths", the program's name, the
/// executable's full path.
void RegisterAppPath(const RegistryStore& store, const QString& programName, const QString& executablePath);

/// Lists in one line; see orbit/comma_text.h.
QString ToCommaText(const QStringList& items);
QStringList FromCommaText(const QString& text);

}  // namespace pelorin::app
