#include "files/atomic_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "files/file_error.h"

namespace pelorin::files {
namespace {

/// Lifts the write protection of an existing file and puts it back, unless the file was replaced.
/// QSaveFile refuses to replace a protected file, though only the folder has to be writable.
class UnprotectedFile {
 public:
  explicit UnprotectedFile(const QString& path) : path_(path), earlier_(QFile::permissions(path)) {
    const QFileInfo info(path);
    lifted_ = info.isFile() && !earlier_.testFlag(QFileDevice::WriteOwner) &&
              QFile::setPermissions(path, earlier_ | QFileDevice::WriteOwner);
  }
  ~UnprotectedFile() {
    if (lifted_) QFile::setPermissions(path_, earlier_);
  }
  UnprotectedFile(const UnprotectedFile&) = delete;
  UnprotectedFile& operator=(const UnprotectedFile&) = delete;

  void Replaced() { lifted_ = false; }

 private:
  QString path_;
  QFileDevice::Permissions earlier_;
  bool lifted_ = false;
};

}  // namespace

void ReplaceFile(const QString& path, const std::function<void(QIODevice&)>& write) {
  UnprotectedFile target(path);
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly)) {
    write(file);
    if (file.commit()) {
      target.Replaced();
      return;
    }
  }
  throw FileError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
}

void ReplaceFile(const QString& path, QByteArrayView content) {
  ReplaceFile(path, [content](QIODevice& device) { device.write(content.data(), content.size()); });
}

}  // namespace pelorin::files
