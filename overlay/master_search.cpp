#include "overlay/master_search.h"

#include <QDir>
#include <QFileInfo>

#include "files/file_error.h"

namespace pelorin::overlay {
namespace {

QString MasterIn(const QString& folder) { return QDir(folder).filePath(QStringLiteral("Overlay.bmp")); }

/// 0 when there is no such file, or none that can be read; that is told.
std::uint32_t TagOrNone(const QString& countriesPath, const std::function<void(const QString&)>& tell) {
  try {
    return countriesPath.isEmpty() ? 0 : CountriesTag(countriesPath);
  } catch (const files::FileError& error) {
    tell(error.Text());
    return 0;
  }
}

/// Draws a new master; an error's text when it could not be, empty when the user did not want it.
std::optional<QString> ErrorOfDrawing(const QString& path, const QString& countriesPath,
                                      const MasterStatus& status, const ConfirmLowMemory& confirm) {
  bool isWanted = true;
  const auto ask = [&](const QString& question) { return isWanted = confirm(question); };
  try {
    QDir().mkpath(QFileInfo(path).path());
    if (GenerateMaster(countriesPath, path, status, ask)) return std::nullopt;
  } catch (const files::FileError& error) {
    return error.Text();
  }
  return isWanted
             ? QStringLiteral("There are no polygons in %1; no overlay master was made").arg(countriesPath)
             : QString();
}

}  // namespace

QString NewMasterFile(const MasterFolders& folders) {
  return MasterIn(folders.IsPortable ? folders.Program : folders.Cache);
}

std::optional<MasterView> FindMaster(const MasterFolders& folders, const QString& countriesPath,
                                     const MasterStatus& status, const ConfirmLowMemory& confirm,
                                     const std::function<void(const QString&)>& tell) {
  const std::uint32_t tag = TagOrNone(countriesPath, tell);
  QString outdated;
  for (const QString& folder : {folders.Users, folders.Program, folders.Cache}) {
    auto master = MasterView::Open(MasterIn(folder));
    if (!master) continue;
    const bool isUsers =
        folder == folders.Users || (folder == folders.Program && folders.IsPortable && master->Tag() == 0);
    if (isUsers || tag == 0 || master->Tag() == tag) return master;
    if (outdated.isEmpty()) outdated = MasterIn(folder);
  }
  if (tag == 0) return std::nullopt;
  const QString path = NewMasterFile(folders);
  const std::optional<QString> error = ErrorOfDrawing(path, countriesPath, status, confirm);
  if (!error) return MasterView::Open(path);
  if (!error->isEmpty()) tell(*error);
  return MasterView::Open(outdated);
}

}  // namespace pelorin::overlay
