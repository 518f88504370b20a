#include "app/program_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <filesystem>
#include <vector>

#include "orbit/element_file.h"

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

QString ElementRequestsFile() {
  return QDir(UserDataFolder()).filePath(QStringLiteral("element-requests.txt"));
}

QString ElementArchiveFolder() { return QDir(UserDataFolder()).filePath(QStringLiteral("archive")); }

QString AlignmentLogFile() { return QDir(UserDataFolder()).filePath(QStringLiteral("alignments.csv")); }

QString CacheFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + kOwnPlace;
}

bool IsPortable(const QString& programFolder) {
  const QFileInfo marker(QDir(programFolder).filePath(QStringLiteral("pelorin-portable.txt")));
  return marker.isFile() && QFileInfo(programFolder).isWritable();
}

DefaultFolders UserFolders() {
  const QDir user(UserDataFolder());
  return {user.filePath(QStringLiteral("elements/")), user.filePath(QStringLiteral("results/"))};
}

DefaultFolders FoldersFor(const QString& programFolder) {
  const QString beside = WithSeparator(programFolder);
  if (IsPortable(programFolder)) return {beside, beside};
  DefaultFolders folders = UserFolders();
  folders.Left = beside;
  if (!QFileInfo(folders.Elements).isDir() &&
      !orbit::ElementFilesIn(std::filesystem::path(beside.toStdU16String())).empty()) {
    folders.Elements = beside;
  }
  return folders;
}

QString WithSeparator(const QString& folder) {
  const bool ends = folder.isEmpty() || folder.endsWith(u'/') || folder.endsWith(QDir::separator());
  return ends ? folder : folder + QDir::separator();
}

QString FindDataFile(const QStringList& names, const QString& programFolder) {
  const QDir program(programFolder);
  const std::vector<QDir> users{QDir::current(), QDir(QDir::current().filePath(QStringLiteral(".."))),
                                QDir(UserDataFolder())};
  const std::vector<QDir> installed{program, QDir(program.filePath(QStringLiteral("../share/pelorin")))};
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

}  // namespace pelorin::app
