#include "app/program_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <vector>

namespace pelorin::app {
namespace {

constexpr QLatin1StringView kOwnPlace("/Quillfen/Pelorin");

}  // namespace

QString ProgramFolder() { return QDir::cleanPath(QCoreApplication::applicationDirPath()) + u'/'; }

QString UserDataFolder() {
  const QString named = qEnvironmentVariable("PELORIN_DATA_DIR");
  if (!named.isEmpty()) return named;
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + kOwnPlace;
}

QString ElementArchiveFolder() { return QDir(UserDataFolder()).filePath(QStringLiteral("archive")); }

DefaultFolders FoldersFor(const QString& programFolder) {
  if (QFileInfo(programFolder).isWritable())
    return {WithSeparator(programFolder), WithSeparator(programFolder)};
  const QDir user(UserDataFolder());
  return {user.filePath(QStringLiteral("elements/")), user.filePath(QStringLiteral("results/"))};
}

QString WithSeparator(const QString& folder) {
  const bool ends = folder.isEmpty() || folder.endsWith(u'/') || folder.endsWith(QDir::separator());
  return ends ? folder : folder + QDir::separator();
}

QString FindDataFile(const QStringList& names, const QString& programFolder) {
  const QDir program(programFolder);
  const std::vector<QDir> users{QDir::current(), QDir(QDir::current().filePath(QStringLiteral("..")))};
  const std::vector<QDir> installed{program, QDir(program.filePath(QStringLiteral("../share/pelorin"))),
                                    QDir(UserDataFolder())};
  for (const std::vector<QDir>& places : {users, installed}) {
    for (const QString& name : names) {
      for (const QDir& folder : places) {
        const QString path = QDir::cleanPath(folder.absoluteFilePath(name));
        if (QFileInfo(path).isFile()) return path;
      }
    }
  }
  return QString();
}

QString FindDataFile(const QString& name, const QString& programFolder) {
  return FindDataFile(QStringList{name}, programFolder);
}

QStringList MasterFiles(const QString& programFolder) {
  const QString name = QStringLiteral("Overlay.bmp");
  const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + kOwnPlace;
  const QString beside = QDir(programFolder).filePath(name), cached = QDir(cache).filePath(name);
  const bool writable = QFileInfo(programFolder).isWritable();
  if (!writable) QDir().mkpath(cache);
  return writable || QFileInfo(beside).isFile() ? QStringList{beside, cached} : QStringList{cached};
}

QString MasterFile(const QString& programFolder) {
  const QStringList places = MasterFiles(programFolder);
  return QFileInfo(programFolder).isWritable() ? places.constFirst() : places.constLast();
}

}  // namespace pelorin::app
