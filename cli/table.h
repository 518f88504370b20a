#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace pelorin::cli {

/// A value of a table: a text, or a number with its decimals.
class Cell {
 public:
  Cell(const QString& text) : text_(text) {}  // NOLINT(google-explicit-constructor)
  Cell(const std::string& text)
      : text_(QString::fromStdString(text)) {}                       // NOLINT(google-explicit-constructor)
  Cell(int number) : text_(QString::number(number)), bare_(true) {}  // NOLINT(google-explicit-constructor)
  /// Raises Failure for a number that is none: NaN never reaches a file.
  Cell(double number, int decimals);
  /// A number that is text already.
  static Cell WrittenNumber(const QString& text);
  /// true and false in JSON, 1 and 0 in CSV.
  static Cell Flag(bool flag);

  QString Csv() const;
  QString Json() const;

 private:
  QString text_;
  QString json_;
  bool bare_ = false;  // written without quotes
};

/// Rows on standard output, as CSV with a header line or as a JSON array of objects.
class Table {
 public:
  Table(const QStringList& columns, bool json);
  void Add(const std::vector<Cell>& row);
  /// Ends a JSON array; call it once, after the last row.
  void Finish();

 private:
  QStringList columns_;
  bool json_;
  bool first_ = true;
};

/// Text to standard output.
void PrintOut(const QString& text);

}  // namespace pelorin::cli
