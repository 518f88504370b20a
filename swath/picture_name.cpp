#include "swath/picture_name.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>
#include <cstddef>
#include <utility>
#include <vector>

namespace pelorin::swath {
namespace {

using orbit::TDateTime;

/// A year without which 29 February could not be read.
constexpr int kNoYear = 2000;
/// A clock may be a day off by its zone.
constexpr double kMostDaysAhead = 1;

/// A way to write a moment: a regular expression with the words of kWords in braces.
struct TimePattern {
  const char* Pattern;
  bool OfFilesOnly = false;
};

constexpr TimePattern kTimePatterns[] = {
    // 05211525V.png, 0101000959-C.jpg: no other way begins with a month.
    {R"(^{mm}{dd}{hh}{nn}(?:{ss}(?!\d))?)", true},
    // gqrx_20220101_143000_137912500.wav: this recorder goes by UTC.
    {R"(^(?<utc>gqrx)_{yyyy}{mm}{dd}_{hh}{nn}{ss}(?!\d))"},
    // 2024-03-10T00:22:05Z, 2024-03-10_00-22_noaa_apt, 2024-04-09_00-18-23
    {R"({yyyy}(?<s>[-_.]){mm}\k<s>{dd}[-_ T.]{hh}(?<t>[-_:.h]?){nn}(?:\k<t>{ss})?{end})"},
    // NOAA-18-20240104-112544.png, METEOR-M2-4_20250412_193512, 20240310T0022Z
    {R"({yyyy}{mm}{dd}[-_ T.]{hh}(?<t>[-_:.]?){nn}(?:\k<t>{ss})?{end})"},
    // 202401041125.png, 20240104112544.png
    {R"({yyyy}{mm}{dd}{hh}{nn}{ss}?{end})"},
};

/// What the words mean. A run of digits counts as a whole: a part of a longer number is no date.
constexpr std::pair<const char*, const char*> kWords[] = {
    {"{yyyy}", R"((?<!\d)(?<year>19[7-9]\d|20\d\d))"},
    {"{mm}", R"((?<month>\d\d))"},
    {"{dd}", R"((?<day>\d\d))"},
    {"{hh}", R"((?<hour>\d\d))"},
    {"{nn}", R"((?<minute>\d\d))"},
    {"{ss}", R"((?<second>[0-5]\d))"},
    {"{end}", R"((?!\d)(?:[-_ ]?(?<utc>Z|UTC|GMT)(?![A-Za-z]))?)"},
};

/// A satellite's names, and the one that all of them are read as: %1, %2 are the pattern's groups.
struct SatellitePattern {
  const char* Pattern;
  const char* Name;
};

constexpr SatellitePattern kSatellitePatterns[] = {
    {R"(NOAA[-_ ]?([6-9]|1\d|2[01])(?!\d))", "NOAA %1"},
    {R"(METEOR[-_ ]?M(?:[-_ ]?N)?[-_ ]?2[-_ .](\d)(?!\d))", "METEOR-M2 %1"},
    // Decoders that only know the family write "m2-x".
    {R"(METEOR[-_ ]?M(?:[-_ ]?N)?[-_ ]?2(?!\d|[-_ ]?X))", "METEOR-M 2"},
    {R"(METEOR[-_ ]?M(?:[-_ ]?1)?(?![-_ ]?[\dN]|[A-Z]))", "METEOR-M 1"},
    {R"(METEOR[-_ ]([23])[-_ ](\d{1,2})(?!\d))", "METEOR %1-%2"},
    {R"(METOP[-_ ]?([ABC])(?![A-Z\d]))", "METOP-%1"},
    {R"((?:FENGYUN|FY)[-_ ]?(\d)[-_ ]?([A-H])(?![A-Z\d]))", "FENGYUN %1%2"},
};

/// A frequency, in Hertz times `MHz`.
struct FrequencyPattern {
  const char* Pattern;
  double MHz;
};

constexpr FrequencyPattern kFrequencyPatterns[] = {
    {R"(^gqrx_\d{8}_\d{6}_(\d{8,10})(?!\d))", 1e-6},
    {R"((?<![\d.])(\d{8,10})[-_ ]?Hz(?![a-z]))", 1e-6},
    {R"((?<![\d.])(\d{5,7}(?:\.\d+)?)[-_ ]?kHz(?![a-z]))", 1e-3},
    {R"((?<![\d.])(\d{2,4}(?:\.\d+)?)[-_ ]?MHz(?![a-z]))", 1},
};

/// Patterns are compiled once; what stands beside them is their row's.
template <class Row>
struct Compiled {
  QRegularExpression Expression;
  const Row* Of;
};

template <class Row, std::size_t count>
std::vector<Compiled<Row>> Compile(const Row (&rows)[count], QRegularExpression::PatternOptions options) {
  std::vector<Compiled<Row>> compiled;
  for (const Row& row : rows) {
    QString pattern = QString::fromLatin1(row.Pattern);
    for (const auto& [word, meaning] : kWords) {
      pattern.replace(QLatin1StringView(word), QLatin1StringView(meaning));
    }
    compiled.push_back({QRegularExpression(pattern, options), &row});
  }
  return compiled;
}

bool IsDate(int year, int month, int day) {
  return month >= 1 && month <= 12 && day >= 1 && day <= orbit::DaysInMonth(year, month);
}

/// Whether the match is a moment; then it is taken over.
bool TakeTime(const QRegularExpressionMatch& match, PictureName& name) {
  const auto number = [&match](const char* group) {
    return match.captured(QLatin1StringView(group)).toInt();
  };
  const bool hasYear = match.regularExpression().namedCaptureGroups().contains(QStringLiteral("year"));
  const int year = hasYear ? number("year") : kNoYear;
  const int hour = number("hour"), minute = number("minute");
  if (!IsDate(year, number("month"), number("day")) || hour > 23 || minute > 59) return false;
  name.Start = orbit::MakeDateTime(year, number("month"), number("day"), hour, minute, number("second"));
  name.YearIsKnown = hasYear;
  name.SecondIsKnown = !match.captured(QStringLiteral("second")).isEmpty();
  name.IsUtc = hasYear && !match.captured(QStringLiteral("utc")).isEmpty();
  return true;
}

void FindTime(const QString& text, bool isFileName, PictureName& name) {
  static const auto patterns = Compile(kTimePatterns, QRegularExpression::NoPatternOption);
  for (const auto& pattern : patterns) {
    if (pattern.Of->OfFilesOnly && !isFileName) continue;
    for (auto matches = pattern.Expression.globalMatch(text); matches.hasNext();) {
      if (TakeTime(matches.next(), name)) return;
    }
  }
}

std::optional<double> FrequencyIn(const QString& text) {
  static const auto patterns = Compile(kFrequencyPatterns, QRegularExpression::CaseInsensitiveOption);
  for (const auto& pattern : patterns) {
    const QRegularExpressionMatch match = pattern.Expression.match(text);
    if (match.hasMatch()) return match.captured(1).toDouble() * pattern.Of->MHz;
  }
  return std::nullopt;
}

/// A word of a name that is set off by a line: "_map" in "rgb_map_2.png", but not in "roadmap.png".
bool HasWord(const QString& fileName, QLatin1StringView word) {
  const QString stem = QFileInfo(fileName).completeBaseName();
  const QRegularExpression wanted(QStringLiteral("[-_ ]%1(?![A-Za-z0-9])").arg(word),
                                  QRegularExpression::CaseInsensitiveOption);
  return wanted.match(stem).hasMatch();
}

/// The name, that of its folder, and that of the folder's.
QStringList NamesAlong(const QString& path) {
  constexpr qsizetype most = 3;
  const QStringList parts = QDir::cleanPath(path).split(u'/', Qt::SkipEmptyParts);
  QStringList names;
  for (qsizetype i = parts.size() - 1; i >= 0 && names.size() < most; --i) names.append(parts.at(i));
  return names;
}

}  // namespace

bool HasPictureSuffix(const QString& path) {
  static const QStringList suffixes = QStringLiteral("png jpg jpeg tif tiff bmp").split(u' ');
  return suffixes.contains(QFileInfo(path).suffix().toLower());
}

PictureName ReadPictureName(const QString& path) {
  PictureName name;
  const QStringList names = NamesAlong(path);
  for (const QString& text : names) {
    const bool isOwn = &text == &names.first();
    if (!name.Start) FindTime(text, isOwn, name);
    if (name.Satellite.isEmpty()) name.Satellite = CommonSatelliteName(text);
    if (!name.FrequencyMHz) name.FrequencyMHz = FrequencyIn(text);
    if (!isOwn) continue;
    name.IsProjected = HasWord(text, QLatin1StringView("map"));
    name.IsCorrected = HasWord(text, QLatin1StringView("corrected"));
  }
  return name;
}

QString CommonSatelliteName(const QString& name) {
  static const auto patterns = Compile(kSatellitePatterns, QRegularExpression::NoPatternOption);
  const QString upper = name.toUpper();
  for (const auto& pattern : patterns) {
    const QRegularExpressionMatch match = pattern.Expression.match(upper);
    if (!match.hasMatch()) continue;
    QString common = QString::fromLatin1(pattern.Of->Name);
    for (int group = 1; group <= match.lastCapturedIndex(); ++group)
      common = common.arg(match.captured(group));
    return common;
  }
  return QString();
}

std::optional<TDateTime> InYear(TDateTime moment, int year) {
  const orbit::DateTimeFields at = orbit::TakeApart(moment);
  if (!IsDate(year, at.Month, at.Day)) return std::nullopt;
  return orbit::MakeDateTime(year, at.Month, at.Day, at.Hour, at.Minute, at.Second);
}

YearOfFile YearByFile(const PictureName& name, const QDateTime& lastChange) {
  YearOfFile result{lastChange.date().year(), false};
  if (!name.Start) return result;
  const auto moment = InYear(*name.Start, result.Year);
  const QDateTime utc = lastChange.toUTC();
  const TDateTime changed = orbit::MakeDateTime(utc.date().year(), utc.date().month(), utc.date().day(),
                                                utc.time().hour(), utc.time().minute());
  result.IsPossible = moment && moment->Days <= changed.Days + kMostDaysAhead;
  return result;
}

}  // namespace pelorin::swath
