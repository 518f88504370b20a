#include "app/ui/help.h"

#include <QDir>
#include <QFileInfo>

namespace pelorin::ui {

QString HelpFile(const QString& programPath) {
  const QFileInfo program(programPath);
  for (const char* place : {"../Help/Pelorin.qhc", "../share/pelorin/help/Pelorin.qhc"}) {
    const QString file = QDir::cleanPath(program.dir().filePath(QString::fromLatin1(place)));
    if (QFileInfo(file).isFile()) return file;
  }
  return program.dir().filePath(program.completeBaseName() + QStringLiteral(".qhc"));
}

QString NoHelpText(const QString& helpFile) {
  return QStringLiteral("The help is not installed: there is no file\n\n   %1")
      .arg(QDir::toNativeSeparators(helpFile));
}

}  // namespace pelorin::ui
