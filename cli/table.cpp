#include "cli/table.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <cmath>
#include <cstdio>

#include "cli/options.h"
#include "files/csv.h"

namespace pelorin::cli {

Cell::Cell(double number, int decimals) : text_(QString::number(number, 'f', decimals)), bare_(true) {
  if (!std::isfinite(number))
    throw Failure(QStringLiteral("The elements give no position for one of the moments asked for"));
}

Cell Cell::WrittenNumber(const QString& text) {
  Cell cell(text);
  cell.bare_ = true;
  return cell;
}

Cell Cell::Flag(bool flag) {
  Cell cell(flag ? 1 : 0);
  cell.json_ = flag ? QStringLiteral("true") : QStringLiteral("false");
  return cell;
}

QString Cell::Csv() const { return files::CsvField(text_); }

QString Cell::Json() const {
  if (!json_.isEmpty()) return json_;
  if (bare_) return text_;
  // An array of one text, its brackets cut off: the library knows every escape.
  const QByteArray array = QJsonDocument(QJsonArray{text_}).toJson(QJsonDocument::Compact);
  return QString::fromUtf8(array.sliced(1, array.size() - 2));
}

Table::Table(const QStringList& columns, bool json) : columns_(columns), json_(json) {
  PrintOut(json_ ? QStringLiteral("[") : columns_.join(QLatin1Char(',')) + QLatin1Char('\n'));
}

void Table::Add(const std::vector<Cell>& row) {
  QStringList cells;
  for (std::size_t i = 0; i < row.size(); ++i) {
    cells.append(json_ ? QStringLiteral("\"%1\": ").arg(columns_[static_cast<qsizetype>(i)]) + row[i].Json()
                       : row[i].Csv());
  }
  PrintOut(json_ ? (first_ ? QStringLiteral("\n  {") : QStringLiteral(",\n  {")) +
                       cells.join(QStringLiteral(", ")) + QLatin1Char('}')
                 : cells.join(QLatin1Char(',')) + QLatin1Char('\n'));
  first_ = false;
}

void Table::Finish() {
  if (json_) PrintOut(first_ ? QStringLiteral("]\n") : QStringLiteral("\n]\n"));
}

void PrintOut(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
}

}  // namespace pelorin::cli
