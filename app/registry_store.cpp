#include "app/registry_store.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <QStringDecoder>
#include <map>

#include "files/atomic_file.h"
#include "files/file_error.h"
#include "files/read_file.h"

namespace pelorin::app {
namespace {

constexpr char kHeader[] = "Pelorin settings 1";
constexpr QLatin1StringView kIntegerPrefix("dword:");
constexpr int kIntegerDigits = 8;
constexpr int kLockPatienceMs = 500;

using Value = std::variant<QString, std::int32_t>;

struct NamedValue {
  QString Name;
  Value Content;
};

struct Key {
  QString Path;
  std::map<QString, NamedValue> Values;  // by folded name
};

struct Document {
  std::map<QString, Key> Keys;  // by folded path
  bool Clean = true;            // every line was understood
};

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

std::optional<NamedValue> ParseValue(QStringView line) {
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

/// Takes one line into the document; `key` is the one whose values follow, null below an unreadable one.
/// False when the line has no meaning or says again what an earlier one said.
bool TakeLine(const QByteArray& bytes, Document& document, Key*& key) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString line = decoder(bytes);
  QStringView rest(line);
  if (TakePrefix(rest, QLatin1StringView("["))) {
    key = nullptr;
    const std::optional<QString> path = TakeEscaped(rest, u']');
    if (decoder.hasError() || !path || !rest.isEmpty()) return false;
    const auto [place, isNew] = document.Keys.try_emplace(Fold(*path), Key{*path, {}});
    key = &place->second;
    return isNew;
  }
  const std::optional<NamedValue> value = ParseValue(line);
  if (decoder.hasError() || key == nullptr || !value) return false;
  return key->Values.insert_or_assign(Fold(value->Name), *value).second;
}

Document Parse(const QByteArray& content) {
  Document document;
  Key* key = nullptr;
  bool isFirst = true;
  for (QByteArray line : content.isEmpty() ? QList<QByteArray>() : content.split('\n')) {
    if (line.endsWith('\r')) line.chop(1);
    const bool isHeader = isFirst && line == kHeader;
    if (isFirst && !isHeader) document.Clean = false;
    isFirst = false;
    if (isHeader || line.isEmpty()) continue;
    if (!TakeLine(line, document, key)) document.Clean = false;
  }
  return document;
}

QString FormatContent(const Value& content) {
  if (const auto* integer = std::get_if<std::int32_t>(&content)) {
    return kIntegerPrefix + QStringLiteral("%1").arg(static_cast<std::uint32_t>(*integer), kIntegerDigits, 16,
                                                     QLatin1Char('0'));
  }
  return Delimited(u'"', std::get<QString>(content), u'"');
}

QByteArray Format(const Document& document) {
  QString text = QString::fromLatin1(kHeader) + u'\n';
  for (const auto& [foldedPath, key] : document.Keys) {
    text += u'\n' + Delimited(u'[', key.Path, u']') + u'\n';
    for (const auto& [foldedName, value] : key.Values) {
      text += Delimited(u'"', value.Name, u'"') + u'=' + FormatContent(value.Content) + u'\n';
    }
  }
  return text.toUtf8();
}

QByteArray ContentOf(const QString& path) {
  return QFileInfo::exists(path) ? files::ReadFile(path) : QByteArray();
}

/// Keeps what could not be understood beside the file. The same content is kept once, however often the
/// write that should follow fails.
void KeepDamaged(const QString& path, const QByteArray& content) {
  for (int number = 1;; ++number) {
    const QString kept =
        path + QLatin1StringView(".damaged") + (number > 1 ? QString::number(number) : QString());
    if (!QFileInfo::exists(kept)) return files::ReplaceFile(kept, content);
    if (files::ReadFile(kept) == content) return;
  }
}

std::optional<Value> Read(const QString& path, const QString& keyPath, const QString& name) {
  try {
    const Document document = Parse(ContentOf(path));
    const auto key = document.Keys.find(Fold(BareKeyPath(keyPath)));
    if (key == document.Keys.end()) return std::nullopt;
    const auto value = key->second.Values.find(Fold(name));
    if (value == key->second.Values.end()) return std::nullopt;
    return value->second.Content;
  } catch (const files::FileError&) {
    return std::nullopt;
  }
}

}  // namespace

RegistryStore::RegistryStore(const QString& folder)
    : path_(QDir(folder).filePath(QStringLiteral("registry.reg"))) {}

QString RegistryStore::DefaultFolder() {
  const QString named = qEnvironmentVariable("PELORIN_CONFIG_DIR");
  if (!named.isEmpty()) return named;
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QLatin1StringView("/Quillfen");
}

RegistryStore RegistryStore::ReadOnly() const {
  RegistryStore store(*this);
  store.isReadOnly_ = true;
  return store;
}

std::optional<QString> RegistryStore::ReadString(const QString& keyPath, const QString& name) const {
  const std::optional<Value> value = Read(path_, keyPath, name);
  if (!value || !std::holds_alternative<QString>(*value)) return std::nullopt;
  return std::get<QString>(*value);
}

std::optional<std::int32_t> RegistryStore::ReadInteger(const QString& keyPath, const QString& name) const {
  const std::optional<Value> value = Read(path_, keyPath, name);
  if (!value || !std::holds_alternative<std::int32_t>(*value)) return std::nullopt;
  return std::get<std::int32_t>(*value);
}

void RegistryStore::WriteString(const QString& keyPath, const QString& name, const QString& value) const {
  Write(keyPath, name, value);
}

void RegistryStore::WriteInteger(const QString& keyPath, const QString& name, std::int32_t value) const {
  Write(keyPath, name, value);
}

void RegistryStore::Write(const QString& keyPath, const QString& name, const Value& value) const {
  if (isReadOnly_) return;
  QDir().mkpath(QFileInfo(path_).path());
  QLockFile lock(path_ + QLatin1StringView(".lock"));
  if (!lock.tryLock(kLockPatienceMs)) return;
  try {
    const QByteArray earlier = ContentOf(path_);
    Document document = Parse(earlier);
    const QString bare = BareKeyPath(keyPath);
    Key& key = document.Keys.try_emplace(Fold(bare), Key{bare, {}}).first->second;
    key.Values.try_emplace(Fold(name), NamedValue{name, {}}).first->second.Content = value;
    const QByteArray content = Format(document);
    if (content == earlier) return;
    if (!document.Clean) KeepDamaged(path_, earlier);
    files::ReplaceFile(path_, content);
  } catch (const files::FileError&) {
    // Settings are no reason to disturb the user: this value keeps what it was.
  }
}

}  // namespace pelorin::app
