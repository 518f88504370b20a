#pragma once

#include <QString>

#include "swath/scanner_table.h"

namespace pelorin::cli {

/// The program's scanners and the user's own; what is wrong in their files is said on standard error.
swath::ScannerTable KnownScanners();

/// Raises UsageError, with the names there are, when there is none of that name.
const swath::Scanner& ScannerNamed(const swath::ScannerTable& scanners, const QString& name);

}  // namespace pelorin::cli
