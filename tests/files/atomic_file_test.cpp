#include "files/atomic_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>

#include "files/file_error.h"
#include "files/read_file.h"

namespace pelorin::files {
namespace {

/// Files of this process cannot grow beyond `bytes`, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : earlierHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &earlier_);
    const rlimit limit{bytes, earlier_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &earlier_);
    std::signal(SIGXFSZ, earlierHandler_);
  }

 private:
  rlimit earlier_{};
  void (*earlierHandler_)(int);
};

class AtomicFile : public testing::Test {
 protected:
  QString Path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

  /// Only the file itself is there, with its old content: nothing half-written stays beside it.
  void ExpectUntouched(const QString& path) {
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
  }

  QTemporaryDir folder_;
};

TEST_F(AtomicFile, ProtectedFileIsReplaced) {
  const QString path = Path("Overlay.bmp");
  ReplaceFile(path, "old");
  ASSERT_TRUE(QFile::setPermissions(path, QFileDevice::ReadOwner));
  ReplaceFile(path, "new");
  EXPECT_EQ(ReadFile(path), "new");
}

TEST_F(AtomicFile, ThrowingWriterLeavesTheOldFileAndItsProtection) {
  const QString path = Path("Overlay.bmp");
  ReplaceFile(path, "old");
  ASSERT_TRUE(QFile::setPermissions(path, QFileDevice::ReadOwner));
  const auto fail = [](QIODevice& device) {
    device.write("new");
    throw std::runtime_error("no picture");
  };
  EXPECT_THROW(ReplaceFile(path, fail), std::runtime_error);
  ExpectUntouched(path);
  EXPECT_FALSE(QFile::permissions(path).testFlag(QFileDevice::WriteOwner));
}

TEST_F(AtomicFile, FullDiskLeavesTheOldFile) {
  const QString path = Path("Result.jpg");
  ReplaceFile(path, "old");
  for (const int size : {100'000, 50'010}) {  // far too much, and a last few bytes too many
    const FullDisk disk(50'000);
    EXPECT_THROW(ReplaceFile(path, QByteArray(size, 'x')), FileError) << size;
    const auto writeInParts = [size](QIODevice& device) {
      for (int i = 0; i < size; i += 10) device.write("0123456789");
    };
    EXPECT_THROW(ReplaceFile(path, writeInParts), FileError) << size;
  }
  ExpectUntouched(path);
}

TEST_F(AtomicFile, FileThatCannotBeMadeIsNamedWithTheReason) {
  ReplaceFile(Path("plain"), "old");
  const struct {
    QString Path;
    const char* Reason;
  } rows[] = {
      {Path("missing/Result.jpg"), "No such file or directory"},
      {Path("plain/Result.jpg"), "Not a directory"},
  };
  for (const auto& row : rows) {
    try {
      ReplaceFile(row.Path, "new");
      ADD_FAILURE() << "written: " << row.Path.toStdString();
    } catch (const FileError& error) {
      EXPECT_EQ(error.Text(),
                QStringLiteral("Cannot write %1: %2").arg(row.Path, QString::fromLatin1(row.Reason)));
    }
  }
  EXPECT_THROW(ReplaceFile(folder_.path(), "new"), FileError);
}

}  // namespace
}  // namespace pelorin::files
