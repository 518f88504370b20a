#pragma once

#include <QImage>
#include <QString>

namespace pelorin::picture {

/// Whether a file is a picture by its name.
bool IsPictureName(const QString& path);

/// A picture file, decoded by its extension in whatever case: ".png", ".jpg" or ".jpeg", and anything
/// else as a Windows bitmap. Always Format_RGB32, top row first, so that whoever measures or copies
/// pixels has one kind to deal with; what is transparent in a PNG shows white, like an empty page.
///
/// Throws PictureError when the file is damaged or no such picture, and FileError, its base, when a
/// JPEG or a bitmap cannot be read.
QImage LoadPicture(const QString& path);

/// Replaces `path` by the picture, as PNG if its extension says so and otherwise as JPEG of high quality.
/// Throws FileError or PictureError when it cannot be written; an earlier file is then left as it was.
void SavePicture(const QImage& picture, const QString& path);

}  // namespace pelorin::picture
