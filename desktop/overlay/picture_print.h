#pragma once

#include <QImage>
#include <QString>

class QPainter;
class QPrinter;

namespace pelorin::desktop {

/// What a printed page shows; either image may be null.
struct PicturePage {
  QString Caption;  ///< one line
  QImage Map, Picture;
};

/// Paints the page as large as the area allows, map and picture at one scale, beside or below each other.
void PaintPicturePage(QPainter& painter, const QRectF& area, const PicturePage& page);

/// Prints on one page. Raises FileError when the printer, or its file, does not take it.
void PrintPicturePage(QPrinter& printer, const PicturePage& page);

}  // namespace pelorin::desktop
