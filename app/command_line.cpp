#include "app/command_line.h"

#include <algorithm>
#include <iterator>

namespace pelorin::app {
namespace {

constexpr qsizetype kShortestKey = 8;  // "mmddhhnn"

int FirstWithPrefix(const QStringList& entries, const QString& key) {
  const auto match = std::find_if(entries.begin(), entries.end(),
                                  [&key](const QString& entry) { return entry.startsWith(key); });
  return match == entries.end() ? -1 : static_cast<int>(std::distance(entries.begin(), match));
}

}  // namespace

PassMatch FindPassByString(const QString& passString, const QStringList& entries, orbit::TDateTime now) {
  PassMatch match;
  match.Time = orbit::ParseTimeString(passString.toStdString(), now);
  const bool hasSeconds = passString.size() == 10 || passString.size() == 14;
  match.Key = QString::fromStdString(FormatDateTime(hasSeconds ? "mmddhhnnss" : "mmddhhnn", match.Time));
  match.Index = FirstWithPrefix(entries, match.Key);
  while (match.Index < 0 && match.Key.size() > kShortestKey) {
    match.Key.chop(1);
    match.Index = FirstWithPrefix(entries, match.Key);
  }
  return match;
}

QString NoMatchText(const QString& passString, const QString& key) {
  return QStringLiteral("Parameter ") + passString + QStringLiteral(" specified but pass string ") + key +
         QStringLiteral(
             " not found.  Note that the pass string may have been truncated in an effort to "
             "find a matching pass");
}

}  // namespace pelorin::app
