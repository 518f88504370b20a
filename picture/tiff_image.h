#pragma once

#include <QString>

#include "picture/loaded_picture.h"

namespace pelorin::picture {

/// The first picture of a TIFF file: grey (also with 0 as white) or RGB, with or without alpha, 8 or 16 bits,
/// in strips or tiles, channels side by side or apart, plain or packed by LZW, deflate or PackBits, in either
/// byte order. Further channels are passed over, and so is the tag that tells how to turn a picture: rows
/// come as they are stored. Colours that are already multiplied by their alpha are shown as they are, over
/// black.
///
/// Of a file that is damaged or cut short the lines before that are there, and it says so. Throws
/// PictureError "Cannot read <path>: <reason>" when no line can be read, the file is of another kind or too
/// much is in it, and FileError when it cannot be opened.
LoadedPicture LoadTiff(const QString& path);

}  // namespace pelorin::picture
