#pragma once

#include <QString>
#include <string>
#include <vector>

namespace pelorin::elements {

/// The sets of one satellite in one file of the archive.
struct ArchivedSatellite {
  std::string Key;   ///< TSatellite::CatalogueKey, never empty
  std::string Name;  ///< upper case
  double FirstEpochJd = 0, LastEpochJd = 0;
};

/// One file of the archive, and what it had in it when it was that size and that old.
struct ArchiveFile {
  QString Name;  ///< without its folder
  qint64 Size = 0;
  qint64 ModifiedMs = 0;                      ///< since 1970, UTC
  std::vector<ArchivedSatellite> Satellites;  ///< by key in ascending order

  /// Null for none.
  const ArchivedSatellite* Find(const std::string& key) const;
};

using ArchiveIndex = std::vector<ArchiveFile>;

/// What the element files of an archive folder hold, except sets whose epoch is no time. It is kept in the
/// folder's "index.txt", so that only files are read that have changed since. A folder that cannot be written
/// costs the time to read them again; an unreadable file holds nothing.
ArchiveIndex UpdatedArchiveIndex(const QString& archiveFolder);

}  // namespace pelorin::elements
