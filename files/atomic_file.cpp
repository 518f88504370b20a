#include "files/atomic_file.h"

#include <QFile>
#include <QFileInfo>
#include <random>
#include <system_error>

#include "files/disk_calls.h"
#include "files/file_error.h"

namespace pelorin::files {
namespace {

/// As many as the system follows before it takes them for a loop.
constexpr int kMostLinks = 40;

QString TextOf(const std::error_code& error) { return QString::fromLocal8Bit(error.message()); }
QString TextOf(std::errc error) { return TextOf(std::make_error_code(error)); }

/// Lifts the write protection of an existing file and puts it back, unless the file was replaced. Some
/// systems refuse to replace a protected file; on the others it shows whether the file is ours.
class UnprotectedFile {
 public:
  explicit UnprotectedFile(const QString& path) : path_(path), earlier_(QFile::permissions(path)) {
    // What this process may do is reported with the file's own rights, and would be granted to its owner.
    earlier_.setFlag(QFileDevice::WriteUser, false);
    lifted_ = QFileInfo(path).isFile() && !earlier_.testFlag(QFileDevice::WriteOwner) &&
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

/// The new content under a name of its own beside the file that it shall replace; goes with this object.
class NewFile : public QFile {
 public:
  ~NewFile() override {
    if (!fileName().isEmpty()) remove();
  }

  /// Why something was not done; empty as long as all is well.
  const QString& Reason() const { return reason_; }

  void OpenBeside(const QString& target) {
    constexpr int mostTries = 100;
    // Room for the ending where the name is about as long as a name can be.
    constexpr qsizetype longestStem = 60;
    const QFileInfo place(target);
    const QString stem = place.path() + u'/' + place.fileName().left(longestStem) + u'.';
    std::random_device random;
    for (int i = 0; i < mostTries && !isOpen(); ++i) {
      setFileName(stem + QString::number(random(), 36));
      // A buffer would be written out on closing, past writeData.
      if (!open(WriteOnly | NewOnly | Unbuffered) && !exists()) break;
    }
    if (isOpen()) return;
    reason_ = errorString();
    setFileName(QString());  // nothing of ours is there
  }

  void Finish(const QString& target) {
    if (reason_.isEmpty()) Check(SyncFile(handle()));
    close();
    if (reason_.isEmpty()) Check(RenameOver(fileName(), target));
    if (reason_.isEmpty()) setFileName(QString());
  }

 protected:
  /// The system takes only the first part of a write when a disk is about to be full. Writing the rest brings
  /// out the error, and a write that works later must not hide it.
  qint64 writeData(const char* data, qint64 size) override {
    qint64 done = 0;
    while (reason_.isEmpty() && done < size) {
      const qint64 count = QFile::writeData(data + done, size - done);
      if (count <= 0) reason_ = errorString();
      done += count;
    }
    return reason_.isEmpty() ? done : -1;
  }

 private:
  void Check(const std::error_code& error) {
    if (error) reason_ = TextOf(error);
  }

  QString reason_;
};

/// The file that a path leads to; a loop of links leads to none and ends at one of them.
QString BehindLinks(QString path) {
  for (int links = 0; links < kMostLinks && QFileInfo(path).isSymbolicLink(); ++links) {
    path = QFileInfo(path).symLinkTarget();
  }
  return path;
}

/// What is against replacing the file; empty when nothing is known to be.
QString Obstacle(const QString& target) {
  const QFileInfo earlier(target);
  if (earlier.isSymbolicLink()) return TextOf(std::errc::too_many_symbolic_link_levels);
  if (earlier.isDir()) return TextOf(std::errc::is_a_directory);
  if (!earlier.exists()) return {};
  if (!earlier.isFile()) return QStringLiteral("it is a device and no file");
  return earlier.isWritable() ? QString() : TextOf(std::errc::permission_denied);
}

}  // namespace

void ReplaceFile(const QString& path, const std::function<void(QIODevice&)>& write) {
  const auto refuseFor = [&path](const QString& reason) {
    if (!reason.isEmpty()) throw FileError(QStringLiteral("Cannot write %1: %2").arg(path, reason));
  };
  const QString target = BehindLinks(path);
  UnprotectedFile earlier(target);
  refuseFor(Obstacle(target));
  NewFile file;
  file.OpenBeside(target);
  refuseFor(file.Reason());
  if (QFileInfo::exists(target)) file.setPermissions(QFile::permissions(target));
  write(file);
  file.Finish(target);
  refuseFor(file.Reason());
  earlier.Replaced();
  if (const std::error_code error = SyncFolder(QFileInfo(target).path())) refuseFor(TextOf(error));
}

void ReplaceFile(const QString& path, QByteArrayView content) {
  ReplaceFile(path, [content](QIODevice& device) { device.write(content.data(), content.size()); });
}

}  // namespace pelorin::files
