#include <QFileInfo>
#include <algorithm>

#include "align/alignment_log.h"
#include "align/alignment_table.h"
#include "align/log_columns.h"
#include "app/program_paths.h"
#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"

namespace pelorin::cli {
namespace {

void PrintTable(const std::vector<align::LoggedAlignment>& rows, bool json) {
  const QStringList columns = align::LogColumns();
  Table table(columns, json);
  for (const align::LoggedAlignment& row : rows) {
    std::vector<Cell> cells;
    const QStringList fields = align::LogFields(row);
    for (qsizetype at = 0; at < columns.size(); ++at) {
      const bool isNumber = align::IsNumberColumn(columns[at]) && !fields[at].isEmpty();
      cells.push_back(isNumber ? Cell::WrittenNumber(fields[at]) : Cell(fields[at]));
    }
    table.Add(cells);
  }
  table.Finish();
}

/// In columns of equal width, numbers at the right.
void PrintText(const std::vector<align::LoggedAlignment>& rows) {
  std::vector<std::vector<align::TableCell>> lines;
  std::vector<align::TableCell> headings;
  for (const QString& heading : align::TableHeadings()) headings.push_back({heading, {}, false});
  lines.push_back(headings);
  for (const align::LoggedAlignment& row : rows) lines.push_back(align::TableRow(row));
  for (std::size_t column = 0; column < headings.size(); ++column) {
    const bool isNumber = lines.back()[column].IsNumber;
    qsizetype width = 0;
    for (const auto& line : lines) width = std::max(width, line[column].Text.size());
    for (auto& line : lines) {
      QString& text = line[column].Text;
      text = isNumber ? text.rightJustified(width) : text.leftJustified(width);
    }
  }
  for (const auto& line : lines) {
    QStringList texts;
    for (const align::TableCell& cell : line) texts.append(cell.Text);
    QString text = texts.join(QStringLiteral("  "));
    while (text.endsWith(u' ')) text.chop(1);
    PrintOut(text + u'\n');
  }
}

}  // namespace

void RunAlignments(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("alignments"),
      QStringLiteral(
          "The pictures that were aligned, and what was found: the latest first. What a new picture "
          "would be offered by them, the medians of the station's clock and of each satellite's "
          "roll and yaw, stands below the text, and beside the other formats on standard error."),
      {{QStringLiteral("satellite"), QStringLiteral("NAME"),
        QStringLiteral("Only those of this satellite, by name or catalogue number.")},
       {QStringLiteral("format"), QStringLiteral("csv|text|json"), QStringLiteral("Default: csv.")}},
      list);
  const QString format = arguments.Choice(
      QStringLiteral("format"), {QStringLiteral("csv"), QStringLiteral("text"), QStringLiteral("json")});
  const QString satellite = arguments.Text(QStringLiteral("satellite"));
  const align::AlignmentLog log(app::AlignmentLogFile());
  const std::vector<align::LoggedAlignment> rows = align::LatestFirst(log.Rows(), satellite);
  if (!log.WasRead()) throw Failure(log.Note());
  if (!log.Note().isEmpty()) Say(log.Note());
  if (rows.empty() && !satellite.isEmpty()) {
    throw Failure(QStringLiteral("No picture of %1 was aligned yet, by %2").arg(satellite, log.Path()));
  }
  if (rows.empty()) Say(QStringLiteral("No picture was aligned yet: %1 is empty").arg(log.Path()));
  const bool isText = format == QStringLiteral("text");
  isText ? PrintText(rows) : PrintTable(rows, format == QStringLiteral("json"));
  const QStringList medians = align::MedianLines(rows);
  if (isText && !medians.isEmpty()) PrintOut(u'\n' + medians.join(u'\n') + u'\n');
  for (const QString& median : isText ? QStringList() : medians) Say(median);
}

}  // namespace pelorin::cli
