#include "app/scanner_files.h"

#include <QDir>

#include "app/registry_store.h"

namespace pelorin::app {

QStringList ScannerFiles(const QString& programFolder) {
  const QString name = QStringLiteral("scanners.json");
  // Not looked up like other data: a user's table adds to the program's and does not hide it.
  return {QDir(programFolder).filePath(QStringLiteral("../share/pelorin/") + name),
          QDir(RegistryStore::DefaultFolder()).filePath(name)};
}

}  // namespace pelorin::app
