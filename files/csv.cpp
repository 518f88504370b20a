#include "files/csv.h"

#include <algorithm>

namespace pelorin::files {

QString CsvField(const QString& text) {
  const bool isPlain = std::none_of(text.begin(), text.end(), [](QChar character) {
    return character == u',' || character == u'"' || character == u'\n' || character == u'\r';
  });
  return isPlain ? text : u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

std::optional<QStringList> CsvFields(const QString& row) {
  QStringList fields;
  qsizetype at = 0;
  for (bool isMore = true; isMore;) {
    while (at < row.size() && row[at].isSpace()) ++at;
    QString field;
    if (at < row.size() && row[at] == u'"') {
      do {
        const qsizetype end = row.indexOf(u'"', ++at);
        if (end < 0) return std::nullopt;
        field += QStringView(row).mid(at, end - at);
        at = end + 1;
        if (at < row.size() && row[at] == u'"') field += u'"';
      } while (at < row.size() && row[at] == u'"');
      while (at < row.size() && row[at].isSpace()) ++at;
      if (at < row.size() && row[at] != u',') return std::nullopt;
    } else {
      const qsizetype comma = row.indexOf(u',', at);
      field = row.mid(at, (comma < 0 ? row.size() : comma) - at).trimmed();
      if (field.contains(u'"')) return std::nullopt;
      at += comma < 0 ? row.size() - at : comma - at;
    }
    fields.append(field);
    isMore = at < row.size();
    ++at;
  }
  return fields;
}

}  // namespace pelorin::files
