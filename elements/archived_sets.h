#pragma once

#include <QString>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "elements/archive_index.h"
#include "orbit/satellite.h"

namespace pelorin::elements {

/// The archive of element sets as it is read: a look at its index tells which file may have the set that is
/// wanted, and only that one is read. Nothing is touched before the first question. The archive is taken to
/// stay as it is from then on.
class ArchivedSets {
 public:
  /// An empty or missing folder holds nothing.
  explicit ArchivedSets(const QString& folder) : folder_(folder) {}

  /// The set of a satellite, told by TSatellite::CatalogueKey, with the epoch nearest a Julian date, if one
  /// is nearer than `withinDays`; doubtful ones count as DoubtDays farther away. Files that cannot be read
  /// hold nothing.
  std::optional<orbit::TSatellite> Nearest(const std::string& catalogueKey, double jd, double withinDays);

  /// The key of the satellite that bears a name (upper case) at the time nearest a Julian date; empty for
  /// none.
  std::string KeyOf(std::string_view name, double jd);

  /// The keys of all satellites that have sets here.
  std::set<std::string> Keys();

 private:
  struct ReadFile {
    QString Name;
    std::vector<orbit::TSatellite> Sets;
  };

  const ArchiveIndex& Index();
  const std::vector<orbit::TSatellite>& SetsOf(const QString& fileName);

  QString folder_;
  std::optional<ArchiveIndex> index_;
  std::list<ReadFile> lastRead_;  ///< the latest in front
};

}  // namespace pelorin::elements
