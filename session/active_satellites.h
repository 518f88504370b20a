#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

#include "elements/satellite_list.h"

namespace pelorin::session {

/// A satellite under the name that its file gives it. Borrowed from the satellite list.
struct NamedSatellite {
  QString Name;
  const orbit::TSatellite* Satellite = nullptr;
};

QStringList NamesOf(const std::vector<NamedSatellite>& satellites);

/// Which satellites the user follows: loaded ones, and names that no file holds just now, which wait for
/// their file. All lists are sorted by name, case aside.
class ActiveSatellites {
 public:
  /// Everything loaded is available, nothing is active. The list must outlive this object.
  explicit ActiveSatellites(const elements::TSatelliteList& satellites);

  const std::vector<NamedSatellite>& Available() const { return available_; }
  const std::vector<NamedSatellite>& Active() const { return active_; }

  /// The names of the active satellites and of those that wait.
  QStringList Followed() const;
  /// Followed, but no file holds it just now.
  bool IsMissing(const QString& name) const { return missing_.contains(name); }
  const QStringList& Missing() const { return missing_; }

  /// Makes active what saved lists (comma text) tell: of names, and of numbers. A satellite whose number is
  /// known is told by that, whatever it is called now; of others the name counts, the plain one at last. What
  /// no file holds waits.
  void Restore(const QString& commaText, const QString& numbers);

  /// The followed names as they are saved, and the numbers that are known of them, "33591 NOAA 19".
  QString CommaText() const;
  QString Numbers() const;
  /// What a satellite of a saved list is called now.
  QString NameNow(const QString& savedName) const { return renamed_.value(savedName, savedName); }

  /// Moves a satellite, found by its exact name, to the other list; one that waits is forgotten. False when
  /// it is not there.
  bool Activate(const QString& name);
  bool Deactivate(const QString& name);

  /// Place in Active(), or −1.
  int IndexOf(const QString& name) const;

 private:
  /// The available satellite that a saved name stands for, by the name that it has now; null for none.
  QString Identify(const QString& savedName) const;

  std::vector<NamedSatellite> available_, active_;
  QStringList missing_;
  QHash<QString, QString> numbers_, renamed_;  ///< by saved name
};

}  // namespace pelorin::session
