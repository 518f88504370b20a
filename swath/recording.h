#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "orbit/date_time.h"
#include "orbit/satellite.h"
#include "swath/scanner.h"

namespace pelorin::swath {

/// What the start of a recording is known from.
enum class StartFrom {
  Pass,        ///< the minute of its pass; no picture tells a better one
  NameMinute,  ///< the minute in the picture's name
  NameSecond,  ///< the second in the picture's name
  Stamps,      ///< its lines are stamped
  Coasts,      ///< its coasts, which told its pass; no clock
};

/// What else of a recording is known from.
enum class KnownFrom {
  Default,  ///< what pictures of this kind mostly have
  Table,    ///< the table of scanners
  Name,     ///< the name of its file
  Product,  ///< the product file beside it
  User,
  Alignment,  ///< the picture's own coasts
};

/// How a picture lies in its file, compared with how it was received: first line on top, first column at the
/// left. A north-bound picture as received has north at the bottom and east at the left; turned, north is up.
struct Stored {
  bool Turned = false;    ///< by 180°
  bool Mirrored = false;  ///< and then left and right exchanged

  bool operator==(const Stored&) const = default;
};

/// What a received picture is a picture of: whose pass, seen by which scanner, when its lines were received,
/// and how they are stored. The pixels are somebody else's. A better guess at any of it is another Recording.
///
/// Lines count from 0 in the order of reception, columns of a line likewise; rows and columns of the file
/// are these as `Lies` tells. Where every pixel lies on the ground is PixelGeometry's to say.
struct Recording {
  QString Satellite;  ///< its name; empty for none
  /// The set that counts for it; null while none was chosen.
  std::shared_ptr<const orbit::TSatellite> Elements;

  Instrument SeenBy;  ///< its columns 0 while the scanner is not known
  KnownFrom ScannerIsFrom = KnownFrom::Default;
  Attitude Offsets;
  KnownFrom OffsetsAreFrom = KnownFrom::Default;

  orbit::TDateTime Start;  ///< UTC of the first line, by the clock that gave the time
  StartFrom StartIsFrom = StartFrom::Pass;
  double OffsetS = 0;  ///< to be added to all moments: what that clock was off
  /// When each line was seen, seconds after Start, increasing; NaN for a line that was lost. Null when lines
  /// follow each other at the scanner's rate.
  std::shared_ptr<const std::vector<double>> LineTimesS;
  /// By how much the clock that paced the lines ran slow, in millionths: what it calls a second lasts
  /// 1 + DriftPpm / 1e6. A sound card's is off by some tens.
  double DriftPpm = 0;

  int Rows = 0, Columns = 0;  ///< of the picture; 0 while there is none
  int FirstColumn = 0;        ///< of a received line: where the scanner's column 0 is
  /// How many columns later than that it really is: lines are not always cut where they should be.
  double ShiftColumns = 0;
  Stored Lies;
  KnownFrom LiesIsFrom = KnownFrom::Default;
  bool SouthBound = true;  ///< the satellite moves south

  /// UTC of the first line.
  orbit::TDateTime FirstLine() const { return {Start.Days + OffsetS / orbit::kSecondsPerDay}; }

  /// Seconds after FirstLine at which a line was seen; NaN for a lost one, and for one that the stamps do not
  /// reach.
  double SecondsOfLine(int line) const;
  /// The line that was seen so many seconds after FirstLine, with its fraction: −0.5 is the picture's upper
  /// edge, and the picture goes on beyond it. Nothing in a gap.
  std::optional<double> LineAtSecond(double seconds) const;
  /// LineAtSecond the other way round: NaN where the nearest line was lost, and past the stamps' edges.
  double SecondsAt(double line) const;
  /// How many lines the first `minutes` have, lost ones between them included.
  int LinesOf(double minutes) const;

  /// Seconds from the first line to the last one that has a moment; 0 without a picture.
  double LengthS() const;

  int RowOfLine(int line) const { return Lies.Turned ? Rows - 1 - line : line; }
  /// The received lines' columns run from right to left in the file.
  bool RunsLeft() const { return Lies.Turned != Lies.Mirrored; }

 private:
  /// True seconds in one of the clock that paced the lines.
  double SecondLength() const { return 1 + DriftPpm * 1e-6; }
};

/// Both begin at the same second, by their recorders' clocks.
bool BeginTogether(const Recording& one, const Recording& other);

/// Both are of one pass of one satellite, and begin with the same line. The channels of a recording are the
/// same one, and so it is with another offset.
bool IsSameRecording(const Recording& one, const Recording& other);

/// Both are the same recording, of one size and stored the same way, with the same offsets.
bool LiesAlike(const Recording& one, const Recording& other);

}  // namespace pelorin::swath
