#include "picture/picture_size.h"

#include <algorithm>

#include "picture/picture_error.h"

namespace pelorin::picture {
namespace {

constexpr std::int64_t kMaxSide = 30'000;
constexpr std::int64_t kMaxPixels = 400'000'000;

constexpr std::int64_t kMillion = 1'000'000;
constexpr std::int64_t kPixelsOfSmallFile = 100 * kMillion, kPixelsPerByte = 20;
constexpr std::int64_t kWorkOfSmallFile = 360 * kMillion, kWorkPerByte = 72;
constexpr std::int64_t kMaxHeldBytes = 400 * kMillion;

}  // namespace

bool IsPossibleSize(std::int64_t width, std::int64_t height) {
  return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide && width * height <= kMaxPixels;
}

void CheckCost(const DecodingCost& cost) {
  const QString size = QStringLiteral("%1 x %2 pixels ").arg(cost.Width).arg(cost.Height);
  const auto inMillions = [](std::int64_t count) { return (count + kMillion - 1) / kMillion; };
  if (cost.Width <= 0 || cost.Height <= 0 || cost.WorkBytes / cost.MostPerByte > cost.FileBytes) {
    throw PictureError(size + QStringLiteral("cannot be in this file"));
  }
  const std::int64_t pixels = cost.Width * cost.Height;
  const std::int64_t mostPixels = std::clamp(cost.FileBytes * kPixelsPerByte, kPixelsOfSmallFile, kMaxPixels);
  if (!IsPossibleSize(cost.Width, cost.Height) || pixels > mostPixels) {
    throw PictureError(
        size + QStringLiteral("are too many: a file of this length may have %1 million, and %2 a side")
                   .arg(inMillions(mostPixels))
                   .arg(kMaxSide));
  }
  const std::int64_t mostWork = std::max(cost.FileBytes * kWorkPerByte, kWorkOfSmallFile);
  if (cost.WorkBytes > mostWork) {
    throw PictureError(size +
                       QStringLiteral("would take too long: %1 million bytes have to be decoded, and a "
                                      "file of this length may have %2 million")
                           .arg(inMillions(cost.WorkBytes))
                           .arg(inMillions(mostWork)));
  }
  if (cost.HeldBytes > kMaxHeldBytes) {
    throw PictureError(size + QStringLiteral("of this kind take %1 MB of memory beside the image; at most %2 "
                                             "are given to them")
                                  .arg(inMillions(cost.HeldBytes))
                                  .arg(inMillions(kMaxHeldBytes)));
  }
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
