#pragma once

#include <QImage>
#include <QString>

#include "picture/loaded_picture.h"

namespace pelorin::picture {

/// Whether a file is a picture by its name.
bool IsPictureName(const QString& path);

/// A received picture, decoded by what its file begins with: PNG, JPEG, TIFF or a Windows bitmap. A beginning
/// that is none of these is damage, and the extension decides in whatever case: ".png", ".jpg", ".jpeg",
/// ".tif", ".tiff", and anything else is a Windows bitmap. A damaged recording is still a recording: of a
/// PNG, JPEG or TIFF file the lines that are there are shown. Always Format_RGB32, so that whoever measures
/// or copies pixels has one kind to deal with; what is transparent shows white, like an empty page, and 16
/// bits are shown in the tones of FindToneRange.
///
/// Throws PictureError when there is nothing to be shown, and FileError, its base, when a file of another
/// kind than PNG cannot be read. The text names the file.
LoadedPicture LoadRecording(const QString& path);

/// The same for pictures that must be whole: damage throws PictureError, too.
QImage LoadPicture(const QString& path);

/// Replaces `path` by the picture, as PNG if its extension says so and otherwise as JPEG of high quality.
/// Throws FileError or PictureError when it cannot be written; an earlier file is then left as it was.
void SavePicture(const QImage& picture, const QString& path);

}  // namespace pelorin::picture
