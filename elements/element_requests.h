#pragma once

#include <QString>

#include "orbit/date_time.h"

namespace pelorin::elements {

/// The service computes new sets every two hours; who asks more often is refused, and in the end locked out.
inline constexpr double kHoursBetweenRequests = 2;

/// When an element service was last asked for an address. Kept in a small text file, so that it outlasts the
/// program: a line an address, "yyyy-mm-ddThh:nn:ssZ address". What cannot be read there counts as never
/// asked.
class ElementRequests {
 public:
  /// Neither file nor folder need exist.
  explicit ElementRequests(const QString& file) : file_(file) {}

  const QString& File() const { return file_; }

  bool AskedRecently(const QString& address, orbit::TDateTime now) const;

  /// Forgets at the same time what is no longer recent. Returns the line that stood for the address, if one
  /// did. Raises files::FileError.
  QString Remember(const QString& address, orbit::TDateTime now) const;

  /// For a request that did not go out after all: the line from before, as Remember returned it, is put back.
  /// Raises files::FileError.
  void TakeBack(const QString& address, const QString& earlierLine, orbit::TDateTime now) const;

 private:
  QString Exchange(const QString& address, const QString& line, orbit::TDateTime now) const;

  QString file_;
};

}  // namespace pelorin::elements
