#include "align/log_columns.h"

#include <QDateTime>
#include <cmath>

#include "orbit/number_text.h"
#include "swath/clock_corrections.h"

namespace pelorin::align {
namespace {

/// A field's text into an alignment; false when it is not understood.
using TakeField = bool (*)(const QString& text, LoggedAlignment& into);

struct Column {
  QLatin1StringView Name;
  enum { Text, Number } Kind;
  bool IsNeeded;
  QString (*Write)(const LoggedAlignment&);
  TakeField Take;
};

struct StartName {
  swath::StartFrom From;
  QLatin1StringView Name;
};
constexpr StartName kStarts[] = {{swath::StartFrom::Pass, QLatin1StringView("pass")},
                                 {swath::StartFrom::NameMinute, QLatin1StringView("minute")},
                                 {swath::StartFrom::NameSecond, QLatin1StringView("second")},
                                 {swath::StartFrom::Stamps, QLatin1StringView("stamps")},
                                 {swath::StartFrom::Coasts, QLatin1StringView("coasts")}};

QString WriteTime(orbit::TDateTime moment) {
  return QString::fromStdString(orbit::FormatDateTime("yyyy-mm-ddThh:nn:ss.zzzZ", moment));
}

bool TakeTime(const QString& text, orbit::TDateTime& into) {
  QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
  if (!moment.isValid()) return false;
  // A time without a sign is UTC as well.
  moment =
      moment.timeSpec() == Qt::LocalTime ? QDateTime(moment.date(), moment.time(), Qt::UTC) : moment.toUTC();
  const QDate date = moment.date();
  const QTime time = moment.time();
  if (date.year() < 1957 || date.year() > 2199) return false;
  into = orbit::MakeDateTime(date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second(),
                             time.msec());
  return true;
}

bool TakeNumber(const QString& text, double most, double& into) {
  const auto number = orbit::DecimalNumber(text.toStdString());
  if (!number || !(std::fabs(*number) <= most)) return false;
  into = *number;
  return true;
}

bool TakeCount(const QString& text, int& into) {
  constexpr int most = 1'000'000;
  const auto number = orbit::WholeNumber(text.toStdString());
  if (!number || *number < 0 || *number > most) return false;
  into = *number;
  return true;
}

QString Decimals(double number, int count) {
  const QString text = QString::number(number, 'f', count);
  return text.toDouble() == 0 ? QString::number(0.0, 'f', count) : text;
}

/// A line's end in a name would break the row.
QString InOneLine(QString text) { return text.replace(u'\n', u' ').replace(u'\r', u' '); }

/// More than any correction is made of; the rows of other programs count, too.
constexpr double kMostShifted = 10'000, kMostDrift = 100'000;

const Column kColumns[] = {
    {QLatin1StringView("picture"), Column::Text, false,
     [](const LoggedAlignment& one) { return InOneLine(one.Picture); },
     [](const QString& text, LoggedAlignment& into) {
       into.Picture = text;
       return true;
     }},
    {QLatin1StringView("satellite"), Column::Text, true,
     [](const LoggedAlignment& one) { return InOneLine(one.Satellite); },
     [](const QString& text, LoggedAlignment& into) {
       into.Satellite = text;
       return true;
     }},
    {QLatin1StringView("catalogue_number"), Column::Text, false,
     [](const LoggedAlignment& one) { return one.CatalogueNumber; },
     [](const QString& text, LoggedAlignment& into) {
       into.CatalogueNumber = text;
       return true;
     }},
    {QLatin1StringView("start_utc"), Column::Text, true,
     [](const LoggedAlignment& one) { return WriteTime(one.Start); },
     [](const QString& text, LoggedAlignment& into) { return TakeTime(text, into.Start); }},
    {QLatin1StringView("start_from"), Column::Text, false,
     [](const LoggedAlignment& one) {
       for (const StartName& start : kStarts) {
         if (start.From == one.StartIsFrom) return QString(start.Name);
       }
       return QString();
     },
     [](const QString& text, LoggedAlignment& into) {
       for (const StartName& start : kStarts) {
         if (text != start.Name) continue;
         into.StartIsFrom = start.From;
         return true;
       }
       return false;
     }},
    {QLatin1StringView("columns"), Column::Number, true,
     [](const LoggedAlignment& one) { return QString::number(one.Columns); },
     [](const QString& text, LoggedAlignment& into) {
       return TakeCount(text, into.Columns) && into.Columns > 0;
     }},
    {QLatin1StringView("rows"), Column::Number, true,
     [](const LoggedAlignment& one) { return QString::number(one.Rows); },
     [](const QString& text, LoggedAlignment& into) { return TakeCount(text, into.Rows) && into.Rows > 0; }},
    {QLatin1StringView("scanner_columns"), Column::Number, false,
     [](const LoggedAlignment& one) { return QString::number(one.ScannerColumns); },
     [](const QString& text, LoggedAlignment& into) { return TakeCount(text, into.ScannerColumns); }},
    {QLatin1StringView("clock_correction_s"), Column::Number, true,
     [](const LoggedAlignment& one) { return Decimals(one.ClockS, 3); },
     [](const QString& text, LoggedAlignment& into) {
       return TakeNumber(text, swath::kOffsetLimitS, into.ClockS);
     }},
    {QLatin1StringView("shift_columns"), Column::Number, false,
     [](const LoggedAlignment& one) { return Decimals(one.ShiftColumns, 3); },
     [](const QString& text, LoggedAlignment& into) {
       return TakeNumber(text, kMostShifted, into.ShiftColumns);
     }},
    {QLatin1StringView("roll_deg"), Column::Number, false,
     [](const LoggedAlignment& one) { return Decimals(one.Offsets.RollDeg, 3); },
     [](const QString& text, LoggedAlignment& into) {
       return TakeNumber(text, swath::kMostTurnedDeg, into.Offsets.RollDeg);
     }},
    {QLatin1StringView("pitch_deg"), Column::Number, false,
     [](const LoggedAlignment& one) { return Decimals(one.Offsets.PitchDeg, 3); },
     [](const QString& text, LoggedAlignment& into) {
       return TakeNumber(text, swath::kMostTurnedDeg, into.Offsets.PitchDeg);
     }},
    {QLatin1StringView("yaw_deg"), Column::Number, false,
     [](const LoggedAlignment& one) { return Decimals(one.Offsets.YawDeg, 3); },
     [](const QString& text, LoggedAlignment& into) {
       return TakeNumber(text, swath::kMostTurnedDeg, into.Offsets.YawDeg);
     }},
    {QLatin1StringView("drift_ppm"), Column::Number, false,
     [](const LoggedAlignment& one) { return Decimals(one.DriftPpm, 1); },
     [](const QString& text, LoggedAlignment& into) { return TakeNumber(text, kMostDrift, into.DriftPpm); }},
    {QLatin1StringView("how"), Column::Text, false,
     [](const LoggedAlignment& one) { return NameOf(one.How); },
     [](const QString& text, LoggedAlignment& into) {
       for (const FoundBy how : {FoundBy::Coasts, FoundBy::CoastsRoughly, FoundBy::Hand}) {
         if (text != NameOf(how)) continue;
         into.How = how;
         return true;
       }
       return false;
     }},
    {QLatin1StringView("chance_peaks"), Column::Number, false,
     [](const LoggedAlignment& one) {
       return one.ChancePeaks ? QString::number(*one.ChancePeaks, 'g', 3) : QString();
     },
     [](const QString& text, LoggedAlignment& into) {
       double peaks = 0;
       if (!TakeNumber(text, HUGE_VAL, peaks) || peaks < 0) return false;
       into.ChancePeaks = peaks;
       return true;
     }},
    {QLatin1StringView("accepted_utc"), Column::Text, false,
     [](const LoggedAlignment& one) { return WriteTime(one.Accepted); },
     [](const QString& text, LoggedAlignment& into) { return TakeTime(text, into.Accepted); }}};

const Column* ColumnNamed(const QString& name) {
  for (const Column& column : kColumns) {
    if (name == column.Name) return &column;
  }
  return nullptr;
}

}  // namespace

QStringList LogColumns() {
  QStringList names;
  for (const Column& column : kColumns) names.append(column.Name);
  return names;
}

QStringList LogFields(const LoggedAlignment& alignment) {
  QStringList fields;
  for (const Column& column : kColumns) fields.append(column.Write(alignment));
  return fields;
}

bool IsNumberColumn(const QString& name) {
  const Column* column = ColumnNamed(name);
  return column != nullptr && column->Kind == Column::Number;
}

bool HasNeededColumns(const QStringList& header) {
  for (const Column& column : kColumns) {
    if (column.IsNeeded && !header.contains(column.Name)) return false;
  }
  return true;
}

std::optional<LoggedAlignment> ReadLogFields(const QStringList& header, const QStringList& fields) {
  if (fields.size() > header.size()) return std::nullopt;
  LoggedAlignment alignment;
  for (const Column& column : kColumns) {
    const QString text = fields.value(header.indexOf(column.Name));
    if (text.isEmpty() ? column.IsNeeded : !column.Take(text, alignment)) return std::nullopt;
  }
  return alignment;
}

}  // namespace pelorin::align
