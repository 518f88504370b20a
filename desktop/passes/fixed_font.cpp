#include "desktop/passes/fixed_font.h"

#include <QStringList>

namespace pelorin::desktop {

QFont FixedFont(QFont font) {
  font.setFamilies(
      {QStringLiteral("Courier New"), QStringLiteral("Liberation Mono"), QStringLiteral("DejaVu Sans Mono")});
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

}  // namespace pelorin::desktop
