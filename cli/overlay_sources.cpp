#include "cli/overlay_sources.h"

#include <QDir>
#include <QFileInfo>

#include "app/program_paths.h"
#include "map/backdrop.h"

namespace pelorin::cli {
namespace {

overlay::MasterFolders FoldersOfMasters() {
  return {.Users = app::UserDataFolder(),
          .Program = app::ProgramFolder(),
          .Cache = app::CacheFolder(),
          .IsPortable = app::IsPortable()};
}

/// Nobody may be there to answer, and slow is better than no map.
bool GoOnWithLittleMemory(const QString&) {
  Say(QStringLiteral("Little memory is free; this may take many minutes"));
  return true;
}

/// Says the first thing that is done: what follows goes by in no time.
overlay::MasterStatus SayBeginning() {
  return [isSaid = false](const QString& text) mutable {
    if (!isSaid) Say(text);
    isSaid = true;
  };
}

/// The plain map of the world that the desktop shows, if that is the user's own bitmap.
QImage UserBitmap() {
  const map::Backdrop backdrop =
      map::LoadBackdrop(false, [](const QStringList& names) { return app::FindDataFile(names); });
  return backdrop.IsUserBitmap ? backdrop.Picture : QImage();
}

void OpenGround(overlay::MapSources& sources, const QString& wanted) {
  if (wanted == QStringLiteral("none")) return;
  if (!wanted.isEmpty()) return sources.OpenGround(wanted, Say);
  const QString topography = app::FindDataFile(overlay::TopographyNames());
  sources.FindGround(topography, topography.isEmpty() ? UserBitmap() : QImage(), Say);
}

void OpenMaster(overlay::MapSources& sources, const QString& wanted) {
  if (wanted == QStringLiteral("none")) return;
  if (!wanted.isEmpty()) return sources.OpenMaster(wanted);
  sources.FindMaster(FoldersOfMasters(), app::FindDataFile(QStringLiteral("Countries.dat")), SayBeginning(),
                     GoOnWithLittleMemory, Say);
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

overlay::MapSources OpenSources(const Arguments& arguments) {
  overlay::MapSources sources;
  OpenGround(sources, arguments.Text(QStringLiteral("topography")));
  const QString wanted = arguments.Text(QStringLiteral("master"));
  OpenMaster(sources, wanted);
  if (wanted.isEmpty() && !sources.HasMaster()) {
    Say(QStringLiteral("The map has no coasts and borders, and no ovl.bmp is written"));
  }
  return sources;
}

overlay::MapSources OpenMasterAlone(const Arguments& arguments) {
  overlay::MapSources sources;
  OpenMaster(sources, arguments.Text(QStringLiteral("master")));
  return sources;
}

QString MakeMaster(const QString& countriesPath, QString masterPath) {
  if (countriesPath.isEmpty()) throw Failure(QStringLiteral("Countries.dat was not found"));
  if (masterPath.isEmpty()) {
    masterPath = overlay::NewMasterFile(FoldersOfMasters());
    QDir().mkpath(QFileInfo(masterPath).path());
  }
  if (!overlay::GenerateMaster(countriesPath, masterPath, SayBeginning(), GoOnWithLittleMemory)) {
    throw Failure(QStringLiteral("There are no polygons in %1; nothing was written").arg(countriesPath));
  }
  return masterPath;
}

}  // namespace pelorin::cli
