#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <variant>

namespace pelorin::app {

/// The user's settings: key paths such as "\Software\Quillfen\Pelorin", each with named values that are
/// either a text or a 32-bit integer. Key paths and names are found whatever their case, and stay as first
/// written.
///
/// All of it is one UTF-8 file, "registry.reg", which several programs may share:
///
///     Pelorin settings 1
///
///     [Software\\Quillfen\\Pelorin]
///     "FootprintShowLevel"=dword:00000001
///     "ImagePathList"="C:\\Dunlow\\BMP\\"
///
/// Backslash, quote, CR and LF are escaped by a backslash; integers are two's complement. Nothing is kept in
/// memory: every call reads the file, and every write replaces it as a whole under a lock.
///
/// No call fails aloud: what cannot be read is absent, what cannot be written is lost. Of a damaged file the
/// readable values count, and before it is written over it is kept as "registry.reg.damaged"
/// ("registry.reg.damaged2" and so on when there is one already).
class RegistryStore {
 public:
  /// The folder need not exist; the first write makes it.
  explicit RegistryStore(const QString& folder = DefaultFolder());

  /// Environment variable PELORIN_CONFIG_DIR, or else "Quillfen" in the user's configuration folder.
  static QString DefaultFolder();

  /// The same store for one who only looks: writes are ignored.
  RegistryStore ReadOnly() const;

  /// Nothing when there is no such value or it is of the other kind.
  std::optional<QString> ReadString(const QString& keyPath, const QString& name) const;
  std::optional<std::int32_t> ReadInteger(const QString& keyPath, const QString& name) const;

  /// The value takes the kind of the last write.
  void WriteString(const QString& keyPath, const QString& name, const QString& value) const;
  void WriteInteger(const QString& keyPath, const QString& name, std::int32_t value) const;

 private:
  void Write(const QString& keyPath, const QString& name,
             const std::variant<QString, std::int32_t>& value) const;

  QString path_;
  bool isReadOnly_ = false;
};

}  // namespace pelorin::app
