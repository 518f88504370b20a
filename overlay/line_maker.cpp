#include "overlay/line_maker.h"

#include "orbit/julian_date.h"
#include "orbit/propagation.h"

namespace pelorin::overlay {
namespace {

const swath::Recording& WithAnOrbit(const swath::Recording& recording) {
  if (!orbit::CanPropagate(*recording.Elements)) {
    throw OverlayError("The elements of " + recording.Elements->Name + " describe no orbit");
  }
  return recording;
}

}  // namespace

LineMaker::LineMaker(const swath::Recording& recording, const OverlaySources& sources, Marks marks)
    : satellite_(recording.Elements->Name),
      finder_(WithAnOrbit(recording)),
      colours_(sources.Ground, sources.Master, marks),
      writer_(colours_, recording.FirstColumn) {}

const swath::GroundTrack& LineMaker::Make(double julianDate, MinuteMarker marker, bool runsLeft,
                                          std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices) {
  track_ = finder_.Find(julianDate, ground_);
  if (!orbit::IsAboveTheEarth(track_.Inertial, track_.Below)) {
    throw OverlayError(
        "The elements of " + satellite_ + " give no position for " +
        orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", orbit::DateTimeOfJulianDate(julianDate)));
  }
  writer_.Write(ground_, marker, runsLeft, pixels, indices);
  return track_;
}

}  // namespace pelorin::overlay
