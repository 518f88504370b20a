#include "files/mapped_file.h"

#include <utility>

namespace pelorin::files {

std::optional<MappedFile> MappedFile::Open(const QString& path) {
  MappedFile mapped;
  mapped.file_ = std::make_unique<QFile>(path);
  if (!mapped.file_->open(QIODevice::ReadOnly)) return std::nullopt;
  mapped.size_ = mapped.file_->size();
  // mmap refuses an empty file; Qt warns on the way.
  if (mapped.size_ == 0) return std::nullopt;
  mapped.data_ = mapped.file_->map(0, mapped.size_);
  if (mapped.data_ == nullptr) return std::nullopt;
  return mapped;
}

}  // namespace pelorin::files
