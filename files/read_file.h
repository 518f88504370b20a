#pragma once

#include <QByteArray>
#include <QString>

namespace pelorin::files {

/// More bytes than a picture of the largest size has that can be shown.
inline constexpr qint64 kMostPictureBytes = 2'000'000'000;
/// Ten times the elements of all satellites, a thousand times the world's coasts.
inline constexpr qint64 kMostTextBytes = 256 << 20;

/// The whole of a file, byte by byte. Throws FileError "Cannot read <path>: <reason>", also when the file has
/// more than `most` bytes or than there is memory; nothing is taken for a file that is too large.
QByteArray ReadFile(const QString& path, qint64 most = kMostTextBytes);

}  // namespace pelorin::files
