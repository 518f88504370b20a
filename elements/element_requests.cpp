#include "elements/element_requests.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>

#include "files/file_error.h"
#include "files/text_file.h"
#include "orbit/date_time.h"

namespace pelorin::elements {
namespace {

/// Lines of the file begin with a time of this length and a blank.
constexpr qsizetype kTimeLength = 20;

/// Whether a line tells of less than two hours ago. A time to come is the work of a clock that was wrong.
bool IsRecentRequest(const QString& line, orbit::TDateTime now) {
  if (line.size() <= kTimeLength || line[kTimeLength] != u' ') return false;
  const QDateTime asked = QDateTime::fromString(line.left(kTimeLength), Qt::ISODate);
  if (!asked.isValid()) return false;
  const QDate date = asked.date();
  const QTime time = asked.time();
  const double days = now.Days - orbit::MakeDateTime(date.year(), date.month(), date.day(), time.hour(),
                                                     time.minute(), time.second())
                                     .Days;
  constexpr double kSecond = 1.0 / orbit::kSecondsPerDay;
  return days >= -kSecond && days < kHoursBetweenRequests / 24;
}

QStringList RecentRequests(const QString& file, orbit::TDateTime now) {
  QStringList recent;
  try {
    for (const QString& line : files::ReadLines(file)) {
      if (IsRecentRequest(line, now)) recent.append(line);
    }
  } catch (const files::FileError&) {
    // There is no such file before the first update.
  }
  return recent;
}

bool IsFor(const QString& line, const QString& address) {
  return QStringView(line).mid(kTimeLength + 1) == address;
}

}  // namespace

bool ElementRequests::AskedRecently(const QString& address, orbit::TDateTime now) const {
  const QStringList recent = RecentRequests(file_, now);
  return std::any_of(recent.begin(), recent.end(),
                     [&address](const QString& line) { return IsFor(line, address); });
}

QString ElementRequests::Remember(const QString& address, orbit::TDateTime now) const {
  return Exchange(address,
                  QString::fromStdString(FormatDateTime("yyyy-mm-ddThh:nn:ssZ", now)) + u' ' + address, now);
}

void ElementRequests::TakeBack(const QString& address, const QString& earlierLine,
                               orbit::TDateTime now) const {
  Exchange(address, earlierLine, now);
}

QString ElementRequests::Exchange(const QString& address, const QString& line, orbit::TDateTime now) const {
  QStringList lines = RecentRequests(file_, now);
  QString earlierLine;
  lines.removeIf([&](const QString& candidate) {
    if (!IsFor(candidate, address)) return false;
    earlierLine = candidate;
    return true;
  });
  if (!line.isEmpty()) lines.append(line);
  QDir().mkpath(QFileInfo(file_).path());
  files::WriteLines(file_, lines);
  return earlierLine;
}

}  // namespace pelorin::elements
