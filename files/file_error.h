#pragma once

#include <QString>
#include <stdexcept>

namespace pelorin::files {

/// A file could not be read or written. The text names the file and the system's reason, for
/// example "Cannot write /home/x/Result.jpg: Permission denied", and is fit to be shown to the user;
/// what() is the same text in UTF-8.
class FileError : public std::runtime_error {
 public:
  explicit FileError(const QString& text) : std::runtime_error(text.toStdString()) {}

  QString Text() const { return QString::fromUtf8(what()); }
};

}  // namespace pelorin::files
