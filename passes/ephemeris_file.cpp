#include "passes/ephemeris_file.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "files/atomic_file.h"
#include "files/csv.h"
#include "files/text_file.h"
#include "passes/pass_table.h"

namespace pelorin::passes {
namespace {

constexpr qsizetype kLongestContentLine = 75;
/// Passes of a satellite that are listed lie further apart, and newer elements move one by less.
constexpr double kIdentifierStepsPerDay = 144;

QByteArray Stamp(const char* pattern, orbit::TDateTime moment) {
  return QByteArray::fromStdString(FormatDateTime(pattern, moment));
}

/// A text of a calendar: what would end it is escaped.
QByteArray CalendarText(QString text) {
  text.replace(u'\\', QStringLiteral("\\\\"));
  text.replace(u';', QStringLiteral("\\;"));
  text.replace(u',', QStringLiteral("\\,"));
  text.replace(u'\n', QStringLiteral("\\n"));
  return text.toUtf8();
}

QString Degrees(double degrees) { return QString::number(std::lround(degrees)) + u'°'; }

QString Clock(orbit::TDateTime moment) { return QString::fromLatin1(Stamp("hh:nn:ss", moment)); }

QByteArray Identifier(const PassDetails& pass, const QString& station) {
  const orbit::TDateTime about{std::round(pass.Culmination.Days * kIdentifierStepsPerDay) /
                               kIdentifierStepsPerDay};
  QString place = station;
  place.remove(u'°').remove(u',').replace(u' ', u'-');
  return CalendarText(pass.CatalogueNumber + u'-' + QString::fromLatin1(Stamp("yyyymmddThhnnZ", about)) +
                      u'-' + place + QStringLiteral("@pelorin"));
}

QString Description(const PassDetails& pass, const QString& station) {
  return QStringLiteral(
             "Rises %1 UTC, azimuth %2\nHighest %3 UTC, azimuth %4, elevation %5\nSets %6 UTC, azimuth %7\n"
             "Seen from %8")
      .arg(Clock(pass.Rise), Degrees(pass.RiseAzimuthDeg), Clock(pass.Culmination),
           Degrees(pass.CulminationAzimuthDeg), Degrees(pass.MaxElevationDeg), Clock(pass.Set),
           Degrees(pass.SetAzimuthDeg), station);
}

std::vector<PassDetails> InOrderOfRise(std::vector<PassDetails> passes) {
  std::stable_sort(passes.begin(), passes.end(),
                   [](const PassDetails& a, const PassDetails& b) { return a.Rise < b.Rise; });
  return passes;
}

bool HasExtension(const QString& path, const char* extension) {
  return QFileInfo(path).suffix().compare(QLatin1String(extension), Qt::CaseInsensitive) == 0;
}

}  // namespace

bool IsCalendarFile(const QString& path) { return HasExtension(path, "ics"); }

void SaveEphemeris(const QString& path, const EphemerisOutput& report) {
  if (IsCalendarFile(path)) {
    files::ReplaceFile(path, EphemerisCalendar(report));
  } else if (HasExtension(path, "csv")) {
    files::ReplaceFile(path, EphemerisCsv(report.Passes));
  } else {
    files::WriteLines(path, report.Lines);
  }
}

QByteArray EphemerisCsv(std::vector<PassDetails> passes) {
  QString content = PassColumns().join(u',') + QStringLiteral("\r\n");
  for (const PassDetails& pass : InOrderOfRise(std::move(passes))) {
    QStringList fields;
    for (const PassCell& cell : PassRow(pass)) fields.append(files::CsvField(cell.Text));
    content += fields.join(u',') + QStringLiteral("\r\n");
  }
  return content.toUtf8();
}

QByteArray FoldedLine(const QByteArray& line) {
  QByteArray folded;
  qsizetype start = 0;
  qsizetype room = kLongestContentLine;
  while (line.size() - start > room) {
    qsizetype end = start + room;
    // Not within a character: its second and later bytes are 10xxxxxx.
    while ((static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U) --end;
    folded += line.sliced(start, end - start) + "\r\n ";
    start = end;
    room = kLongestContentLine - 1;
  }
  return folded + line.sliced(start) + "\r\n";
}

QByteArray EphemerisCalendar(const EphemerisOutput& report) {
  constexpr const char* second = "yyyymmddThhnnssZ";
  QByteArray content = FoldedLine("BEGIN:VCALENDAR") + FoldedLine("VERSION:2.0") +
                       FoldedLine("PRODID:-//Quillfen//Pelorin " PELORIN_VERSION "//EN");
  for (const PassDetails& pass : InOrderOfRise(report.Passes)) {
    const QString summary =
        QStringLiteral("%1, %2 %3")
            .arg(pass.Satellite, Degrees(pass.MaxElevationDeg),
                 pass.SouthBound ? QStringLiteral("southbound") : QStringLiteral("northbound"));
    content += FoldedLine("BEGIN:VEVENT") + FoldedLine("UID:" + Identifier(pass, report.Station)) +
               FoldedLine("DTSTAMP:" + Stamp(second, report.Saved)) +
               FoldedLine("DTSTART:" + Stamp(second, pass.Rise)) +
               FoldedLine("DTEND:" + Stamp(second, pass.Set)) +
               FoldedLine("SUMMARY:" + CalendarText(summary)) +
               FoldedLine("DESCRIPTION:" + CalendarText(Description(pass, report.Station))) +
               // Nobody is busy because a satellite is in sight.
               FoldedLine("TRANSP:TRANSPARENT") + FoldedLine("END:VEVENT");
  }
  return content + FoldedLine("END:VCALENDAR");
}

}  // namespace pelorin::passes
