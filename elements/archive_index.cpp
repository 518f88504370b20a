#include "elements/archive_index.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QStringList>
#include <algorithm>
#include <map>

#include "files/file_error.h"
#include "files/text_file.h"
#include "orbit/element_file.h"

namespace pelorin::elements {
namespace {

const QString kIndexFile = QStringLiteral("index.txt");
const QString kHeader = QStringLiteral("Pelorin archive index 1");

/// What begins the line of a file; lines of its satellites follow.
constexpr QChar kFileMark = u'>';

/// Sets whose epoch is no time are kept, but near to nothing.
const QString kUndated = QStringLiteral("undated");

/// Takes the text before the first blank, and the blank, off a line.
QString TakeWord(QString& line) {
  const QString word = line.section(u' ', 0, 0);
  line.remove(0, word.size() + 1);
  return word;
}

QHash<QString, ArchiveFile> ReadIndex(const QString& path) {
  QHash<QString, ArchiveFile> files;
  QStringList lines;
  try {
    lines = files::ReadLines(path);
  } catch (const files::FileError&) {
    return files;  // none has been made yet
  }
  if (lines.value(0) != kHeader) return files;
  ArchiveFile* file = nullptr;
  for (QString line : lines.mid(1)) {
    if (line.startsWith(kFileMark)) {
      line.remove(0, 1);
      const qint64 size = TakeWord(line).toLongLong(), modified = TakeWord(line).toLongLong();
      file = &files[line];
      *file = {line, size, modified, {}};
    } else if (file != nullptr) {
      ArchivedSatellite satellite;
      satellite.Key = TakeWord(line).toStdString();
      satellite.FirstEpochJd = TakeWord(line).toDouble();
      satellite.LastEpochJd = TakeWord(line).toDouble();
      satellite.Name = line.toStdString();
      file->Satellites.push_back(std::move(satellite));
    }
  }
  return files;
}

void WriteIndex(const QString& path, const ArchiveIndex& index) {
  QStringList lines{kHeader};
  for (const ArchiveFile& file : index) {
    lines.append(
        QStringLiteral("%1%2 %3 %4").arg(kFileMark).arg(file.Size).arg(file.ModifiedMs).arg(file.Name));
    for (const ArchivedSatellite& satellite : file.Satellites) {
      lines.append(QStringLiteral("%1 %2 %3 %4")
                       .arg(QString::fromStdString(satellite.Key))
                       .arg(satellite.FirstEpochJd, 0, 'f', 8)
                       .arg(satellite.LastEpochJd, 0, 'f', 8)
                       .arg(QString::fromStdString(satellite.Name)));
    }
  }
  try {
    files::WriteLines(path, lines);
  } catch (const files::FileError&) {
    // Somebody else's archive can be read all the same.
  }
}

std::vector<ArchivedSatellite> SatellitesIn(const QString& path) {
  std::map<std::string, ArchivedSatellite> byKey;
  const auto take = [&byKey](std::string_view, orbit::TSatellite&& set) {
    const std::string key = set.CatalogueKey();
    if (key.empty()) return;
    const auto [entry, isNew] = byKey.try_emplace(key, ArchivedSatellite{key, {}, set.Epoch, set.Epoch});
    ArchivedSatellite& satellite = entry->second;
    satellite.Name = set.Name;
    satellite.FirstEpochJd = std::min(satellite.FirstEpochJd, set.Epoch);
    satellite.LastEpochJd = std::max(satellite.LastEpochJd, set.Epoch);
  };
  try {
    std::vector<orbit::RejectedSet> rejected;
    orbit::ReadElementSets(path.toStdU16String(), take, rejected);
  } catch (const orbit::ReadError&) {
    return {};
  }
  std::vector<ArchivedSatellite> satellites;
  for (auto& [key, satellite] : byKey) satellites.push_back(std::move(satellite));
  return satellites;
}

}  // namespace

const ArchivedSatellite* ArchiveFile::Find(const std::string& key) const {
  const auto at = std::lower_bound(
      Satellites.begin(), Satellites.end(), key,
      [](const ArchivedSatellite& satellite, const std::string& text) { return satellite.Key < text; });
  return at != Satellites.end() && at->Key == key ? &*at : nullptr;
}

ArchiveIndex UpdatedArchiveIndex(const QString& archiveFolder) {
  ArchiveIndex index;
  if (archiveFolder.isEmpty()) return index;
  const QString indexPath = QDir(archiveFolder).filePath(kIndexFile);
  QHash<QString, ArchiveFile> known = ReadIndex(indexPath);
  bool isChanged = false;
  for (const std::filesystem::path& path : orbit::ElementFilesIn(archiveFolder.toStdU16String())) {
    const QFileInfo info(QString::fromStdU16String(path.u16string()));
    if (info.completeBaseName() == kUndated) continue;
    ArchiveFile file = known.take(info.fileName());
    const qint64 modified = info.lastModified().toMSecsSinceEpoch();
    if (file.Name.isEmpty() || file.Size != info.size() || file.ModifiedMs != modified) {
      file = {info.fileName(), info.size(), modified, SatellitesIn(info.filePath())};
      isChanged = true;
    }
    index.push_back(std::move(file));
  }
  if (isChanged || !known.isEmpty()) WriteIndex(indexPath, index);
  return index;
}

}  // namespace pelorin::elements
