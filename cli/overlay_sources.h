#pragma once

#include <QImage>
#include <QString>
#include <optional>

#include "cli/options.h"
#include "overlay/overlay_generator.h"

namespace pelorin::cli {

/// The options that LoadedSources reads.
Option TopographyOption();
Option MasterOption();

/// The files that maps are made from, opened as the options say or found where the program's data lie. A
/// missing master is made first; what cannot be had is said and done without.
class LoadedSources {
 public:
  explicit LoadedSources(const Arguments& arguments);

  /// Borrows from this object.
  overlay::OverlaySources Sources() const;

 private:
  void OpenGround(const QString& wanted);
  void OpenMaster(const QString& wanted);

  std::optional<overlay::Topography> elevations_;
  QImage baseImage_;
  std::optional<overlay::MasterView> master_;
};

/// Makes the overlay master from a `Countries.dat`; says what is being done. Raises Failure and FileError.
void MakeMaster(const QString& countriesPath, const QString& masterPath);

}  // namespace pelorin::cli
