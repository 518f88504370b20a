#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "orbit/observer.h"
#include "orbit/satellite.h"
#include "swath/picture_name.h"
#include "swath/recording.h"
#include "swath/scanner_match.h"
#include "swath/scanner_table.h"

/// A picture that somebody opens, and what it tells of itself: by its name, and by the product file that a
/// decoder left beside it.
namespace pelorin::overlay {

/// One of the pictures that an opened path leads to.
struct PictureChannel {
  QString Name;
  QString Path;
  int Half = -1;  ///< of a file with whole lines of the old format: 0 the left picture, 1 the right one
  /// It lies pixel for pixel on the others of which this is true: it is a plain channel of one recording.
  bool LiesAlike = true;
};

struct OpenedPicture {
  QImage Image;
  PictureChannel Channel;                ///< the one that Image is of
  std::vector<PictureChannel> Channels;  ///< all there are; at least one
  QStringList Notes;  ///< for the user: what is damaged, could not be used, or does not hold
  QString Problem;    ///< for the user: why no map can lie on it; mostly empty
  swath::PictureName Name;
  QString Satellite;                        ///< as it is told, or empty
  QString CatalogueNumber;                  ///< likewise
  std::optional<orbit::TSatellite> OwnSet;  ///< what it was decoded with
  /// What is told of it; its size is that of Image. Unless HasStart its Start is when the file was written.
  swath::Recording Known;
  bool HasStart = false;
  /// Other moments that the name can mean: it may be by the local clock.
  std::vector<orbit::TDateTime> OtherStarts;
};

/// Minutes by which a station's clock is ahead of UTC.
struct ClockOffsets {
  int StandardMinutes = 0, DaylightMinutes = 0;
};
/// Clocks were changed over the years.
using ClockOfYear = std::function<ClockOffsets(int year)>;

/// Opens a picture, a decoder's folder, or a product file. Of several pictures the first one is taken that
/// has the scanner's geometry, or the channel that was asked for. A frequency in its name tells the satellite
/// where one of `scanners` alone sends pictures of that width on it. Raises FileError and PictureError.
OpenedPicture OpenPicture(const QString& path, const ClockOfYear& local, const swath::ScannerTable& scanners,
                          int half = -1);

/// Whether a picture is one of a satellite, as far as it tells; its catalogue number counts, then its name.
bool IsOf(const OpenedPicture& opened, const orbit::TSatellite& satellite);

/// Whether a picture tells its satellite, and it is another one.
bool IsOfAnother(const OpenedPicture& opened, const orbit::TSatellite& satellite);

/// What the product said of scanner, attitude and clock counts no longer: the picture is another satellite's.
void ForgetProduct(swath::Recording& recording);

/// The set of a satellite that is nearest to a moment; nothing when there is none.
using SetNear = std::function<std::optional<orbit::TSatellite>(orbit::TDateTime)>;

/// The nearer one of two sets that may be there, under the second one's name.
std::optional<orbit::TSatellite> NearestSet(const std::optional<orbit::TSatellite>& own,
                                            const std::optional<orbit::TSatellite>& listed,
                                            orbit::TDateTime moment);

/// A picture as it would lie if it were stored in another way.
QImage Restored(const QImage& picture, swath::Stored from, swath::Stored to);

/// A recording with elements, scanner and direction.
struct PlacedRecording {
  swath::Recording Recording;
  swath::ScannerMatch Match;  ///< its Problem says why there is no scanner
  /// The satellite was above the station's horizon then; or that is not asked, since the lines are stamped,
  /// or not known, since the elements are of another month.
  bool WasInSight = true;
};

/// What a satellite's picture is a recording of. Of the moments that its name can mean the first is taken at
/// which the satellite was in sight of the station. The nearest set counts, be it the satellite's or the
/// picture's own. Nothing when there is no set.
std::optional<PlacedRecording> PlaceRecording(const OpenedPicture& opened, const SetNear& sets,
                                              const swath::ScannerTable& scanners,
                                              const orbit::Observer& station);

}  // namespace pelorin::overlay
