#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <string>

#include "files/atomic_file.h"
#include "files/disk_calls.h"
#include "files/read_file.h"
#include "tests/support/folder_test.h"

namespace pelorin::files {
namespace {

std::string calls;        // since the last row began
std::string failingCall;  // its error:
std::errc fault;

std::error_code Outcome(const std::string& call) {
  calls += call + ' ';
  return call == failingCall ? std::make_error_code(fault) : std::error_code();
}

}  // namespace

// This program is linked with these calls instead of the system's.
std::error_code SyncFile(int descriptor) {
  EXPECT_GE(descriptor, 0) << "still open";
  return Outcome("file");
}
std::error_code SyncFolder(const QString& folder) { return Outcome(folder.section(u'/', -1).toStdString()); }
std::error_code RenameOver(const QString& from, const QString& to) {
  const std::error_code error = Outcome("rename");
  if (!error && QFile::remove(to)) QFile::rename(from, to);
  return error;
}

namespace {

TEST(DiskFaults, FileIsReplacedOnlyByWhatIsOnTheDisk) {
  const struct {
    const char* FailingCall;
    std::errc Fault;
    const char *Reason, *Calls, *Content;
  } rows[] = {
      {"none", {}, "", "file rename results ", "new"},
      {"file", std::errc::io_error, "Input/output error", "file ", "old"},
      {"file", std::errc::no_space_on_device, "No space left on device", "file ", "old"},
      {"rename", std::errc::permission_denied, "Permission denied", "file rename ", "old"},
      {"results", std::errc::io_error, "Input/output error", "file rename results ", "new"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.FailingCall) + ": " + row.Reason);
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("results")));
    const QString path = folder.filePath(QStringLiteral("results/Overlay.bmp"));
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    old.setPermissions(QFileDevice::ReadOwner);
    calls.clear();
    failingCall = row.FailingCall;
    fault = row.Fault;
    const QString said = tests::ErrorOf([&] { ReplaceFile(path, "new"); });
    EXPECT_EQ(calls, row.Calls);
    const QString reason = QLatin1StringView(row.Reason);
    EXPECT_EQ(said, reason.isEmpty() ? reason : QStringLiteral("Cannot write %1: %2").arg(path, reason));
    EXPECT_EQ(ReadFile(path), row.Content);
    EXPECT_EQ(QFile::permissions(path).testFlag(QFileDevice::WriteOwner), std::string(row.Content) == "new");
    EXPECT_EQ(QDir(folder.filePath(QStringLiteral("results"))).entryList(QDir::Files | QDir::Hidden).size(),
              1);
  }
}

}  // namespace
}  // namespace pelorin::files
