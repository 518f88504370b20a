#include "elements/element_archive.h"

#include <QDir>
#include <QFileInfo>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "orbit/element_fields.h"
#include "orbit/element_file.h"
#include "orbit/julian_date.h"

namespace pelorin::elements {
namespace {

struct ArchivedSet {
  std::string Name, Line1, Line2;

  std::string Key() const { return Line1 + '\n' + Line2; }
};

std::vector<ArchivedSet> SetsOf(const QString& elementFile) {
  std::vector<ArchivedSet> sets;
  orbit::ReadElementTriples(std::filesystem::path(elementFile.toStdU16String()),
                            [&sets](std::string_view name, std::string_view line1, std::string_view line2) {
                              sets.push_back({std::string(name), std::string(line1), std::string(line2)});
                            });
  return sets;
}

std::string MonthOf(const ArchivedSet& set) {
  const double epoch = orbit::RealField(set.Line1, 19, 14);
  const orbit::EpochParts parts = orbit::SplitEpoch(epoch);
  if (epoch < 0 || epoch >= 100000 || parts.Day < 1 || parts.Day >= 367) return "undated";
  return FormatDateTime("yyyy-mm", orbit::DateTimeOfJulianDate(orbit::JulianDateOfEpoch(epoch)));
}

/// What follows a file's content has to begin with the first line of a triple, whatever was left there.
void FillUpTriple(QByteArray& content) {
  if (!content.isEmpty() && !content.endsWith('\n')) content += "\r\n";
  while (content.count('\n') % 3 != 0) content += "\r\n";
}

int AddToMonth(const QString& path, const std::vector<ArchivedSet>& sets) {
  std::set<std::string> known;
  QByteArray content;
  if (QFileInfo::exists(path)) {
    content = files::ReadFile(path);
    for (const ArchivedSet& set : SetsOf(path)) known.insert(set.Key());
    FillUpTriple(content);
  }
  int added = 0;
  for (const ArchivedSet& set : sets) {
    if (!known.insert(set.Key()).second) continue;
    content += set.Name + "\r\n" + set.Line1 + "\r\n" + set.Line2 + "\r\n";
    ++added;
  }
  if (added > 0) files::ReplaceFile(path, content);
  return added;
}

}  // namespace

int ArchiveElementFile(const QString& elementFile, const QString& archiveFolder) {
  std::map<std::string, std::vector<ArchivedSet>> months;
  for (ArchivedSet& set : SetsOf(elementFile)) months[MonthOf(set)].push_back(std::move(set));
  if (!months.empty()) QDir().mkpath(archiveFolder);
  int added = 0;
  for (const auto& [month, sets] : months) {
    added += AddToMonth(QDir(archiveFolder).filePath(QString::fromStdString(month) + QStringLiteral(".2li")),
                        sets);
  }
  return added;
}

}  // namespace pelorin::elements
