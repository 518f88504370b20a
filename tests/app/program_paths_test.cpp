#include "app/program_paths.h"

#include <gtest/gtest.h>

#include <QDir>

#include "files/atomic_file.h"
#include "tests/support/folder_test.h"

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

class ProgramPaths : public tests::FolderTest {
 protected:
  ProgramPaths() {
    for (const QString& place : kPlaces) root_.mkpath(place);
    QDir::setCurrent(root_.filePath(kPlaces.last()));
    qputenv("PELORIN_DATA_DIR", root_.filePath(u"user"_s).toUtf8());
  }
  ~ProgramPaths() override {
    qunsetenv("PELORIN_DATA_DIR");
    QDir::setCurrent(earlier_);
  }

  /// The farthest first.
  const QStringList kPlaces{u"share/pelorin"_s, u"bin"_s, u"user"_s, u"work"_s, u"work/now"_s};
  const QDir root_{QDir(Folder()).canonicalPath()};
  const QString bin_ = root_.filePath(u"bin/"_s);
  const QString earlier_ = QDir::currentPath();
};

TEST_F(ProgramPaths, DataFilesAreTakenFromTheNearestPlace) {
  EXPECT_EQ(FindDataFile(u"now"_s, bin_), QString()) << "a folder is no file";
  const QStringList names{u"UserMap.jpg"_s, u"UserMap.bmp"_s};
  for (const QString& place : kPlaces) {
    const QString path = root_.filePath(place + u"/UserMap.bmp"_s);
    files::ReplaceFile(path, "x");
    EXPECT_EQ(FindDataFile(u"UserMap.bmp"_s, bin_), path);
    // The user's second choice goes before the installed first one.
    if (place == u"bin"_s) files::ReplaceFile(bin_ + u"UserMap.jpg"_s, "x");
    if (place == u"user"_s) {
      EXPECT_EQ(FindDataFile(names, bin_), path);
    }
  }
}

TEST_F(ProgramPaths, OnlyAPortableProgramKeepsItsFilesBesideItself) {
  const QString elements = root_.filePath(u"user/elements/"_s), results = root_.filePath(u"user/results/"_s);
  const auto expectFolders = [&](const char* label, const QStringList& expected) {
    const DefaultFolders folders = FoldersFor(bin_);
    EXPECT_EQ(QStringList({folders.Elements, folders.Results, folders.Left}), expected) << label;
  };
  expectFolders("installed, though it could be written", {elements, results, bin_});
  files::ReplaceFile(bin_ + u"weather.2li"_s, "x");
  expectFolders("elements of an earlier version", {bin_, results, bin_});
  root_.mkpath(elements);
  expectFolders("the user has elements", {elements, results, bin_});
  files::ReplaceFile(bin_ + u"pelorin-portable.txt"_s, "");
  expectFolders("portable", {bin_, bin_, QString()});
}

}  // namespace
}  // namespace pelorin::app
