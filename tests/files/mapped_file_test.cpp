#include "files/mapped_file.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <utility>

#include "files/atomic_file.h"

namespace pelorin::files {
namespace {

TEST(MappedFile, ViewSurvivesMovingAndReplacing) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("etopo5"));
  ReplaceFile(path, "\x01\xFE\x03");
  auto opened = MappedFile::Open(path);
  ASSERT_TRUE(opened);
  const MappedFile mapped = std::move(*opened);
  opened.reset();
  ReplaceFile(path, "other");
  ASSERT_EQ(mapped.Size(), 3);
  EXPECT_EQ(mapped.Data()[1], 0xFE);
}

TEST(MappedFile, NothingToMapIsNoError) {
  const QTemporaryDir folder;
  const QString empty = folder.filePath(QStringLiteral("empty"));
  ReplaceFile(empty, "");
  EXPECT_FALSE(MappedFile::Open(empty));
  EXPECT_FALSE(MappedFile::Open(folder.filePath(QStringLiteral("missing"))));
  EXPECT_FALSE(MappedFile::Open(folder.path()));
}

}  // namespace
}  // namespace pelorin::files
