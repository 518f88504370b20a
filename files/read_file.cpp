#include "files/read_file.h"

#include <QFile>
#include <algorithm>
#include <new>

#include "files/file_error.h"

namespace pelorin::files {
namespace {

/// Empty when all was read.
QString ReadInto(QByteArray& content, QFile& file, qint64 most) {
  constexpr qint64 leastStep = 1 << 16;
  const QString tooLarge = QStringLiteral("it has %1 bytes; at most %2 can be read");
  if (file.size() > most) return tooLarge.arg(file.size()).arg(most);
  // Some files do not know their size, and some grow.
  for (qint64 count = 1; count > 0;) {
    const qsizetype end = content.size();
    if (end > most) return tooLarge.arg(end).arg(most);
    content.resize(end + std::max(file.size() - end + 1, leastStep));
    count = file.read(content.data() + end, content.size() - end);
    content.resize(end + std::max(count, qint64{0}));
  }
  // A folder opens like a file on some systems and fails only when it is read.
  return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

}  // namespace

QByteArray ReadFile(const QString& path, qint64 most) {
  QByteArray content;
  QString reason;
  try {
    QFile file(path);
    reason = file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? ReadInto(content, file, most)
                                                                    : file.errorString();
  } catch (const std::bad_alloc&) {
    reason = QStringLiteral("there is not enough memory for it");
  }
  if (!reason.isEmpty()) throw FileError(QStringLiteral("Cannot read %1: %2").arg(path, reason));
  return content;
}

}  // namespace pelorin::files
