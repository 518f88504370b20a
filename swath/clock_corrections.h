#pragma once

#include <QString>
#include <map>

#include "swath/recording.h"

namespace pelorin::swath {

/// The range and the step of a recording's offset, in seconds. The quickest scanners send six lines and a
/// half in one.
inline constexpr double kOffsetLimitS = 900, kOffsetStepS = 0.01;

/// What the recorder's clock was off, remembered for each satellite, since passes of one satellite are
/// recorded the same way. It is learnt from recordings whose start is known to the second, and apart from
/// these from such with stamped lines, which are by the satellite's clock; an offset that was found for
/// another one by eye holds the seconds of its start as well, and is good for that one alone.
class ClockCorrections {
 public:
  /// `saved` is what Saved gave; what is not understood is passed over.
  explicit ClockCorrections(const QString& saved);

  /// The offset to begin with; nothing when none was learnt for such a recording.
  std::optional<double> OffsetOf(const Recording& recording) const;
  /// Remembers the recording's offset, if there is something to learn from it.
  void Learn(const Recording& recording);
  /// There is no offset any more for such recordings.
  void Forget(const Recording& recording);

  QString Saved() const;

 private:
  /// Files write a satellite's name as they like.
  struct CaseAside {
    bool operator()(const QString& a, const QString& b) const {
      return a.compare(b, Qt::CaseInsensitive) < 0;
    }
  };

  std::map<QString, double, CaseAside> clocks_;  ///< by satellite name, seconds
};

/// Brought into the range and to a whole step.
double ToOffsetStep(double seconds);

/// With one decimal, and a second one where there is something to tell: "-3.0", "12.34".
QString OffsetText(double seconds);

}  // namespace pelorin::swath
