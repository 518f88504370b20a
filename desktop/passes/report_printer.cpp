#include "desktop/passes/report_printer.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include "desktop/passes/fixed_font.h"
#include "session/print_out.h"

namespace pelorin::desktop {
namespace {

constexpr int kPrintedPoints = 10;

}  // namespace

void PrintLines(QPrinter& printer, const QString& title, const QStringList& lines) {
  session::PrintOut(printer, title, [&lines](QPainter& painter, QPagedPaintDevice& pages) {
    QFont font = FixedFont(QFont());
    font.setPointSize(kPrintedPoints);
    painter.setFont(font);
    // On the page, whose dots are not those of the screen.
    const QFontMetricsF metrics(font, &pages);
    double top = 0;
    for (const QString& line : lines) {
      if (top + metrics.lineSpacing() > pages.height()) {
        if (!pages.newPage()) return false;
        top = 0;
      }
      painter.drawText(QPointF(0, top + metrics.ascent()), line);
      top += metrics.lineSpacing();
    }
    return true;
  });
}

}  // namespace pelorin::desktop
