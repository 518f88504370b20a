#pragma once

#include <QString>
#include <optional>
#include <span>
#include <vector>

#include "align/logged_alignment.h"

/// What earlier alignments say of a picture that was never aligned. It is offered to the user, and never
/// taken unasked. What was found roughly says nothing.
namespace pelorin::align {

/// The middle one of some numbers, or between the middle two; 0 of none.
double MedianOf(std::vector<double> numbers);

/// What the recording station's clock was off.
struct ClockMedian {
  double OffsetS = 0;
  std::vector<LoggedAlignment> Of;  ///< at most five, the nearest in time to the picture first
  bool AreEarlier = true;           ///< all of them began before the picture
};

/// Of the pictures that began nearest to that one, a station's clock drifting slowly: no more than five, up
/// to 60 days away, of which the recorder's clock told the second. Lines that are stamped are by the
/// satellite's clock, and a start to the minute holds the seconds that it was cut by. The picture's own
/// alignment does not count. Nothing when there is none.
std::optional<ClockMedian> MedianClock(std::span<const LoggedAlignment> log, const LoggedAlignment& picture);

/// How a satellite flies at a season.
struct AttitudeMedian {
  double RollDeg = 0, YawDeg = 0;
  std::vector<LoggedAlignment> Of;  ///< the nearest in time to the picture first
};

/// Of pictures of the satellite that its scanner made with as many columns, in the same month of any year or
/// one beside it. A single picture's roll and yaw have the errors of its coasts: nothing when there are fewer
/// than three.
std::optional<AttitudeMedian> MedianAttitude(std::span<const LoggedAlignment> log,
                                             const LoggedAlignment& picture);

/// What a picture that begins by the recorder's clock is offered as its time correction. Nothing when that is
/// what it has, or nothing is known.
std::optional<ClockMedian> OfferClock(std::span<const LoggedAlignment> log, const LoggedAlignment& picture);
/// Likewise; a roll and yaw less than a column away from the picture's are not offered.
std::optional<AttitudeMedian> OfferAttitude(std::span<const LoggedAlignment> log,
                                            const LoggedAlignment& picture);

/// For the user: "Clock: take +1.3 s, the median of the last 5".
QString TextOf(const ClockMedian& median);
/// "Attitude: take roll −0.12°, yaw 0.40°, the median of 4".
QString TextOf(const AttitudeMedian& median);
/// The alignments behind it, a line each.
QString TipOf(const ClockMedian& median);
QString TipOf(const AttitudeMedian& median);

/// "Aligned before: +1.3 s, by its coasts".
QString TextOf(const LoggedAlignment& before);
/// All of it, a line each.
QString TipOf(const LoggedAlignment& before);

/// "+1.3 s".
QString SecondsText(double seconds);
/// "−0.12°".
QString AngleText(double degrees);

}  // namespace pelorin::align
