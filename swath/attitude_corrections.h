#pragma once

#include <QString>
#include <map>

#include "swath/recording.h"

namespace pelorin::swath {

/// How the user has found spacecraft to fly, where that is not as the table of scanners or a product file
/// has it.
///
/// Remembered for each satellite by its catalogue number, by its name where a set has none, and for each of
/// its instruments by the columns of its line: product files call them as they like, and what was fitted to
/// one transmission of a spacecraft is not what fits another.
class AttitudeCorrections {
 public:
  /// `saved` is what Saved gave; what is not understood is passed over.
  explicit AttitudeCorrections(const QString& saved);

  /// Gives a recording the user's attitude in place of what else is known, if there is one. It needs its
  /// elements and its scanner.
  void TakeOwn(Recording& recording) const;

  /// From now on this is the user's attitude for such recordings, brought to what is possible.
  void Learn(const Recording& recording, const Attitude& own);
  /// What else is known counts again.
  void Forget(const Recording& recording);

  QString Saved() const;

 private:
  std::map<QString, Attitude> own_;  ///< by number or upper-case name, and columns: "59051/1568"
};

}  // namespace pelorin::swath
