#include "passes/ui/report_printer.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <stdexcept>

#include "passes/ui/fixed_font.h"

namespace pelorin::ui {
namespace {

constexpr int kPrintedPoints = 10;

[[noreturn]] void RaisePrintError(const QString& target) {
  throw std::runtime_error(QStringLiteral("Cannot print to %1").arg(target).toStdString());
}

QString TargetOf(const QPrinter& printer) {
  return printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
}

/// A printer does not tell why it cannot begin, the file does.
void CheckOutputFile(const QString& path) {
  QFile file(path);
  if (!file.open(QFile::Append)) RaisePrintError(path + QStringLiteral(": ") + file.errorString());
}

}  // namespace

bool NeedsFileName(const QPrinter& printer) {
  return printer.outputFormat() == QPrinter::PdfFormat && printer.outputFileName().isEmpty();
}

void PrintLines(QPrinter& printer, const QString& title, const QStringList& lines) {
  if (!printer.outputFileName().isEmpty()) CheckOutputFile(printer.outputFileName());
  printer.setDocName(title);
  QFont font = FixedFont(QFont());
  font.setPointSize(kPrintedPoints);
  QPainter painter;
  if (!painter.begin(&printer)) RaisePrintError(TargetOf(printer));
  painter.setFont(font);
  // On the printer, whose dots are not those of the screen.
  const QFontMetricsF metrics(font, &printer);
  double top = 0;
  for (const QString& line : lines) {
    if (top + metrics.lineSpacing() > printer.height()) {
      if (!printer.newPage()) RaisePrintError(TargetOf(printer));
      top = 0;
    }
    painter.drawText(QPointF(0, top + metrics.ascent()), line);
    top += metrics.lineSpacing();
  }
  if (!painter.end() || printer.printerState() == QPrinter::Error) RaisePrintError(TargetOf(printer));
}

}  // namespace pelorin::ui
