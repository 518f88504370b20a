#pragma once

#include <QByteArray>
#include <QString>

namespace pelorin::files {

/// The whole of a file, byte by byte. Throws FileError "Cannot read <path>: <reason>".
QByteArray ReadFile(const QString& path);

}  // namespace pelorin::files
