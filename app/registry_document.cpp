#include "app/registry_document.h"

#include <QList>
#include <QStringDecoder>

namespace pelorin::app {
namespace {

constexpr char kHeader[] = "Pelorin settings 1";
constexpr QLatin1StringView kIntegerPrefix("dword:");
constexpr int kIntegerDigits = 8;

QString Fold(const QString& name) { return name.toCaseFolded(); }

/// The path without the separators at its ends, which callers may give or leave out.
QString BareKeyPath(const QString& keyPath) {
  qsizetype first = 0;
  qsizetype end = keyPath.size();
  while (first < end && keyPath[first] == u'\\') ++first;
  while (end > first && keyPath[end - 1] == u'\\') --end;
  return keyPath.sliced(first, end - first);
}

/// The text between its delimiters, escaped.
QString Delimited(QChar open, const QString& text, QChar close) {
  QString line(open);
  for (const QChar c : text) {
    if (c == u'\r') {
      line += QLatin1StringView("\\r");
    } else if (c == u'\n') {
      line += QLatin1StringView("\\n");
    } else {
      if (c == u'\\' || c == close) line += u'\\';
      line += c;
    }
  }
  return line + close;
}

/// Takes an escaped text and the delimiter behind it off the front of `rest`.
std::optional<QString> TakeEscaped(QStringView& rest, QChar delimiter) {
  QString text;
  for (qsizetype at = 0; at < rest.size(); ++at) {
    QChar c = rest[at];
    if (c == delimiter) {
      rest = rest.sliced(at + 1);
      return text;
    }
    if (c == u'\\') {
      if (++at == rest.size()) return std::nullopt;
      c = rest[at];
      if (c == u'r') {
        c = u'\r';
      } else if (c == u'n') {
        c = u'\n';
      } else if (c != u'\\' && c != delimiter) {
        return std::nullopt;
      }
    }
    text += c;
  }
  return std::nullopt;
}

bool TakePrefix(QStringView& rest, QLatin1StringView prefix) {
  if (!rest.startsWith(prefix)) return false;
  rest = rest.sliced(prefix.size());
  return true;
}

}  // namespace

RegistryDocument::RegistryDocument(const QByteArray& content) {
  Key* key = nullptr;
  bool isFirst = true;
  for (QByteArray line : content.isEmpty() ? QList<QByteArray>() : content.split('\n')) {
    if (line.endsWith('\r')) line.chop(1);
    const bool isHeader = isFirst && line == kHeader;
    if (isFirst && !isHeader) isWhole_ = false;
    isFirst = false;
    if (isHeader || line.isEmpty()) continue;
    if (!TakeLine(line, key)) isWhole_ = false;
  }
}

std::optional<RegistryDocument::NamedValue> RegistryDocument::ParseValue(QStringView line) {
  if (!TakePrefix(line, QLatin1StringView("\""))) return std::nullopt;
  const std::optional<QString> name = TakeEscaped(line, u'"');
  if (!name || !TakePrefix(line, QLatin1StringView("="))) return std::nullopt;
  if (TakePrefix(line, kIntegerPrefix)) {
    bool isNumber = false;
    const std::uint32_t bits = line.toUInt(&isNumber, 16);
    // Fewer digits are what a file cut short leaves.
    if (!isNumber || line.size() != kIntegerDigits) return std::nullopt;
    return NamedValue{*name, static_cast<std::int32_t>(bits)};
  }
  if (!TakePrefix(line, QLatin1StringView("\""))) return std::nullopt;
  const std::optional<QString> text = TakeEscaped(line, u'"');
  if (!text || !line.isEmpty()) return std::nullopt;
  return NamedValue{*name, *text};
}

bool RegistryDocument::TakeLine(const QByteArray& bytes, Key*& key) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString line = decoder(bytes);
  QStringView rest(line);
  if (TakePrefix(rest, QLatin1StringView("["))) {
    key = nullptr;
    const std::optional<QString> path = TakeEscaped(rest, u']');
    if (decoder.hasError() || !path || !rest.isEmpty()) return false;
    const auto [place, isNew] = keys_.try_emplace(Fold(*path), Key{*path, {}});
    key = &place->second;
    return isNew;
  }
  const std::optional<NamedValue> value = ParseValue(line);
  if (decoder.hasError() || key == nullptr || !value) return false;
  return key->Values.insert_or_assign(Fold(value->Name), *value).second;
}

QByteArray RegistryDocument::Content() const {
  const auto format = [](const Value& content) {
    if (const auto* integer = std::get_if<std::int32_t>(&content)) {
      return kIntegerPrefix + QStringLiteral("%1").arg(static_cast<std::uint32_t>(*integer), kIntegerDigits,
                                                       16, QLatin1Char('0'));
    }
    return Delimited(u'"', std::get<QString>(content), u'"');
  };
  QString text = QString::fromLatin1(kHeader) + u'\n';
  for (const auto& [foldedPath, key] : keys_) {
    text += u'\n' + Delimited(u'[', key.Path, u']') + u'\n';
    for (const auto& [foldedName, value] : key.Values) {
      text += Delimited(u'"', value.Name, u'"') + u'=' + format(value.Content) + u'\n';
    }
  }
  return text.toUtf8();
}

template <class Kind>
std::optional<Kind> RegistryDocument::Find(const QString& keyPath, const QString& name) const {
  const auto key = keys_.find(Fold(BareKeyPath(keyPath)));
  if (key == keys_.end()) return std::nullopt;
  const auto value = key->second.Values.find(Fold(name));
  if (value == key->second.Values.end()) return std::nullopt;
  const Kind* found = std::get_if<Kind>(&value->second.Content);
  return found != nullptr ? std::optional(*found) : std::nullopt;
}

template std::optional<QString> RegistryDocument::Find(const QString&, const QString&) const;
template std::optional<std::int32_t> RegistryDocument::Find(const QString&, const QString&) const;

void RegistryDocument::Set(const QString& keyPath, const QString& name, const Value& value) {
  const QString bare = BareKeyPath(keyPath);
  Key& key = keys_.try_emplace(Fold(bare), Key{bare, {}}).first->second;
  key.Values.try_emplace(Fold(name), NamedValue{name, {}}).first->second.Content = value;
}

}  // namespace pelorin::app
