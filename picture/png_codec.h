#pragma once

#include "picture/sample_rows.h"

class QIODevice;

namespace pelorin::picture {

/// A decoded PNG file.
struct PngPicture {
  // As the file's header has them.
  int Width = 0;
  int Height = 0;
  int BitDepth = 0;    ///< 1, 2, 4, 8 or 16
  int ColourType = 0;  ///< of the PNG standard: 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGB and alpha

  int LinesRead = 0;     ///< from the top; Height, unless the file is damaged
  bool IsWhole = false;  ///< false also for an interlaced picture that lacks its details
  SampleRows Samples;    ///< palettes and depths below 8 are expanded; what could not be read is mid-grey
};

/// Decodes a PNG file from where the device stands, as far as it goes if it is damaged or cut short. False
/// when it is no PNG file, or has no line that can be decoded; `picture` is then not to be used. Throws
/// PictureError, which tells what is too much, when its header promises more than a file of this length can
/// hold or may cost.
bool DecodePng(QIODevice& file, PngPicture& picture);

/// Writes a PNG file of the samples as they are held. What fails in the device itself is for its owner
/// to see; false when libpng cannot encode the picture.
bool EncodePng(const PngPicture& picture, QIODevice& device);

}  // namespace pelorin::picture
