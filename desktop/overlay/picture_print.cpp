#include "desktop/overlay/picture_print.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>

#include "session/print_out.h"

namespace pelorin::desktop {

void PaintPicturePage(QPainter& painter, const QRectF& area, const PicturePage& page) {
  QFont font;
  font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans")});
  font.setPointSize(10);
  painter.setFont(font);
  const QFontMetricsF metrics(font, painter.device());
  const QString caption = metrics.elidedText(page.Caption, Qt::ElideRight, area.width());
  painter.drawText(QPointF(area.left(), area.top() + metrics.ascent()), caption);

  const double top = area.top() + 1.5 * metrics.lineSpacing();
  const QRectF room(area.left(), top, area.width(), area.bottom() - top);
  const bool areTwo = !page.Map.isNull() && !page.Picture.isNull();
  const double gap = areTwo ? metrics.lineSpacing() / 2 : 0;
  // Side by side or one below the other, whichever shows more.
  const QSize a = page.Map.size(), b = page.Picture.size();
  const QSize beside(a.width() + b.width(), std::max(a.height(), b.height()));
  const QSize below(std::max(a.width(), b.width()), a.height() + b.height());
  const double scaleBeside = std::min((room.width() - gap) / beside.width(), room.height() / beside.height());
  const double scaleBelow = std::min(room.width() / below.width(), (room.height() - gap) / below.height());
  const bool isBeside = scaleBeside >= scaleBelow;
  const double scale = std::max(scaleBeside, scaleBelow);

  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  QPointF corner = room.topLeft();
  for (const QImage& image : {page.Map, page.Picture}) {
    if (image.isNull()) continue;
    const QSizeF size = QSizeF(image.size()) * scale;
    painter.drawImage(QRectF(corner, size), image);
    corner += isBeside ? QPointF(size.width() + gap, 0) : QPointF(0, size.height() + gap);
  }
}

void PrintPicturePage(QPrinter& printer, const PicturePage& page) {
  session::PrintOut(printer, page.Caption, [&page](QPainter& painter, QPagedPaintDevice& pages) {
    PaintPicturePage(painter, QRectF(0, 0, pages.width(), pages.height()), page);
    return true;
  });
}

}  // namespace pelorin::desktop
