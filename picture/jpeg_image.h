#pragma once

#include <QImage>
#include <QString>

namespace pelorin::picture {

/// A JPEG file, grey or colour, as Format_RGB32. Throws PictureError "Cannot read <path>: <reason>" when
/// the file is damaged, cut short or of a kind we do not read (CMYK, 12 bits), and FileError when it
/// cannot be read at all. The decoder itself would fill the lost part with grey and call it a success;
/// a pass half lost in transfer must not pass for a whole one.
QImage LoadJpeg(const QString& path);

/// Replaces `path` by a JPEG file, grey for Format_Grayscale8 and colour for all else; transparency is
/// lost. `quality` is 1 … 100, values beyond count as the nearer end. Throws PictureError when the image
/// is empty or too large for JPEG, and FileError when the file cannot be written; an earlier file is
/// then left as it was.
void SaveJpeg(const QImage& image, const QString& path, int quality);

}  // namespace pelorin::picture
