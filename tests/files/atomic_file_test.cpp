#include "files/atomic_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <csignal>

#include "files/mapped_file.h"
#include "files/read_file.h"
#include "tests/support/folder_test.h"

namespace pelorin::files {
namespace {

class AtomicFile : public tests::FolderTest {
 protected:
  static QString ErrorOf(const QString& path, const QByteArray& content) {
    return tests::ErrorOf([&] { ReplaceFile(path, content); });
  }

  void ExpectUntouched(const QString& path) {
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(QDir(Folder()).entryList(QDir::Files | QDir::Hidden).size(), 1) << "half a file";
  }
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
  EXPECT_TRUE(QFile::permissions(path).testFlag(QFileDevice::WriteOwner))
      << "the protection is not inherited";
}

TEST_F(AtomicFile, LinkLeadsToTheFileThatIsReplaced) {
  ASSERT_TRUE(QDir(Folder()).mkdir(QStringLiteral("pictures")));
  ASSERT_TRUE(QFile::link(QStringLiteral("pictures/Result.jpg"), Path("Result.jpg")));
  for (const char* content : {"made", "replaced"}) {
    ReplaceFile(Path("Result.jpg"), content);
    EXPECT_EQ(ReadFile(Path("pictures/Result.jpg")), content);
    EXPECT_TRUE(QFileInfo(Path("Result.jpg")).isSymbolicLink());
  }
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
    const QString error = ErrorOf(path, QByteArray(size, 'x'));
    EXPECT_TRUE(error.endsWith(u": File too large")) << error.toStdString();
    setrlimit(RLIMIT_FSIZE, &earlier);
  }
  std::signal(SIGXFSZ, earlierHandler);
  ExpectUntouched(path);
}

TEST_F(AtomicFile, FileThatCannotBeMadeIsNamedWithTheReason) {
  ReplaceFile(Path("plain"), "old");
  ASSERT_TRUE(QFile::link(Path("loop"), Path("loop")));
  const QString longest(255, u'x');
  const std::pair<QString, const char*> rows[] = {
      {Path("plain/Result.jpg"), "Not a directory"},
      {Path("missing/Result.jpg"), "No such file or directory"},
      {Folder(), "Is a directory"},
      {Path("loop"), "Too many levels of symbolic links"},
      {QStringLiteral("/dev/null"), "it is a device and no file"},
      {Folder() + u'/' + longest + u'x', "File name too long"},
  };
  for (const auto& [path, reason] : rows) {
    EXPECT_EQ(ErrorOf(path, "new"),
              QStringLiteral("Cannot write %1: %2").arg(path, QLatin1StringView(reason)));
  }
  EXPECT_EQ(ErrorOf(Folder() + u'/' + longest, "new"), QString());
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
  for (const QString& nothing : {path, Path("missing"), Folder()}) EXPECT_FALSE(MappedFile::Open(nothing));
}

}  // namespace
}  // namespace pelorin::files
