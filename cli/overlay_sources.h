#pragma once

#include <QString>

#include "cli/options.h"
#include "overlay/map_sources.h"

namespace pelorin::cli {

/// The options that OpenSources reads.
Option TopographyOption();
Option MasterOption();

/// The files that maps are made from, opened as the options say or found where the program's data lie. A
/// missing master is made first; what cannot be had is said and done without. Raises FileError for files that
/// the options name.
overlay::MapSources OpenSources(const Arguments& arguments);

/// The overlay master alone of them; without one that can be had there is none.
overlay::MapSources OpenMasterAlone(const Arguments& arguments);

/// Makes the overlay master from a `Countries.dat`; says what is being done. An empty `masterPath` stands for
/// the place where the program looks for it. Returns where it was written. Raises Failure and FileError.
QString MakeMaster(const QString& countriesPath, QString masterPath);

}  // namespace pelorin::cli
