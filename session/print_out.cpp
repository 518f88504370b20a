#include "session/print_out.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

#include "files/atomic_file.h"
#include "files/file_error.h"

namespace pelorin::session {
namespace {

bool IsPdfFile(const QPrinter& printer) {
  return printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty();
}

[[noreturn]] void RaisePrintError(const QString& target) {
  throw files::FileError(QStringLiteral("Cannot print to %1").arg(target));
}

/// The printer's own PDF files are cut short without a word when the disk is full.
QByteArray PdfOf(const QPrinter& printer, const QString& title, const PaintPages& paint) {
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter pages(&buffer);
  pages.setTitle(title);
  pages.setCreator(QStringLiteral("Pelorin"));
  pages.setResolution(printer.resolution());
  pages.setPageLayout(printer.pageLayout());
  QPainter painter(&pages);
  if (!paint(painter, pages) || !painter.end()) RaisePrintError(printer.outputFileName());
  return content;
}

}  // namespace

bool NeedsFileName(const QPrinter& printer) {
  return printer.outputFormat() == QPrinter::PdfFormat && printer.outputFileName().isEmpty();
}

void PrintOut(QPrinter& printer, const QString& title, const PaintPages& paint) {
  if (IsPdfFile(printer)) {
    files::ReplaceFile(printer.outputFileName(), PdfOf(printer, title, paint));
    return;
  }
  const QString target =
      printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
  printer.setDocName(title);
  QPainter painter;
  if (!painter.begin(&printer)) RaisePrintError(target);
  if (!paint(painter, printer) || !painter.end() || printer.printerState() == QPrinter::Error)
    RaisePrintError(target);
}

}  // namespace pelorin::session
