#pragma once

#include <QImage>
#include <cstdint>

namespace pelorin::picture {

/// Whether a picture may have this size in pixels. It is far beyond any pass or world map and keeps a
/// damaged header from taking all memory: sides of 1 … 30,000, and 400 million pixels in all.
bool IsPossibleSize(std::int64_t width, std::int64_t height);

/// What decoding a picture file takes, as its header tells.
struct DecodingCost {
  std::int64_t FileBytes;
  std::int64_t Width, Height;
  std::int64_t WorkBytes;      ///< samples to be made, again for each time that the decoder goes over them
  std::int64_t MostPerByte;    ///< how much of that one byte of the file can bring about
  std::int64_t HeldBytes = 0;  ///< memory beside the image that the decoder takes for the whole picture
};

/// Throws PictureError, which says what is too much, when a file promises more than its length can hold or
/// than it may cost. Small files are decoded within two seconds or not at all:
/// - 100 million pixels; in files of more than 5 MB 20 for each byte, up to what IsPossibleSize gives;
/// - 360 million bytes of work, as 3,000 x 20,000 pixels of 16-bit RGB take; in files of more than 5 MB 72
/// for each
///   byte;
/// - 400 million bytes of memory beside the image.
void CheckCost(const DecodingCost& cost);

/// An image whose pixels are not set. Throws PictureError when the size is not possible or no memory
/// is left for it.
QImage NewImage(int width, int height, QImage::Format format);

}  // namespace pelorin::picture
