#pragma once

#include <QStringList>

#include "app/program_paths.h"

namespace pelorin::app {

/// The files that tell what scanners there are, the later ones adding to the earlier: the program's own
/// "scanners.json", and the user's of that name beside the settings. Neither need exist.
QStringList ScannerFiles(const QString& programFolder = ProgramFolder());

}  // namespace pelorin::app
