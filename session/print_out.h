#pragma once

#include <QString>
#include <functional>

class QPagedPaintDevice;
class QPainter;
class QPrinter;

namespace pelorin::session {

/// Nothing is set up to print on: what is printed goes into a PDF file, which has no name yet.
bool NeedsFileName(const QPrinter& printer);

/// Paints on the first page and, after its newPage(), on others; false when it does not get one.
using PaintPages = std::function<bool(QPainter& painter, QPagedPaintDevice& pages)>;

/// Prints what `paint` paints, on the printer or into the PDF file that it is set up for. Such a file is
/// replaced only by a whole one. Raises FileError with the printer or the file, and the reason if it is
/// known, when that does not take the pages, and lets through what `paint` raises.
void PrintOut(QPrinter& printer, const QString& title, const PaintPages& paint);

}  // namespace pelorin::session
