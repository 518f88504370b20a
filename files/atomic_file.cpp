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
    // What this process may do is reported with the file's own rights, and would be granted to its owner.
    earlier_.setFlag(QFileDevice::WriteUser, false);
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

/// QSaveFile takes it for success when the system accepts only the first part of a write, as it does on
/// a disk that is about to be full. Writing the rest brings out the error.
class WholeFile : public QSaveFile {
 public:
  using QSaveFile::QSaveFile;

 protected:
  qint64 writeData(const char* data, qint64 size) override {
    qint64 done = 0;
    while (done < size) {
      const qint64 count = QSaveFile::writeData(data + done, size - done);
      if (count <= 0) return -1;
      done += count;
    }
    return done;
  }
};

}  // namespace

void ReplaceFile(const QString& path, const std::function<void(QIODevice&)>& write) {
  UnprotectedFile target(path);
  WholeFile file(path);
  // A buffer would be written out on closing, past writeData.
  if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
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
