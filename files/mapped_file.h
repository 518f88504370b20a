#pragma once

#include <QFile>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

namespace pelorin::files {

/// A whole file seen in memory, read-only. The view ends with this object; moving the object leaves
/// the view where it is. A file that is replaced while mapped keeps showing its old content.
class MappedFile {
 public:
  /// Nothing when the file is missing, empty, a folder, or cannot be mapped.
  static std::optional<MappedFile> Open(const QString& path);

  const std::uint8_t* Data() const { return data_; }
  std::int64_t Size() const { return size_; }

 private:
  MappedFile() = default;

  std::unique_ptr<QFile> file_;  ///< the mapping lives as long as this does
  const std::uint8_t* data_ = nullptr;
  std::int64_t size_ = 0;
};

}  // namespace pelorin::files
