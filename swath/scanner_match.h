#pragma once

#include <QString>

#include "swath/recording.h"
#include "swath/scanner_table.h"

/// Which scanner made a picture, as far as its satellite and its width tell.
namespace pelorin::swath {

/// A scanner and what is known of it on its satellite.
struct ScannerMatch {
  QString Problem;  ///< for the user, why nothing fits; the rest means nothing then. Empty otherwise
  QString Note;     ///< for the user, what was taken for granted; mostly empty
  Instrument SeenBy;
  KnownFrom From = KnownFrom::Table;
  int FirstColumn = 0;     ///< in a line of such a picture
  Attitude Fitted;         ///< the table's
  double TimeOffsetS = 0;  ///< the table's; for stamps of the satellite's clock
};

/// What is taken for granted of a satellite that no table of scanners knows; mostly empty.
QString ClassicNote(const orbit::TSatellite& satellite);

/// For a picture of `columns`; 0 for none, which means a satellite's usual scanner.
///
/// Satellites that the table knows have its scanners. The others are of the time of the old picture format:
/// families are told by name, angles by FamilyHalfAngle; a family that is not known has 45° to either side,
/// and a note that says so. Geostationary satellites and METEOR-M spacecraft without an entry have nothing.
ScannerMatch MatchScanner(const ScannerTable& table, const orbit::TSatellite& satellite, int columns);

/// Where nothing is known of it, pictures are stored as recorders of their kind have them: those of the old
/// format with north up, all others as received. The recording needs its scanner and its direction.
void SettleLies(Recording& recording);

/// Gives a recording its element set, and its scanner and attitude where neither the user nor a product file
/// has told them; a product's zones give way to the table's on a sphere. Answers what was matched; after a
/// Problem the recording has a set, but no scanner.
ScannerMatch TakeElements(orbit::TSatellite set, const ScannerTable& table, Recording& recording);

}  // namespace pelorin::swath
