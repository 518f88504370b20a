#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

class QIODevice;

namespace pelorin::files {

/// Replaces the file at `path`, or makes it, by what `write` puts into the device it is given. The new
/// content is written beside the old one, brought to the disk and renamed over it when it is complete, so
/// whoever reads or has mapped the old file never sees half of a new one, not even after a power cut. `write`
/// need not look for write errors; what it writes goes to the system piece by piece, so pieces should be
/// large.
///
/// A link is followed: the file that it leads to is replaced. A write-protected file is replaced too, if we
/// own it; the new one is not protected, and has the old one's other rights. Folders and devices are refused.
///
/// Throws FileError "Cannot write <path>: <the system's reason>", and lets through whatever `write` throws;
/// in both cases the old file stays as it was, unless the reason is that the folder could not be brought to
/// the disk after it. `write` is called only once the new file is open.
void ReplaceFile(const QString& path, const std::function<void(QIODevice&)>& write);

/// The same with the content at hand.
void ReplaceFile(const QString& path, QByteArrayView content);

}  // namespace pelorin::files
