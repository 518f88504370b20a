#pragma once

#include <QString>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "elements/archived_sets.h"
#include "elements/satellite_list.h"

namespace pelorin::elements {

/// Everything that is known of satellites' elements: every set of the loaded files, older ones too, and
/// behind them the archive, read when it is asked. For now the newest set of a satellite counts, which
/// Satellites() lists; for another time the one nearest to it.
class KnownSets {
 public:
  /// Knows nothing.
  KnownSets() : KnownSets({}, {}) {}
  /// Reads a folder's element files, or a single file; what does not exist has no sets. What cannot be read
  /// goes to LeftOut(), except a single file, for which ReadError is raised. An empty `archiveFolder` means
  /// no archive.
  KnownSets(const std::filesystem::path& fileOrFolder, const QString& archiveFolder);
  KnownSets(const KnownSets&) = delete;
  KnownSets& operator=(const KnownSets&) = delete;

  /// The satellites with their newest sets. Lives as long as this.
  const TSatelliteList& Satellites() const { return satellites_; }
  /// Every set of the files, in the order read.
  const std::vector<NamedSet>& Loaded() const { return loaded_; }
  /// Files and sets that were found and cannot be used, and why.
  const std::vector<orbit::RejectedSet>& LeftOut() const { return leftOut_; }

  /// Of all sets of that satellite the one with the epoch nearest a Julian date, doubtful ones apart, under
  /// the satellite's present name; the satellite as it is where no set is nearer.
  orbit::TSatellite Nearest(const orbit::TSatellite& satellite, double jd);

  /// The newest loaded set of the satellite with that name, which may be one of earlier sets, or with that
  /// catalogue number; case aside. Failing that, the one satellite whose plain name it is. Null for none.
  const orbit::TSatellite* Find(std::string_view nameOrNumber) const;
  /// The set nearest a Julian date of the satellite that Find finds, or of one that the archive alone knows.
  std::optional<orbit::TSatellite> FindNearest(std::string_view nameOrNumber, double jd);
  /// The set nearest a Julian date of every satellite that is listed, and of those that the archive alone
  /// knows; by name.
  std::vector<orbit::TSatellite> AllNearest(double jd);

 private:
  const orbit::TSatellite* FindByPlainName(std::string_view name) const;

  std::vector<NamedSet> loaded_;
  std::unordered_map<std::string, std::vector<const orbit::TSatellite*>> byKey_;
  std::vector<orbit::RejectedSet> leftOut_;
  TSatelliteList satellites_;
  ArchivedSets archive_;
};

/// A line for each satellite of which there is nothing better than a set with a wrong checksum.
QStringList DoubtTexts(const TSatelliteList& satellites);

/// A line each for files and sets that were left out: which, how many alike, and why.
QStringList LeftOutTexts(const std::vector<orbit::RejectedSet>& leftOut);

}  // namespace pelorin::elements
