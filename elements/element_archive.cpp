#include "elements/element_archive.h"

#include <QDir>
#include <QFileInfo>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "elements/element_data.h"
#include "files/atomic_file.h"
#include "files/file_error.h"
#include "files/folder_lock.h"
#include "files/read_file.h"
#include "orbit/date_time.h"
#include "orbit/element_fields.h"
#include "orbit/element_file.h"
#include "orbit/julian_date.h"
#include "orbit/omm.h"

namespace pelorin::elements {
namespace {

using orbit::ElementForm;

/// Adding a file takes a moment; who holds the lock for longer has come to harm.
constexpr int kPatienceMs = 10000;

struct ArchivedSet {
  std::string FileName;  ///< of the archive's file that it belongs to
  std::string Key;       ///< what it is told by from others in that file; its name is no part of it
  std::string Text;      ///< its lines
};

/// "yyyy-mm" of an epoch "yyddd.dddddddd".
std::string MonthOf(double epoch) {
  const orbit::EpochParts parts = orbit::SplitEpoch(epoch);
  if (epoch < 0 || epoch >= 100000 || parts.Day < 1 || parts.Day >= 367) return "undated";
  return FormatDateTime("yyyy-mm", orbit::DateTimeOfJulianDate(orbit::JulianDateOfEpoch(epoch)));
}

ArchivedSet ArchivedTriple(std::string_view name, std::string_view line1, std::string_view line2) {
  ArchivedSet set;
  set.FileName = MonthOf(orbit::RealField(line1, 19, 14)) + ".2li";
  set.Key.append(line1).append("\n").append(line2);
  set.Text.append(name).append("\r\n").append(line1).append("\r\n").append(line2).append("\r\n");
  return set;
}

ArchivedSet ArchivedMessage(orbit::OmmRecord record) {
  ArchivedSet set;
  // Without an epoch that can be read: no time, as in lines.
  set.FileName = MonthOf(orbit::OmmEpochRaw(record).value_or(-1)) + ".csv";
  set.Text = orbit::OmmCsvRow(record) + "\r\n";
  record[orbit::kOmmName].clear();
  set.Key = orbit::OmmCsvRow(record);
  return set;
}

std::vector<ArchivedSet> SetsOf(const QByteArray& bytes, ElementForm form) {
  const std::string text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  std::vector<ArchivedSet> sets;
  const auto takeMessage = [&sets](const orbit::OmmRecord& record) {
    sets.push_back(ArchivedMessage(record));
  };
  switch (form) {
    case ElementForm::Csv:
      orbit::ReadOmmCsv(text, takeMessage);
      break;
    case ElementForm::Json:
      orbit::ReadOmmJson(text, takeMessage);
      break;
    case ElementForm::TwoLine:
      orbit::ReadTriplesOf(text,
                           [&sets](std::string_view name, std::string_view line1, std::string_view line2) {
                             sets.push_back(ArchivedTriple(name, line1, line2));
                           });
  }
  return sets;
}

/// What follows a file's content has to begin with the first line of a triple, whatever was left there.
void FillUpTriple(QByteArray& content) {
  if (!content.isEmpty() && !content.endsWith('\n')) content += "\r\n";
  while (content.count('\n') % 3 != 0) content += "\r\n";
}

/// The same for a table. One of other columns, which somebody put there, is written anew in ours.
void FillUpTable(QByteArray& content, const std::vector<ArchivedSet>& known) {
  const std::string header = orbit::OmmCsvHeader() + "\r\n";
  if (content.startsWith(header.c_str())) {
    if (!content.endsWith('\n')) content += "\r\n";
    return;
  }
  content = QByteArray::fromStdString(header);
  for (const ArchivedSet& set : known) content += set.Text;
}

int AddToFile(const QString& path, const std::vector<const ArchivedSet*>& sets) {
  std::set<std::string> keys;
  std::vector<ArchivedSet> known;
  QByteArray content;
  if (QFileInfo::exists(path)) {
    content = files::ReadFile(path);
    known = SetsOf(content, orbit::FormOfFile(path.toStdU16String()));
    for (const ArchivedSet& set : known) keys.insert(set.Key);
  }
  if (path.endsWith(QStringLiteral(".csv"))) {
    FillUpTable(content, known);
  } else {
    FillUpTriple(content);
  }
  int added = 0;
  for (const ArchivedSet* set : sets) {
    if (!keys.insert(set->Key).second) continue;
    content += set->Text;
    ++added;
  }
  if (added > 0) files::ReplaceFile(path, content);
  return added;
}

int AddToArchive(const std::vector<ArchivedSet>& sets, const QString& archiveFolder) {
  std::map<std::string, std::vector<const ArchivedSet*>> byFile;
  for (const ArchivedSet& set : sets) byFile[set.FileName].push_back(&set);
  if (byFile.empty()) return 0;
  QDir().mkpath(archiveFolder);
  // What is read here must still be all that is there when it is replaced.
  const files::FolderLock lock(archiveFolder, kPatienceMs);
  int added = 0;
  for (const auto& [name, ofFile] : byFile) {
    added += AddToFile(QDir(archiveFolder).filePath(QString::fromStdString(name)), ofFile);
  }
  return added;
}

QStringList FilesOf(const QStringList& filesAndFolders) {
  QStringList files;
  for (const QString& path : filesAndFolders) {
    if (!QFileInfo(path).isDir()) {
      files.append(path);
      continue;
    }
    for (const std::filesystem::path& file : orbit::ElementFilesIn(path.toStdU16String())) {
      files.append(QString::fromStdU16String(file.u16string()));
    }
  }
  return files;
}

/// Adds a file, and says what it brought.
QString Archived(const QString& file, const QString& archiveFolder) {
  const QByteArray bytes = files::ReadFile(file);
  // Any text may have lines that begin with 1 and 2.
  if (ElementDataOf(bytes).Sets.empty()) return QStringLiteral("no element sets");
  const std::vector<ArchivedSet> sets = SetsOf(bytes, FormLike(bytes));
  const int added = AddToArchive(sets, archiveFolder);
  return QStringLiteral("%1 element sets, %2 of them new").arg(sets.size()).arg(added);
}

}  // namespace

int ArchiveElementFile(const QString& elementFile, const QString& archiveFolder) {
  const QByteArray bytes = files::ReadFile(elementFile);
  return AddToArchive(SetsOf(bytes, FormLike(bytes)), archiveFolder);
}

QStringList ArchiveElementFiles(const QStringList& filesAndFolders, const QString& archiveFolder) {
  QStringList lines;
  for (const QString& file : FilesOf(filesAndFolders)) {
    QString outcome;
    try {
      outcome = Archived(file, archiveFolder);
    } catch (const files::FileError& error) {
      outcome = error.Text();
    }
    lines.append(QFileInfo(file).fileName() + QStringLiteral(": ") + outcome);
  }
  return lines;
}

}  // namespace pelorin::elements
