#pragma once

namespace pelorin::swath {

/// Columns of one line of the old picture format, from 0 in the order of reception: one channel with its
/// frame.
inline constexpr int kSyncEnd = 39;    ///< sync band 0 … 38
inline constexpr int kFirstPulse = 4;  ///< pulses of two columns at 4, 8, … 28
inline constexpr int kLastPulse = 28;
inline constexpr int kPulsePeriod = 4;
inline constexpr int kSpaceEnd = 86;          ///< space band with the minute marker, 39 … 85
inline constexpr int kImageBegin = 86;        ///< image, 86 … 994
inline constexpr int kImageEnd = 995;         ///< telemetry in a received line, filler in a map's
inline constexpr int kUsualLineWidth = 1040;  ///< of one channel; two of them make a whole line

}  // namespace pelorin::swath
