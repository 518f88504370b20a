#pragma once

#include <QImage>
#include <cstdint>

namespace pelorin::picture {

/// Whether a picture may have this size in pixels. It is far beyond any pass or world map and keeps a
/// damaged header from taking all memory: sides of 1 … 30,000, and 400 million pixels in all.
bool IsPossibleSize(std::int64_t width, std::int64_t height);

/// An image whose pixels are not set. Throws PictureError when the size is not possible or no memory
/// is left for it.
QImage NewImage(int width, int height, QImage::Format format);

}  // namespace pelorin::picture
