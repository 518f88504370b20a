#include "cli/known_scanners.h"

#include "app/scanner_files.h"
#include "cli/options.h"

namespace pelorin::cli {

swath::ScannerTable KnownScanners() {
  std::vector<std::string> problems;
  swath::ScannerTable scanners = swath::LoadScannerTables(app::ScannerFiles(), problems);
  for (const std::string& problem : problems) Say(QString::fromStdString(problem));
  return scanners;
}

const swath::Scanner& ScannerNamed(const swath::ScannerTable& scanners, const QString& name) {
  if (const swath::Scanner* scanner = scanners.Find(name.toStdString())) return *scanner;
  QStringList names;
  for (const swath::Scanner& scanner : scanners.Scanners())
    names.append(QString::fromStdString(scanner.Name));
  throw UsageError(
      QStringLiteral("There is no scanner \"%1\"; there are %2")
          .arg(name, names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "))));
}

}  // namespace pelorin::cli
