#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <variant>

namespace pelorin::app {

/// What the settings file holds: key paths such as "\Software\Quillfen\Pelorin", each with named values that
/// are either a text or a 32-bit integer. Key paths and names are found whatever their case, and stay as
/// first written. In the file:
///
///     Pelorin settings 1
///
///     [Software\\Quillfen\\Pelorin]
///     "FootprintShowLevel"=dword:00000001
///     "ImagePathList"="C:\\Dunlow\\BMP\\"
///
/// UTF-8; backslash, quote, CR and LF are escaped by a backslash; integers are two's complement.
class RegistryDocument {
 public:
  using Value = std::variant<QString, std::int32_t>;

  RegistryDocument() = default;
  /// Takes what can be understood of a file's content; IsWhole() tells whether that was all of it.
  explicit RegistryDocument(const QByteArray& content);

  /// Every line had a meaning, and none said again what an earlier one had said.
  bool IsWhole() const { return isWhole_; }
  QByteArray Content() const;

  /// A text (QString) or an integer; nothing when there is no such value or it is of the other kind.
  template <class Kind>
  std::optional<Kind> Find(const QString& keyPath, const QString& name) const;

  /// The value takes the kind of what is set last.
  void Set(const QString& keyPath, const QString& name, const Value& value);

 private:
  struct NamedValue {
    QString Name;
    Value Content;
  };

  struct Key {
    QString Path;
    std::map<QString, NamedValue> Values;  ///< by folded name
  };

  static std::optional<NamedValue> ParseValue(QStringView line);
  /// `key` is the one whose values follow, null below an unreadable one. False when the line has no meaning
  /// or says again what an earlier one said.
  bool TakeLine(const QByteArray& line, Key*& key);

  std::map<QString, Key> keys_;  ///< by folded path
  bool isWhole_ = true;
};

}  // namespace pelorin::app
