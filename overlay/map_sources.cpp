#include "overlay/map_sources.h"

#include <QFileInfo>

#include "files/file_error.h"
#include "picture/picture_file.h"

namespace pelorin::overlay {

QStringList TopographyNames() { return {QStringLiteral("etopo5.elev"), QStringLiteral("etopo5")}; }

void MapSources::OpenGround(const QString& path, const TellUser& tell) {
  if (picture::IsPictureName(path)) {
    baseImage_ = picture::LoadPicture(path);
    return;
  }
  elevations_ = Topography::Open(path);
  if (!elevations_) throw files::FileError(QStringLiteral("Cannot read the topography file %1").arg(path));
  if (!elevations_->KnownLayout()) {
    tell(QStringLiteral("%1 has the size of no etopo5 file; the ground will be grey").arg(path));
  }
}

void MapSources::FindGround(const QString& topographyFile, const QImage& userBitmap, const TellUser& tell) {
  if (topographyFile.isEmpty()) {
    baseImage_ = userBitmap;
    if (userBitmap.isNull()) tell(QStringLiteral("Topography will not be available"));
    return;
  }
  try {
    OpenGround(topographyFile, tell);
  } catch (const files::FileError& error) {
    tell(error.Text() + QStringLiteral("; maps will be made on black ground"));
  }
}

void MapSources::OpenMaster(const QString& path) {
  master_ = MasterView::Open(path);
  if (!master_) throw files::FileError(QStringLiteral("%1 is not an overlay master").arg(path));
}

void MapSources::FindMaster(const MasterFolders& folders, const QString& countriesPath,
                            const MasterStatus& status, const ConfirmLowMemory& confirm,
                            const TellUser& tell) {
  master_ = overlay::FindMaster(folders, countriesPath, status, confirm, tell);
}

OverlaySources MapSources::Borrowed() const {
  return {{elevations_ ? &*elevations_ : nullptr, baseImage_.isNull() ? nullptr : &baseImage_},
          master_ ? &*master_ : nullptr};
}

}  // namespace pelorin::overlay
