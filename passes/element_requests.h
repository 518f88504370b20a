#pragma once

#include <QString>

#include "orbit/date_time.h"

namespace pelorin::passes {

/// The service computes new sets every two hours; who asks more often is refused, and in the end locked out.
inline constexpr double kHoursBetweenRequests = 2;

/// When an element service was last asked for an address. Kept in a small text file, so that it outlasts the
/// program: a line an address, "yyyy-mm-ddThh:nn:ssZ address". What cannot be read there counts as never
/// asked.
class ElementRequests {
 public:
  /// Neither file nor folder need exist.
  explicit ElementRequests(const QString& file) : file_(file) {}

  bool AskedRecently(const QString& address, orbit::TDateTime now) const;

  /// Forgets at the same time what is no longer recent. Raises files::FileError.
  void Remember(const QString& address, orbit::TDateTime now) const;

 private:
  QString file_;
};

}  // namespace pelorin::passes
