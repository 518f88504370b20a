#include "align/alignment_table.h"

#include <algorithm>
#include <optional>

#include "align/alignment_medians.h"

namespace pelorin::align {
namespace {

struct Column {
  QString Heading;
  TableCell (*Of)(const LoggedAlignment&);
};

QString MomentText(const char* pattern, orbit::TDateTime moment) {
  return QString::fromStdString(orbit::FormatDateTime(pattern, moment));
}

TableCell Number(double value, int decimals) { return {QString::number(value, 'f', decimals), value, true}; }

TableCell Text(const QString& text) { return {text, text, false}; }

const std::vector<Column>& Columns() {
  static const std::vector<Column> columns{
      {QStringLiteral("Begin (UTC)"),
       [](const LoggedAlignment& one) {
         return TableCell{MomentText("yyyy-mm-dd hh:nn:ss", one.Start), one.Start.Days, false};
       }},
      {QStringLiteral("Satellite"), [](const LoggedAlignment& one) { return Text(one.Satellite); }},
      {QStringLiteral("Clock, s"), [](const LoggedAlignment& one) { return Number(one.ClockS, 2); }},
      {QStringLiteral("Roll, °"), [](const LoggedAlignment& one) { return Number(one.Offsets.RollDeg, 2); }},
      {QStringLiteral("Pitch, °"),
       [](const LoggedAlignment& one) { return Number(one.Offsets.PitchDeg, 2); }},
      {QStringLiteral("Yaw, °"), [](const LoggedAlignment& one) { return Number(one.Offsets.YawDeg, 2); }},
      {QStringLiteral("Shift, columns"),
       [](const LoggedAlignment& one) { return Number(one.ShiftColumns, 1); }},
      {QStringLiteral("Drift, ppm"), [](const LoggedAlignment& one) { return Number(one.DriftPpm, 0); }},
      {QStringLiteral("Found"), [](const LoggedAlignment& one) { return Text(NameOf(one.How)); }},
      {QStringLiteral("By chance"),
       [](const LoggedAlignment& one) {
         return one.ChancePeaks ? TableCell{QString::number(*one.ChancePeaks, 'g', 2), *one.ChancePeaks, true}
                                : TableCell{QString(), -1.0, true};
       }},
      {QStringLiteral("Picture"), [](const LoggedAlignment& one) { return Text(one.Picture); }},
      {QStringLiteral("Accepted"), [](const LoggedAlignment& one) {
         const bool isTold = one.Accepted.Days != 0;
         return TableCell{isTold ? MomentText("yyyy-mm-dd hh:nn", one.Accepted) : QString(),
                          one.Accepted.Days, false};
       }}};
  return columns;
}

}  // namespace

QStringList TableHeadings() {
  QStringList headings;
  for (const Column& column : Columns()) headings.append(column.Heading);
  return headings;
}

std::vector<TableCell> TableRow(const LoggedAlignment& alignment) {
  std::vector<TableCell> row;
  for (const Column& column : Columns()) row.push_back(column.Of(alignment));
  return row;
}

QString PointTip(const LoggedAlignment& alignment) {
  QStringList lines;
  for (const Column& column : Columns()) {
    const QString text = column.Of(alignment).Text;
    if (!text.isEmpty()) lines.append(column.Heading + QStringLiteral(": ") + text);
  }
  return lines.join(u'\n');
}

std::vector<LoggedAlignment> LatestFirst(std::span<const LoggedAlignment> log, const QString& satellite) {
  std::vector<LoggedAlignment> rows;
  std::ranges::copy_if(log, std::back_inserter(rows), [&](const LoggedAlignment& one) {
    return satellite.isEmpty() || one.CatalogueNumber == satellite ||
           one.Satellite.compare(satellite, Qt::CaseInsensitive) == 0;
  });
  std::ranges::stable_sort(rows, std::ranges::greater(),
                           [](const LoggedAlignment& one) { return one.Start.Days; });
  return rows;
}

QStringList MedianLines(std::span<const LoggedAlignment> log) {
  const std::vector<LoggedAlignment> rows = LatestFirst(log, {});
  // The picture to come, as it were: none of those that are there.
  const auto next = [](LoggedAlignment last) {
    last.Columns = 0;
    return last;
  };
  QStringList lines;
  const auto lastByClock =
      std::ranges::find(rows, swath::StartFrom::NameSecond, &LoggedAlignment::StartIsFrom);
  if (lastByClock != rows.end()) {
    if (const auto clock = MedianClock(rows, next(*lastByClock))) {
      lines.append(QStringLiteral("Station's clock: %1, by the last %2")
                       .arg(SecondsText(clock->OffsetS))
                       .arg(clock->Of.size()));
    }
  }
  std::vector<LoggedAlignment> told;
  for (const LoggedAlignment& one : rows) {
    const bool isTold = std::ranges::any_of(told, [&](const LoggedAlignment& other) {
      return IsSameSatellite(one, other) && one.ScannerColumns == other.ScannerColumns;
    });
    if (isTold) continue;
    told.push_back(one);
    const auto attitude = MedianAttitude(rows, next(one));
    if (!attitude) continue;
    lines.append(QStringLiteral("%1, %2 columns: roll %3, yaw %4, by %5 of the season of %6")
                     .arg(one.Satellite)
                     .arg(one.ScannerColumns)
                     .arg(AngleText(attitude->RollDeg), AngleText(attitude->YawDeg))
                     .arg(attitude->Of.size())
                     .arg(MomentText("mmm yyyy", one.Start)));
  }
  return lines;
}

}  // namespace pelorin::align
