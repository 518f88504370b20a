#include "files/csv.h"

#include <algorithm>

namespace pelorin::files {

QString CsvField(const QString& text) {
  const bool isPlain = std::none_of(text.begin(), text.end(), [](QChar character) {
    return character == u',' || character == u'"' || character == u'\n' || character == u'\r';
  });
  return isPlain ? text : u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

}  // namespace pelorin::files
