#include "files/atomic_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>

#include "files/file_error.h"
#include "files/mapped_file.h"
#include "files/read_file.h"

namespace pelorin::files {
namespace {

class AtomicFile : public testing::Test {
 protected:
  QString Path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

  void ExpectUntouched(const QString& path) {
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1) << "half a file";
  }

  QTemporaryDir folder_;
};

TEST_F(AtomicFile, ProtectedFileIsReplacedOrStaysProtected) {
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
  ReplaceFile(path, "new");
  EXPECT_EQ(ReadFile(path), "new");
}

TEST_F(AtomicFile, FullDiskLeavesTheOldFile) {
  const QString path = Path("Result.jpg");
  ReplaceFile(path, "old");
  rlimit earlier{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &earlier), 0);
  const auto earlierHandler = std::signal(SIGXFSZ, SIG_IGN);
  for (const int size : {100'000, 50'010}) {  // far too much, and a last few bytes too many
    const rlimit full{50'000, earlier.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_THROW(ReplaceFile(path, QByteArray(size, 'x')), FileError) << size;
    setrlimit(RLIMIT_FSIZE, &earlier);
  }
  std::signal(SIGXFSZ, earlierHandler);
  ExpectUntouched(path);
}

TEST_F(AtomicFile, FileThatCannotBeMadeIsNamedWithTheReason) {
  ReplaceFile(Path("plain"), "old");
  const QString path = Path("plain/Result.jpg");
  try {
    ReplaceFile(path, "new");
    ADD_FAILURE() << "written below a plain file";
  } catch (const FileError& error) {
    EXPECT_EQ(error.Text(), QStringLiteral("Cannot write %1: Not a directory").arg(path));
  }
  EXPECT_THROW(ReplaceFile(Path("missing/Result.jpg"), "new"), FileError);
  EXPECT_THROW(ReplaceFile(folder_.path(), "new"), FileError);
}

TEST_F(AtomicFile, MappedFileKeepsItsOldContent) {
  const QString path = Path("etopo5");
  ReplaceFile(path, "\x01\xFE\x03");
  auto opened = MappedFile::Open(path);
  ASSERT_TRUE(opened);
  const MappedFile mapped = std::move(*opened);
  opened.reset();
  ReplaceFile(path, "");
  ASSERT_EQ(mapped.Size(), 3);
  EXPECT_EQ(mapped.Data()[1], 0xFE);
  for (const QString& nothing : {path, Path("missing"), folder_.path()})
    EXPECT_FALSE(MappedFile::Open(nothing));
}

}  // namespace
}  // namespace pelorin::files
