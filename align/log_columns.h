#pragma once

#include <QStringList>
#include <optional>

#include "align/logged_alignment.h"

/// The columns of the log of alignments: their names, how they are written, how they are read.
namespace pelorin::align {

/// In the order in which a new log has them: "picture", "satellite", …; docs/formats.md has them all.
QStringList LogColumns();

/// An alignment's fields, in the order of LogColumns; numbers and times as text, no field in quotes yet.
QStringList LogFields(const LoggedAlignment& alignment);

/// Whether a column is a number: it needs no quotes anywhere.
bool IsNumberColumn(const QString& name);

/// The columns without which nothing can be said of a row are all there.
bool HasNeededColumns(const QStringList& header);

/// A row under these columns, in any order; others are passed over. Nothing where a needed field is missing,
/// any field cannot be understood or is not possible, or there are more fields than columns.
std::optional<LoggedAlignment> ReadLogFields(const QStringList& header, const QStringList& fields);

}  // namespace pelorin::align
