#pragma once

#include <QImage>
#include <QString>

#include "picture/loaded_picture.h"

namespace pelorin::picture {

/// A JPEG file, grey or colour. Of one that is damaged or cut short the lines before that are there, and it
/// says so: the decoder itself would call it a success. A progressive one, which comes as a whole at first
/// and then in its details, has all lines. Throws PictureError "Cannot read <path>: <reason>" when no line
/// can be read or the file is of a kind we do not read (CMYK, 12 bits), and FileError when it cannot be read
/// at all.
LoadedPicture LoadJpeg(const QString& path);

/// Replaces `path` by a JPEG file, grey for Format_Grayscale8 and colour for all else; transparency is
/// lost. `quality` is 1 … 100, values beyond count as the nearer end. Throws PictureError when the image
/// is empty or too large for JPEG, and FileError when the file cannot be written; an earlier file is
/// then left as it was.
void SaveJpeg(const QImage& image, const QString& path, int quality);

}  // namespace pelorin::picture
