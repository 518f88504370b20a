#include "overlay/line_maker.h"

#include "orbit/julian_date.h"
#include "orbit/model_constants.h"

namespace pelorin::overlay {
namespace {

/// A change of height (km) that moves no pixel by more than a twentieth of its width, at the heights of
/// weather satellites: within it one table serves.
constexpr double kHeightTolerance = 0.05;

}  // namespace

LineMaker::LineMaker(const orbit::TSatellite& satellite, const OverlaySources& sources, Marks marks)
    : satellite_(satellite),
      family_(swath::ScannerFamilyOf(satellite.Name)),
      colours_(sources.Ground, sources.Master, marks) {
  if (!orbit::CanPropagate(satellite_)) {
    throw OverlayError("The elements of " + satellite_.Name + " describe no orbit");
  }
}

void LineMaker::FollowHeight(double heightKm) {
  if (std::fabs(heightKm - distancesFor_) <= kHeightTolerance) return;
  distances_ = swath::ScanDistancesOf(family_, heightKm);
  distancesFor_ = heightKm;
}

const swath::GroundTrack& LineMaker::Make(double julianDate, MinuteMarker marker, bool turned,
                                          std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices) {
  track_ = swath::TrackAt(satellite_, julianDate);
  if (!orbit::IsAboveTheEarth(track_.Inertial, track_.Below)) {
    throw OverlayError(
        "The elements of " + satellite_.Name + " give no position for " +
        orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", orbit::DateTimeOfJulianDate(julianDate)));
  }
  FollowHeight(track_.Below.Altitude);
  swath::FillGroundLine(track_, distances_, ground_);
  writer_.Write(ground_, marker, turned, pixels, indices);
  return track_;
}

}  // namespace pelorin::overlay
