#pragma once

#include <QImage>

namespace pelorin::tests {

/// A picture of the old format as received, 300 lines, with so many columns before its image; they have
/// minute marks from its lines 60 and 180 on.
inline QImage WithMinuteMarks(int before, int columns) {
  QImage picture(columns, 300, QImage::Format_RGB32);
  picture.fill(Qt::darkGray);
  for (const int mark : {60, 180}) {
    for (int line = mark; line < mark + 4; ++line) {
      for (int x = 0; x < before; ++x) picture.setPixel(x, line, line < mark + 2 ? 0xFF000000 : 0xFFFFFFFF);
    }
  }
  return picture;
}

}  // namespace pelorin::tests
