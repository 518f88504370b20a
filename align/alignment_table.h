#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <span>
#include <vector>

#include "align/logged_alignment.h"

/// The log for people to read: what window and console print alike.
namespace pelorin::align {

/// A cell of the table: its text, and what it is sorted by.
struct TableCell {
  QString Text;
  QVariant SortedBy;  ///< a number or a text
  bool IsNumber = false;
};

/// "Begin (UTC)", "Satellite", …
QStringList TableHeadings();
/// An alignment's row below them.
std::vector<TableCell> TableRow(const LoggedAlignment& alignment);

/// The row as a text, a heading and a value a line, for a tool tip.
QString PointTip(const LoggedAlignment& alignment);

/// The alignments of one satellite by its name or catalogue number, case aside; of all for an empty text. The
/// one that began last comes first.
std::vector<LoggedAlignment> LatestFirst(std::span<const LoggedAlignment> log, const QString& satellite);

/// What is offered to the next picture, a line each: the station's clock by the last pictures, and how each
/// satellite flies at the season of its last one. Empty when nothing is.
QStringList MedianLines(std::span<const LoggedAlignment> log);

}  // namespace pelorin::align
