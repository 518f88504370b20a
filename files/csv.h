#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace pelorin::files {

/// A text as a field of comma-separated values (RFC 4180): in quotes where it holds a comma, a quote or a
/// line's end.
QString CsvField(const QString& text);

/// The fields of a row, without the blanks around them; nothing when a quote is not closed, or stands where
/// none belongs.
std::optional<QStringList> CsvFields(const QString& row);

}  // namespace pelorin::files
