#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include "files/atomic_file.h"
#include "files/read_file.h"

namespace pelorin::tools {
namespace {

TEST(Makers, RefuseBadInputAndLeaveTheOldFile) {
  const QTemporaryDir folder;
  const auto path = [&](const char* name) { return folder.filePath(QLatin1StringView(name)); };
  const QString missing = path("missing"), garbled = path("garbled"), old = path("old");
  const QString heights = QStringLiteral(PELORIN_BUILT_DATA "/etopo5.elev");
  const QString countries = QStringLiteral(PELORIN_BUILT_DATA "/Countries.dat");
  files::ReplaceFile(garbled, QByteArrayView("CDF\1 and no more"));
  files::ReplaceFile(old, QByteArrayView("old"));
  const struct {
    const char* maker;
    QStringList arguments;
    const char* reason;  // a part of what is said
  } rows[] = {
      {"make_countries", {garbled, garbled, old}, "garbled: cannot open"},
      {"make_coastlines", {missing, garbled, old}, "missing: cannot open"},
      {"make_topography", {garbled, old}, "garbled: cannot open"},
      {"make_backdrop", {missing, heights, old, old, old}, "missing"},
      {"make_backdrop", {garbled, heights, old, old, old}, "is damaged"},
      {"make_backdrop", {countries, garbled, old, old, old}, "wrong size"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.maker) + " " + row.reason);
    QProcess process;
    process.start(QStringLiteral(PELORIN_MAKERS "/") + QLatin1StringView(row.maker), row.arguments);
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(process.readAllStandardError().contains(row.reason));
    EXPECT_EQ(files::ReadFile(old), "old");
  }
}

}  // namespace
}  // namespace pelorin::tools
