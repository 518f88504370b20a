#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

#include "orbit/date_time.h"

/// What the name of a received picture tells. Stations, recorders and decoders name their files by time and
/// satellite, each in its own way; docs/formats.md lists the ways.
namespace pelorin::swath {

/// What a name tells, as far as it does. Start is the moment in the name, whichever clock it is of.
struct PictureName {
  std::optional<orbit::TDateTime> Start;  ///< nothing when there is no date and time
  bool YearIsKnown = false;               ///< otherwise Start is in 2000, which has a 29 February
  bool SecondIsKnown = false;             ///< otherwise Start is a whole minute
  bool IsUtc = false;                     ///< it says so; otherwise UTC, or the clock of the station
  QString Satellite;                      ///< as CommonSatelliteName writes it; empty for none
  std::optional<double> FrequencyMHz;     ///< on which it was received
  bool IsProjected = false;               ///< "_map": a map is drawn in it already
  bool IsCorrected = false;               ///< "_corrected": stretched to equal distances on the ground
};

/// Whether decoders and recorders write pictures with that extension.
bool HasPictureSuffix(const QString& path);

/// Reads the name of a file or a folder, which need not be there. What it does not tell is taken from the
/// name of the folder that it lies in, and then from that one's: decoders often put the time there alone.
/// Only a file's own name may be "mmddhhnn", and only its own tells what was done to the picture. Dates and
/// times that cannot be, and years before 1970 or after 2099, are not taken for any.
PictureName ReadPictureName(const QString& path);

/// The satellite that a name speaks of, in one spelling of many: "METEOR-M2 3" for "meteor_m2-3_lrpt" and
/// "METEOR M2-3", "NOAA 18" for "NOAA-18-2024" and "NOAA 18 [B]". Names in element sets and in files are of
/// the same satellite when this is the same for both, and not empty.
QString CommonSatelliteName(const QString& name);

/// The year of a picture whose name has none.
struct YearOfFile {
  int Year = 0;             ///< that of the file's last change, by the local clock
  bool IsPossible = false;  ///< the name's day is there in that year, and not days after the file's change
};
YearOfFile YearByFile(const PictureName& name, const QDateTime& lastChange);

/// The moment of a name in another year than it is in; nothing for 29 February in a year without one.
std::optional<orbit::TDateTime> InYear(orbit::TDateTime moment, int year);

}  // namespace pelorin::swath
