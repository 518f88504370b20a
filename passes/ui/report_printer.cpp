#include "passes/ui/report_printer.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include "app/session/print_out.h"
#include "passes/ui/fixed_font.h"

namespace pelorin::ui {
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

}  // namespace pelorin::ui
