#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>

#include "overlay/ground_colour.h"
#include "overlay/scan_line.h"
#include "swath/ground_line.h"
#include "swath/recording.h"

/// Single lines of a pass, as maps and flights are made of them.
namespace pelorin::overlay {

/// A map that cannot be made; what() is the text for the user, in UTF-8.
class OverlayError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What a map is made from; all of it borrowed, all of it optional.
struct OverlaySources {
  GroundSource Ground;
  const MasterView* Master = nullptr;
};

/// Makes the lines of one recording.
class LineMaker {
 public:
  /// The recording must have its elements and its scanner. Raises OverlayError when the elements describe no
  /// orbit.
  LineMaker(const swath::Recording& recording, const OverlaySources& sources, Marks marks);
  LineMaker(const LineMaker&) = delete;
  LineMaker& operator=(const LineMaker&) = delete;

  /// For the lines to come.
  void SetMarks(Marks marks) { colours_.SetMarks(marks); }

  /// The line for a moment; see ScanLineWriter. Returns where the satellite is; it stays as it is until the
  /// next line. Raises OverlayError when the elements give no place above the Earth.
  const swath::GroundTrack& Make(double julianDate, MinuteMarker marker, bool runsLeft,
                                 std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices);

 private:
  std::string satellite_;
  swath::GroundLineFinder finder_;
  GroundColours colours_;
  ScanLineWriter writer_;
  swath::GroundTrack track_{};
  swath::GroundLine ground_{};
};

}  // namespace pelorin::overlay
