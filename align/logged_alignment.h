#pragma once

#include <QString>
#include <optional>

#include "orbit/date_time.h"
#include "swath/recording.h"

namespace pelorin::align {

/// How an alignment was found.
enum class FoundBy {
  Coasts,
  CoastsRoughly,  ///< to a second or two, time alone
  Hand,
};

/// As the log writes it: "coasts", "coasts roughly", "by hand".
QString NameOf(FoundBy how);
/// For the user, in a sentence: "by its coasts", "roughly by its coasts", "by hand".
QString WordsOf(FoundBy how);

/// An alignment that was accepted: what picture it is of, and where that lies.
struct LoggedAlignment {
  QString Picture;  ///< its file's name, without a folder
  QString Satellite;
  QString CatalogueNumber;  ///< see TSatellite::CatalogueKey; may be empty
  orbit::TDateTime Start;   ///< UTC of its first line, by the clock that gave the time
  swath::StartFrom StartIsFrom = swath::StartFrom::NameSecond;
  int Columns = 0, Rows = 0;  ///< of the picture
  int ScannerColumns = 0;     ///< of its scanner's line; 0 where that was not written down
  double ClockS = 0;          ///< what that clock was off, to be added to all moments
  double ShiftColumns = 0;
  swath::Attitude Offsets;
  double DriftPpm = 0;
  FoundBy How = FoundBy::Coasts;
  std::optional<double> ChancePeaks;  ///< peaks as high as its own to be expected by chance; none by hand
  orbit::TDateTime Accepted;          ///< UTC
};

/// What is to be logged of a recording as it was aligned. It needs its elements and its picture's size.
/// `picture` is the path or the name of its file.
LoggedAlignment Logged(const swath::Recording& aligned, const QString& picture, FoundBy how,
                       std::optional<double> chancePeaks, orbit::TDateTime accepted);

/// Both are of one satellite, by catalogue number, or by name where one has no number.
bool IsSameSatellite(const LoggedAlignment& one, const LoggedAlignment& other);

/// Both are of one picture, or of channels that were received together: the same satellite, begin (to the
/// second) and width, and the same name or the same number of rows. Folders do not count, and a name alone
/// means nothing: decoders call the pictures of all passes alike.
bool IsSamePicture(const LoggedAlignment& one, const LoggedAlignment& other);

/// A recording as it was aligned before.
swath::Recording Aligned(swath::Recording recording, const LoggedAlignment& logged);

/// One picture lies the same by both, to what the log writes down.
bool LiesAlike(const LoggedAlignment& one, const LoggedAlignment& other);

}  // namespace pelorin::align
