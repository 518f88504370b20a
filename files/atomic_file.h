#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

class QIODevice;

namespace pelorin::files {

/// Replaces the file at `path`, or makes it, by what `write` puts into the device it is given. The new
/// content is written beside the old one and renamed over it when it is complete, so whoever reads or
/// has mapped the old file never sees half of a new one. `write` need not look for write errors;
/// what it writes goes to the system piece by piece, so pieces should be large.
///
/// A write-protected file is replaced too, if we own it; the new one is not protected. Throws FileError
/// "Cannot write <path>: <reason>", and lets through whatever `write` throws; in both cases the old file
/// stays as it was. `write` is called only once the new file is open.
void ReplaceFile(const QString& path, const std::function<void(QIODevice&)>& write);

/// The same with the content at hand.
void ReplaceFile(const QString& path, QByteArrayView content);

}  // namespace pelorin::files
