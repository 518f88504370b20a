#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orbit/propagator_state.h"

namespace pelorin::orbit {

/// A set of mean elements in the units in which sets are published: degrees, revolutions and days.
struct PublishedElements {
  std::string CatalogueNumber;
  int ElementSetNumber = 0;
  double EpochRaw = 0;          ///< yyddd.dddddddd
  double MeanMotion = 0;        ///< revolutions per day
  double MeanMotionDot = 0;     ///< half the first derivative, revolutions per day²
  double MeanMotionDotDot = 0;  ///< a sixth of the second derivative, revolutions per day³
  double BStar = 0;             ///< per Earth radius
  double Eccentricity = 0;
  double Inclination = 0, RightAscensionOfNode = 0, ArgumentOfPerigee = 0, MeanAnomaly = 0;  ///< degrees
};

/// One satellite: its element set, what follows from its name, and the propagator's state. Copies are
/// independent of each other; one object belongs to one thread at a time, also while it is const.
class TSatellite {
 public:
  /// Upper case: the 5 characters of a two-line set, letters included ("A0000" is 100000), or 5 … 9 digits.
  std::string CatalogueNumber;
  bool IsDeepSpace = false;         ///< period of 225 minutes or more
  std::string ElementSetNumber;     ///< 3 digits
  double MeanAnomaly = 0;           ///< radians
  double RightAscensionOfNode = 0;  ///< radians
  double ArgumentOfPerigee = 0;     ///< radians
  double Eccentricity = 0;
  double Inclination = 0;       ///< radians
  double MeanMotion = 0;        ///< radians per minute
  double MeanMotionDot = 0;     ///< half the first derivative, radians per minute²
  double MeanMotionDotDot = 0;  ///< a sixth of the second derivative, radians per minute³
  double BStar = 0;             ///< per Earth radius
  double Epoch = 0;             ///< Julian date
  double EpochRaw = 0;          ///< yyddd.dddddddd
  bool IsDoubtful = false;      ///< the checksum of a line that was read does not fit

  int LinesPerMinute = 120;  ///< lines of the received picture
  std::string Name;          ///< upper case, trimmed
  std::string SourceFile;    ///< element file without its folder

  // Of the described record; the program itself does not read these. Where a scanner looks is told by
  // swath::FamilyHalfAngle and swath::ScanDistancesOf, whose angles are others.
  bool Valid = false;             ///< a pair of element lines has been read
  double ScanHalfAngle = 45.0;    ///< degrees
  bool IsNoaaScanner = false;     ///< one of the first generation's names
  std::vector<double> ScanTable;  ///< what BuildScanTable was last asked for

  /// Private to propagation: the model worked out of the elements by the first call after ParseElements or
  /// TakeElements. Results never depend on it, so a satellite that is only computed with is const.
  mutable PropagatorState Propagator;

  /// Takes over a pair of element lines. Unreadable fields are 0; a checksum that
  /// does not fit makes the set doubtful, and a missing one says nothing. Raises
  /// MathError for elements that have no orbit: an eccentricity of 1 or more, a negative mean motion.
  void ParseElements(std::string_view line1, std::string_view line2);

  /// Takes over a set of whatever source. Raises MathError as ParseElements does.
  void TakeElements(const PublishedElements& elements);

  /// Takes over the name line and the element file's name (its folder is cut off) and sets what depends on
  /// the name: lines per minute, ScanHalfAngle and IsNoaaScanner.
  void SetIdentity(std::string_view nameLine, std::string_view fileName);

  /// What all sets of one satellite share, in whatever form its number is written; empty for a number cut
  /// short, which tells no satellite from another.
  std::string CatalogueKey() const;

  /// Days by which a doubtful set counts as farther away than it is, where another could be taken.
  double DoubtDays() const { return IsDoubtful ? 60 : 0; }

  /// Orbital period in days, from the mean motion as read.
  double PeriodDays() const;
};

}  // namespace pelorin::orbit
