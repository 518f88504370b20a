#pragma once

#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <optional>
#include <vector>

#include "align/picture_alignment.h"
#include "overlay/master_view.h"
#include "swath/pixel_geometry.h"
#include "swath/recording.h"

/// Pictures that alignment is measured with, and the ground that they are compared with.
namespace pelorin::tools {

/// A picture's pixel, and the ground that is known to be seen there.
struct KnownPixel {
  swath::PixelPoint Pixel;
  swath::GroundPoint Ground;
};

/// A recording with its channels, all as they are stored.
struct MeasuredPicture {
  QString Name;
  swath::Recording Recording;
  std::vector<QImage> Channels;
  std::vector<KnownPixel> Truth;  ///< of a made picture; else empty
  bool MustBeRefused = false;     ///< there is nothing in it that it could be found by
  /// Whose pass it could be taken for; not its own.
  std::vector<orbit::TSatellite> Others;
};

/// Reads the list of pictures, in JSON: objects with "name", "picture" (a file, or a decoder's folder) and
/// "satellite", where needed "elements" (a file of sets), "start" ("2019-05-21T15:25:38Z"), "truth" (a table
/// of column, row, latitude, longitude) and "refused". Paths are relative to the list. Raises FileError.
std::vector<MeasuredPicture> ReadPictures(const QString& listPath, const QString& dataFolder);

/// The program's own map data, as its programs use them.
class MeasuringGround {
 public:
  /// `dataFolder` holds Countries.dat and Coastlines.dat. Raises FileError.
  explicit MeasuringGround(const QString& dataFolder);
  MeasuringGround(const MeasuringGround&) = delete;
  MeasuringGround& operator=(const MeasuringGround&) = delete;

  /// Borrowed from this.
  align::Ground Ground() const;

 private:
  QTemporaryDir folder_;
  lines::FineLines shores_;
  std::optional<overlay::MasterView> master_;
};

/// Of values without an order; any other share of them is `share` of the way up. NaN for none.
double MedianOf(std::vector<double> values, double share = 0.5);

/// How far two recordings of one picture are from each other, or one from what is known: medians over the
/// picture, and what nine of ten places keep.
struct Misfit {
  double Lines = 0, Columns = 0;              ///< medians, with their signs
  double LinesOfNine = 0, ColumnsOfNine = 0;  ///< of their sizes
  double Seconds = 0;                         ///< the median's lines
};
Misfit MisfitBetween(const swath::Recording& is, const swath::Recording& shouldBe);
Misfit MisfitToTruth(const swath::Recording& is, const std::vector<KnownPixel>& truth);

}  // namespace pelorin::tools
