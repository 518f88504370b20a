#pragma once

namespace pelorin::overlay {

/// Pixels of one line of the map, from 0: the frame of an APT line.
inline constexpr int kSyncEnd = 39;    ///< sync band 0 … 38
inline constexpr int kFirstPulse = 4;  ///< pulses of two pixels at 4, 8, … 28
inline constexpr int kLastPulse = 28;
inline constexpr int kPulsePeriod = 4;
inline constexpr int kSpaceEnd = 86;          ///< space band with the minute marker, 39 … 85
inline constexpr int kImageBegin = 86;        ///< image, 86 … 994
inline constexpr int kImageEnd = 995;         ///< filler from here to the end of the line
inline constexpr int kUsualLineWidth = 1040;  ///< a line of a received channel; maps are never narrower

}  // namespace pelorin::overlay
