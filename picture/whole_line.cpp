#include "picture/whole_line.h"

namespace pelorin::picture {

std::array<QImage, 2> CutWholeLines(const QImage& picture) {
  const int half = picture.width() / 2;
  return {picture.copy(0, 0, half, picture.height()), picture.copy(half, 0, half, picture.height())};
}

}  // namespace pelorin::picture
