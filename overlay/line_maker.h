#pragma once

#include <cmath>
#include <cstdint>
#include <span>
#include <stdexcept>

#include "orbit/satellite.h"
#include "overlay/ground_colour.h"
#include "overlay/scan_line.h"

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

/// Makes the lines of one satellite.
class LineMaker {
 public:
  /// Raises OverlayError when the elements describe no orbit.
  LineMaker(const orbit::TSatellite& satellite, const OverlaySources& sources, Marks marks);
  LineMaker(const LineMaker&) = delete;
  LineMaker& operator=(const LineMaker&) = delete;

  /// For the lines to come.
  void SetMarks(Marks marks) { colours_.SetMarks(marks); }

  /// The line for a moment; see ScanLineWriter. Returns where the satellite is; it stays as it is until the
  /// next line. Raises OverlayError when the elements give no place above the Earth.
  const swath::GroundTrack& Make(double julianDate, MinuteMarker marker, bool turned,
                                 std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices);

 private:
  void FollowHeight(double heightKm);

  orbit::TSatellite satellite_;  ///< its own: the list may be loaded anew while a flight runs
  swath::ScannerFamily family_;
  GroundColours colours_;
  ScanLineWriter writer_{colours_};
  swath::GroundTrack track_{};
  swath::GroundLine ground_{};
  swath::ScanDistances distances_{};
  double distancesFor_ = std::nan("");  ///< the height, km
};

}  // namespace pelorin::overlay
