#pragma once

#include <QString>
#include <QStringList>

class QPrinter;

namespace pelorin::desktop {

/// Prints the lines one below the other in a Courier of 10 points; a full page is followed by the next.
/// Raises an error that tells the printer or the file when that takes nothing.
void PrintLines(QPrinter& printer, const QString& title, const QStringList& lines);

}  // namespace pelorin::desktop
