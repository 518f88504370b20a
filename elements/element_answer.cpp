#include "elements/element_answer.h"

#include <QHash>
#include <QStringList>
#include <optional>

#include "elements/element_data.h"
#include "files/text_file.h"

namespace pelorin::elements {
namespace {

enum Status { kOk = 200, kForbidden = 403, kNotFound = 404, kGone = 410, kTooMany = 429, kServerFault = 500 };

/// What a page has between these is nothing to be read.
constexpr const char16_t* kUnreadParts[] = {u"script", u"style", u"head"};

/// Where an element begins or ends that stands on a line of its own.
bool BreaksLine(QStringView tag) {
  constexpr const char16_t* inner[] = {u"a",    u"b",    u"i",  u"em",    u"strong",
                                       u"span", u"code", u"tt", u"small", u"font"};
  if (tag.startsWith(u'/')) tag = tag.sliced(1);
  qsizetype length = 0;
  while (length < tag.size() && tag[length].isLetterOrNumber()) ++length;
  for (const char16_t* name : inner) {
    if (tag.first(length).compare(QStringView(name), Qt::CaseInsensitive) == 0) return false;
  }
  return true;
}

/// The character that "&name;" stands for, if it is one that pages of text use.
std::optional<QString> EntityOf(const QString& name) {
  static const QHash<QString, QString> named{
      {QStringLiteral("amp"), QStringLiteral("&")},  {QStringLiteral("lt"), QStringLiteral("<")},
      {QStringLiteral("gt"), QStringLiteral(">")},   {QStringLiteral("quot"), QStringLiteral("\"")},
      {QStringLiteral("apos"), QStringLiteral("'")}, {QStringLiteral("nbsp"), QStringLiteral(" ")}};
  if (const auto known = named.constFind(name); known != named.constEnd()) return *known;
  if (!name.startsWith(u'#')) return std::nullopt;
  bool isNumber = false;
  const bool isHex = name.size() > 1 && name[1].toLower() == u'x';
  const uint code = isHex ? name.mid(2).toUInt(&isNumber, 16) : name.mid(1).toUInt(&isNumber);
  if (!isNumber || code < ' ' || code > 0xFFFF) return std::nullopt;
  return QString(QChar(static_cast<char16_t>(code)));
}

/// Where the text of a page goes on behind an element whose inside is not read; at `at` if it is no such one.
qsizetype AfterUnreadPart(const QString& page, qsizetype at) {
  for (const char16_t* name : kUnreadParts) {
    const QString part = QString::fromUtf16(name);
    const QString beginning = page.mid(at + 1, part.size() + 1);
    const bool isThis = beginning.startsWith(part, Qt::CaseInsensitive) &&
                        (beginning.size() == part.size() || !beginning.back().isLetterOrNumber());
    if (!isThis) continue;
    const qsizetype end = page.indexOf(QStringLiteral("</") + part, at, Qt::CaseInsensitive);
    return end < 0 ? page.size() : end;
  }
  return at;
}

QString WithoutMarkup(const QString& page) {
  QString text;
  for (qsizetype at = 0; at < page.size(); ++at) {
    if (page[at] == u'<') {
      at = AfterUnreadPart(page, at);
      const qsizetype end = page.indexOf(u'>', at);
      if (end < 0) break;
      if (BreaksLine(QStringView(page).sliced(at + 1, end - at - 1))) text += u'\r';
      at = end;
      continue;
    }
    const qsizetype end = page[at] == u'&' ? page.indexOf(u';', at) : -1;
    constexpr qsizetype longestEntity = 8;
    const auto character =
        end > at && end - at <= longestEntity ? EntityOf(page.mid(at + 1, end - at - 1)) : std::nullopt;
    text += character.value_or(QString(page[at]));
    if (character) at = end;
  }
  return text;
}

}  // namespace

bool SaysNothingNew(const ElementAnswer& answer) {
  if (answer.Status != kForbidden) return false;
  const QByteArray text = answer.Body.simplified().toLower();
  return text.contains("not updated since") || text.contains("not been updated since");
}

bool IsUnknownThere(const ElementAnswer& answer) {
  if (answer.Status == kNotFound || answer.Status == kGone) return true;
  const QByteArray beginning = answer.Body.left(100).trimmed().toLower();
  return HasData(answer) &&
         (beginning.startsWith("invalid query") || beginning.startsWith("no gp data found"));
}

bool HasData(const ElementAnswer& answer) { return answer.Status == kOk && answer.Problem.isEmpty(); }

bool EndsRun(const ElementAnswer& answer) {
  return answer.Status == 0 || (answer.Status == kForbidden && !SaysNothingNew(answer)) ||
         answer.Status == kTooMany || answer.Status >= kServerFault;
}

QString AnswerText(const QByteArray& body) {
  const QString text = files::DecodeText(SplitLines(body).join('\r'));
  if (!IsWebPage(body)) return text;
  QStringList lines;
  for (const QString& line : WithoutMarkup(text).split(u'\r')) {
    if (const QString shown = line.simplified(); !shown.isEmpty()) lines.append(shown);
  }
  return lines.join(u'\r');
}

}  // namespace pelorin::elements
