#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "overlay/line_maker.h"
#include "overlay/master_search.h"
#include "overlay/topography.h"

namespace pelorin::overlay {

/// Gets what the user should know.
using TellUser = std::function<void(const QString& text)>;

/// The topography file's names, best first.
QStringList TopographyNames();

/// The files that maps are made from, opened; all of them may be missing.
class MapSources {
 public:
  /// Opens a file for the ground: a picture of the world by its extension, elevations otherwise. A file that
  /// has the size of no etopo5 file is told. Raises FileError with the file's name.
  void OpenGround(const QString& path, const TellUser& tell);

  /// Opens the topography that was found, or takes the user's own bitmap where there is none (an empty path).
  /// What cannot be had is told: the ground is black then.
  void FindGround(const QString& topographyFile, const QImage& userBitmap, const TellUser& tell);

  /// Raises FileError when the file is no overlay master.
  void OpenMaster(const QString& path);
  /// See overlay::FindMaster. A damaged `Countries.dat` is told.
  void FindMaster(const MasterFolders& folders, const QString& countriesPath, const MasterStatus& status,
                  const ConfirmLowMemory& confirm, const TellUser& tell);
  bool HasMaster() const { return master_.has_value(); }

  /// Borrowed from this object.
  OverlaySources Borrowed() const;

 private:
  std::optional<Topography> elevations_;
  QImage baseImage_;
  std::optional<MasterView> master_;
};

}  // namespace pelorin::overlay
