#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <string>

#include "orbit/date_time.h"
#include "orbit/satellite.h"

namespace pelorin::elements {

/// The orbits among which a set is counted when its age is judged. Air drag is what element sets foresee
/// worst, so it is drag that parts them: the height of the weather satellites' sun-synchronous orbits has a
/// class of its own, all others are told by their drag term.
std::string AgeingClassOf(const orbit::TSatellite& set);

/// How far along its orbit a satellite was found from where a set of some age had it: nine of ten were no
/// farther. Measured from sets that followed each other.
struct AgeingLaw {
  double KmPerDay = 0, KmPerDay2 = 0;  ///< neither is negative
  double LongestDays = 0;              ///< no set of greater age was measured
  int Sets = 0, Satellites = 0;        ///< what it was measured from

  double BoundKm(double days) const { return days * (KmPerDay + days * KmPerDay2); }
};

/// The laws by class.
class SetAgeing {
 public:
  /// Knows of no class.
  SetAgeing() = default;
  /// A table as ToJson writes it, described in docs/formats.md. Raises std::runtime_error for one that is
  /// damaged.
  explicit SetAgeing(const QByteArray& json);

  std::map<std::string, AgeingLaw> Laws;

  QByteArray ToJson() const;
  /// Null for a class that was not measured.
  const AgeingLaw* LawOf(const orbit::TSatellite& set) const;
};

/// What a set's age may cost a map.
struct SetDoubt {
  double Days = 0;      ///< from the set's epoch to the moment; negative for a set of later on
  double Lines = -1;    ///< by which nine of ten maps are off at most; negative when that is not known
  bool IsMore = false;  ///< the set is older than any that was measured: Lines is what those had
  QString Source;       ///< what the figure was measured from; empty without one
};

/// The table of a file; an empty path knows of no class. What is wrong with a file is raised as
/// std::runtime_error with its name.
SetAgeing LoadSetAgeing(const QString& path);

SetDoubt DoubtOf(const orbit::TSatellite& set, orbit::TDateTime moment, const SetAgeing& ageing);

/// "elements 2.1 days old, the map may be off by 1 line"
QString DoubtText(const SetDoubt& doubt);

/// How much a doubt matters.
enum class DoubtLevel { None, Notable, Grave };

/// Notable and grave from so many lines on. A set of which nothing is known is not judged.
DoubtLevel LevelOf(const SetDoubt& doubt, int notableLines, int graveLines);

}  // namespace pelorin::elements
