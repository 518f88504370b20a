#include "passes/pass_list_file.h"

#include <QDir>

#include "files/text_file.h"

namespace pelorin::passes {

void SavePassList(const QString& resultsFolder, const QStringList& entries) {
  if (entries.isEmpty()) return;
  files::WriteLines(QDir(resultsFolder).filePath(QStringLiteral("PassList.txt")), entries);
}

}  // namespace pelorin::passes
