#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace pelorin::tests {

/// The built book in another place, later and not to be written, as an installation leaves it.
class InstalledHelp {
 public:
  InstalledHelp() {
    for (const QString& name : {QStringLiteral("Pelorin.qhc"), QStringLiteral("Pelorin.qch")}) {
      const QString copy = folder_.filePath(name);
      QFile::copy(QDir(QStringLiteral(PELORIN_BUILT_HELP)).filePath(name), copy);
      QFile::setPermissions(copy, QFile::ReadOwner);
    }
  }

  QString File(const QString& name = QStringLiteral("Pelorin.qhc")) const { return folder_.filePath(name); }

 private:
  QTemporaryDir folder_;
};

}  // namespace pelorin::tests
