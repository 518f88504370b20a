#pragma once

#include <QString>

namespace pelorin::files {

/// A text as a field of comma-separated values (RFC 4180): in quotes where it holds a comma, a quote or a
/// line's end.
QString CsvField(const QString& text);

}  // namespace pelorin::files
