#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Instruments that make a picture by looking across the flight, line by line, and how they look.
namespace pelorin::swath {

/// How the columns of a line share out the angle that it spans.
enum class ScanLaw {
  EvenAngles,   ///< every column turns by the same angle
  Zones,        ///< the 909 columns of the old picture format, made in zones of 4, 3, 2, 1.5 and 1 samples
  ZonesSphere,  ///< the same by the classic table of distances on a sphere (ScanDistancesOf), which knows no
                ///< half steps between zones; attitude does not turn it
};

/// As tables of scanners write it: "even", "zones", "zones-sphere".
const char* NameOf(ScanLaw law);
/// Nothing for another name.
std::optional<ScanLaw> ScanLawNamed(std::string_view name);

/// What is added to where an instrument should look: degrees, as fitted to received pictures.
///
/// Somebody who flies with the satellite, the Earth below: positive roll moves the line to the left (towards
/// the later columns), positive pitch moves it forward, positive yaw turns its left end forward.
struct Attitude {
  double RollDeg = 0, PitchDeg = 0, YawDeg = 0;

  bool operator==(const Attitude&) const = default;
};

/// No spacecraft is off by more, in any of the three.
inline constexpr double kMostTurnedDeg = 10;

/// How the columns of a line look, from one end of its arc to the other.
struct LineShape {
  bool operator==(const LineShape&) const = default;

  int Columns = 0;
  double AngleDeg = 0;  ///< even angles: from the first column's outer edge to that of the last; zones:
                        ///< between the centres of the outermost of the 2,048 samples
  ScanLaw Law = ScanLaw::EvenAngles;
};

/// Columns of the old picture format, the only ones that are made in zones.
inline constexpr int kZoneColumns = 909;

/// Angle of a column from the middle of the line, radians, positive towards the later columns: those to the
/// left of the flight. Columns count from 0 in the order of reception; a whole number is a column's centre.
/// Beyond the ends an angle goes on as within the last columns.
double ColumnAngle(const LineShape& line, double column);

/// The column that looks at an angle: ColumnAngle the other way round.
double ColumnAtAngle(const LineShape& line, double angle);

/// Where a received line of a picture of `columns` has the instrument's first column; nothing for a width
/// that fits none of its pictures. 0 stands for no picture. One of the old format may be the image alone
/// (909 … 994 columns, some of the space band before it), a channel with its frame (995 … 1050), or a whole
/// line of two (2060 … 2100).
std::optional<int> FirstColumnOf(const LineShape& line, int columns);

/// A satellite that carries an instrument.
struct Carrier {
  std::string CatalogueNumber;     ///< 5 … 9 digits; see TSatellite::CatalogueKey
  std::vector<std::string> Names;  ///< upper case; what its names may begin with
  std::vector<double> FrequenciesMHz;
  Attitude Offsets;                    ///< fitted to its pictures
  double TimeOffsetS = 0;              ///< added to the moments of its rows
  std::optional<double> MarkSecond{};  ///< see Instrument
  std::optional<double> AngleDeg;      ///< where its line is not the scanner's
  std::optional<ScanLaw> Law;          ///< likewise
  int Table = 0;                       ///< the later one's entries are taken first
};

/// How one instrument looks, and when.
struct Instrument {
  std::string Name;  ///< "MSU-MR LRPT"; one of a kind, whatever its case
  LineShape Line;
  double RowsPerSecond = 0;
  bool YawSteering = false;  ///< the line lies across the flight over the turning ground, not that in space
  /// The second of the minute, UTC, at which minute marks of the old picture format begin: it is the
  /// spacecraft's own affair. Nothing where nobody has measured it.
  std::optional<double> MarkSecond{};

  bool operator==(const Instrument&) const = default;
};

/// One instrument as one kind of transmission sends it.
struct Scanner : Instrument {
  std::string Mode;  ///< "LRPT", "HRPT", "APT"
  std::vector<Carrier> Carriers;
};

}  // namespace pelorin::swath
