#include "files/read_file.h"

#include <QFile>

#include "files/file_error.h"

namespace pelorin::files {

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  QByteArray content;
  // A folder opens like a file on some systems and fails only when it is read.
  if (file.open(QIODevice::ReadOnly)) content = file.readAll();
  if (file.error() != QFileDevice::NoError) {
    throw FileError(QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
  }
  return content;
}

}  // namespace pelorin::files
