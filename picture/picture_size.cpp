#include "picture/picture_size.h"

#include "picture/picture_error.h"

namespace pelorin::picture {
namespace {

constexpr std::int64_t kMaxSide = 30'000;
constexpr std::int64_t kMaxPixels = 400'000'000;

}  // namespace

bool IsPossibleSize(std::int64_t width, std::int64_t height) {
  return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide && width * height <= kMaxPixels;
}

QImage NewImage(int width, int height, QImage::Format format) {
  QImage image;
  if (IsPossibleSize(width, height)) image = QImage(width, height, format);
  if (image.isNull()) {
    throw PictureError(QStringLiteral("A picture of %1 x %2 pixels is not possible").arg(width).arg(height));
  }
  return image;
}

}  // namespace pelorin::picture
