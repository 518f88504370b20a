#include "picture/loaded_picture.h"

namespace pelorin::picture {

QString DamageText(const QString& path, const QString& reason, int lines, int height) {
  const QString said = path + QStringLiteral(": ") + reason;
  if (lines >= height) return said + QStringLiteral(" It is shown as far as it could be read.");
  return said + QStringLiteral(" Only the first %1 of %2 lines are there; below them it is grey.")
                    .arg(lines)
                    .arg(height);
}

}  // namespace pelorin::picture
