#include "app/program_paths.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "files/atomic_file.h"

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

TEST(ProgramPaths, DataFilesAreTakenFromTheNearestPlace) {
  const QTemporaryDir temporary;
  const QDir root(QDir(temporary.path()).canonicalPath());
  const QString earlierFolder = QDir::currentPath();
  const QStringList places = {u"user"_s, u"share/pelorin"_s, u"bin"_s, u"work"_s, u"work/now"_s};
  for (const QString& place : places) root.mkpath(place);
  QDir::setCurrent(root.filePath(places.last()));
  qputenv("PELORIN_DATA_DIR", root.filePath(places.first()).toUtf8());
  EXPECT_EQ(FindDataFile(u"now"_s, root.filePath(u"bin/"_s)), QString()) << "a folder is no file";
  for (const QString& place : places) {
    const QString path = root.filePath(place + u"/etopo5"_s);
    files::ReplaceFile(path, "x");
    EXPECT_EQ(FindDataFile(u"etopo5"_s, root.filePath(u"bin/"_s)), path);
  }
  qunsetenv("PELORIN_DATA_DIR");
  QDir::setCurrent(earlierFolder);
}

TEST(ProgramPaths, MasterGoesToTheCacheWhenItCannotLieBesideTheProgram) {
  const QTemporaryDir folder;
  EXPECT_EQ(MasterFile(folder.path() + u'/'), folder.filePath(u"Overlay.bmp"_s));
  QStandardPaths::setTestModeEnabled(false);
  qputenv("XDG_CACHE_HOME", folder.path().toUtf8());
  const QString master = MasterFile(folder.filePath(u"missing/"_s));
  qunsetenv("XDG_CACHE_HOME");
  QStandardPaths::setTestModeEnabled(true);
  EXPECT_EQ(master, folder.filePath(u"Quillfen/Pelorin/Overlay.bmp"_s));
  files::ReplaceFile(master, "x");
}

}  // namespace
}  // namespace pelorin::app
