#include "cli/json_text.h"

#include <QStringList>
#include <cmath>

namespace pelorin::cli {

QString JsonText(const ordered_json& object) {
  QStringList members;
  for (const auto& [key, value] : object.items()) {
    QString text = QString::fromStdString(value.dump());
    if (value.is_array() && !value.empty()) {
      QStringList elements;
      for (const ordered_json& element : value) elements.append(QString::fromStdString(element.dump()));
      text = QStringLiteral("[\n    ") + elements.join(QStringLiteral(",\n    ")) + QStringLiteral("\n  ]");
    }
    members.append(QStringLiteral("  \"%1\": ").arg(QString::fromStdString(key)) + text);
  }
  return QStringLiteral("{\n") + members.join(QStringLiteral(",\n")) + QStringLiteral("\n}\n");
}

std::string JsonUtc(orbit::TDateTime moment) {
  return orbit::FormatDateTime("yyyy-mm-ddThh:nn:ss.zzzZ", moment);
}

double JsonRounded(double number, double parts) {
  // −0 is no number for people.
  return std::round(number * parts) / parts + 0.0;
}

}  // namespace pelorin::cli
