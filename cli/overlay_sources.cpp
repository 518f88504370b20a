#include "cli/overlay_sources.h"

#include <QFileInfo>

#include "app/program_paths.h"
#include "overlay/overlay_master.h"
#include "picture/picture_file.h"

namespace pelorin::cli {
namespace {

bool IsPicture(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  return extension == QStringLiteral("bmp") || extension == QStringLiteral("jpg") ||
         extension == QStringLiteral("jpeg") || extension == QStringLiteral("png");
}

/// The first of the usual topography files, else a plain map of the world, else nothing.
QString UsualGround() {
  const QString elevations = app::FindDataFile({QStringLiteral("etopo5.elev"), QStringLiteral("etopo5")});
  return elevations.isEmpty() ? app::FindDataFile(QStringLiteral("UserMap.bmp")) : elevations;
}

}  // namespace

Option TopographyOption() {
  return {QStringLiteral("topography"), QStringLiteral("FILE|none"),
          QStringLiteral("Elevations (etopo5), or a picture of the world from 180 W to 180 E. Default: the "
                         "installed elevations.")};
}

Option MasterOption() {
  return {QStringLiteral("master"), QStringLiteral("FILE|none"),
          QStringLiteral("The overlay master. Default: the program's own, made at the first run.")};
}

LoadedSources::LoadedSources(const Arguments& arguments) {
  OpenGround(arguments.Text(QStringLiteral("topography")));
  OpenMaster(arguments.Text(QStringLiteral("master")));
}

void LoadedSources::OpenGround(const QString& wanted) {
  if (wanted == QStringLiteral("none")) return;
  const QString path = wanted.isEmpty() ? UsualGround() : wanted;
  if (path.isEmpty()) {
    Say(QStringLiteral("Topography will not be available"));
  } else if (IsPicture(path)) {
    baseImage_ = picture::LoadPicture(path);
  } else {
    elevations_ = overlay::Topography::Open(path);
    if (!elevations_) throw Failure(QStringLiteral("Cannot read the topography file %1").arg(path));
    if (!elevations_->KnownLayout()) {
      Say(QStringLiteral("%1 has the size of no etopo5 file; the ground will be grey").arg(path));
    }
  }
}

void LoadedSources::OpenMaster(const QString& wanted) {
  if (wanted == QStringLiteral("none")) return;
  if (!wanted.isEmpty()) {
    master_ = overlay::MasterView::Open(wanted);
    if (!master_) throw Failure(QStringLiteral("%1 is not an overlay master").arg(wanted));
    return;
  }
  const QStringList places = app::MasterFiles();
  for (const QString& path : places) {
    if (!master_) master_ = overlay::MasterView::Open(path);
  }
  for (const QString& path : places) {
    if (master_) break;
    try {
      MakeMaster(app::FindDataFile(QStringLiteral("Countries.dat")), path);
      master_ = overlay::MasterView::Open(path);
    } catch (const std::exception& error) {
      Say(QString::fromUtf8(error.what()));
    }
  }
  if (!master_) Say(QStringLiteral("The map has no coasts and borders, and no ovl.bmp is written"));
}

overlay::OverlaySources LoadedSources::Sources() const {
  return {{elevations_ ? &*elevations_ : nullptr, baseImage_.isNull() ? nullptr : &baseImage_},
          master_ ? &*master_ : nullptr};
}

void MakeMaster(const QString& countriesPath, const QString& masterPath) {
  if (countriesPath.isEmpty()) throw Failure(QStringLiteral("Countries.dat was not found"));
  Say(QStringLiteral("Creating overlay master image, please wait..."));
  // Nobody may be there to answer, and slow is better than no map.
  const auto goOn = [](const QString&) {
    Say(QStringLiteral("Little memory is free; this may take many minutes"));
    return true;
  };
  if (!overlay::GenerateMaster(
          countriesPath, masterPath, [](const QString&) {}, goOn)) {
    throw Failure(QStringLiteral("There are no polygons in %1; nothing was written").arg(countriesPath));
  }
}

}  // namespace pelorin::cli
