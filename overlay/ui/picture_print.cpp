#include "overlay/ui/picture_print.h"

#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "files/file_error.h"

namespace pelorin::ui {

void PaintPicturePage(QPainter& painter, const QRectF& area, const PicturePage& page) {
  QFont font;
  font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans")});
  font.setPointSize(10);
  painter.setFont(font);
  const QFontMetricsF metrics(font, painter.device());
  const QString caption = metrics.elidedText(page.Caption, Qt::ElideRight, area.width());
  painter.drawText(QPointF(area.left(), area.top() + metrics.ascent()), caption);

  const double top = area.top() + 1.5 * metrics.lineSpacing();
  const bool areTwo = !page.Map.isNull() && !page.Picture.isNull();
  const double gap = areTwo ? metrics.lineSpacing() / 2 : 0;
  const int width = page.Map.width() + page.Picture.width();
  const int height = std::max(page.Map.height(), page.Picture.height());
  const double scale = std::min((area.width() - gap) / width, (area.bottom() - top) / height);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  double left = area.left() + (area.width() - gap - width * scale) / 2;
  for (const QImage& image : {page.Map, page.Picture}) {
    if (image.isNull()) continue;
    painter.drawImage(QRectF(left, top, image.width() * scale, image.height() * scale), image);
    left += image.width() * scale + gap;
  }
}

void PrintPicturePage(QPrinter& printer, const PicturePage& page) {
  printer.setDocName(page.Caption);
  QPainter painter;
  if (!painter.begin(&printer)) {
    const QString target =
        printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
    throw files::FileError(QStringLiteral("Cannot print to %1").arg(target));
  }
  PaintPicturePage(painter, QRectF(0, 0, printer.width(), printer.height()), page);
}

}  // namespace pelorin::ui
