#pragma once

#include <QString>
#include <vector>

#include "elements/satellite_list.h"

namespace pelorin::session {

/// A satellite under the name that its file gives it. Borrowed from the satellite list.
struct NamedSatellite {
  QString Name;
  const orbit::TSatellite* Satellite = nullptr;
};

/// Which of the loaded satellites the user follows: a satellite is active when it stands in Active(). Both
/// lists are sorted by name, case aside.
class ActiveSatellites {
 public:
  /// Everything loaded is available, nothing is active. The list must outlive this object.
  explicit ActiveSatellites(const elements::TSatelliteList& satellites);

  const std::vector<NamedSatellite>& Available() const { return available_; }
  const std::vector<NamedSatellite>& Active() const { return active_; }

  /// Makes active what a saved list (comma text) names. Names that no file holds any more are passed over.
  void Restore(const QString& commaText);

  /// The active names as they are saved.
  QString CommaText() const;

  /// Moves a satellite, found by its exact name, to the other list. False when it is not there.
  bool Activate(const QString& name);
  bool Deactivate(const QString& name);

  /// Place in Active(), or −1.
  int IndexOf(const QString& name) const;

 private:
  std::vector<NamedSatellite> available_, active_;
};

}  // namespace pelorin::session
