#pragma once

#include <QByteArray>
#include <cstdint>
#include <vector>

class QIODevice;

namespace pelorin::picture {

/// A decoded PNG file.
struct PngPicture {
  // As the file's header has them.
  int Width = 0;
  int Height = 0;
  int BitDepth = 0;    ///< 1, 2, 4, 8 or 16
  int ColourType = 0;  ///< of the PNG standard: 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGB and alpha

  // As the samples are held: palettes and depths below 8 are expanded.
  int LinesRead = 0;                  ///< from the top; Height, unless the file is damaged
  bool IsWhole = false;               ///< false also for an interlaced picture that lacks its details
  int Channels = 0;                   ///< 1 grey, 2 grey and alpha, 3 RGB, 4 RGB and alpha
  int SampleBytes = 0;                ///< 1, or 2 in this machine's byte order
  std::vector<std::uint8_t> Samples;  ///< top row first, no padding; alpha is inverted: 0 is opaque. What
                                      ///< could not be read is mid-grey
};

/// Decodes a PNG file, as far as it goes if it is damaged or cut short. False when it is no PNG file, or has
/// no line that can be decoded, or when its header promises more than a file of this length can hold;
/// `picture` is then not to be used.
bool DecodePng(QByteArrayView file, PngPicture& picture);

/// Writes a PNG file of the samples as they are held. What fails in the device itself is for its owner
/// to see; false when libpng cannot encode the picture.
bool EncodePng(const PngPicture& picture, QIODevice& device);

}  // namespace pelorin::picture
