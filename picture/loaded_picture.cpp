#include "picture/loaded_picture.h"

#include <algorithm>

namespace pelorin::picture {

void FillMissing(QImage& image, int lines) {
  for (int y = lines; y < image.height(); ++y) {
    std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)), image.width(), kMissingLine);
  }
}

QString DamageText(const QString& path, const QString& reason, int lines, int height) {
  const QString said = path + QStringLiteral(": ") + reason;
  if (lines >= height) return said + QStringLiteral(" It is shown as far as it could be read.");
  return said + QStringLiteral(" Only the first %1 of %2 lines are there; below them it is grey.")
                    .arg(lines)
                    .arg(height);
}

}  // namespace pelorin::picture
