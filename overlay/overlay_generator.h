#pragma once

#include <QImage>
#include <QStringList>
#include <array>
#include <cstdint>
#include <functional>

#include "orbit/date_time.h"
#include "orbit/observer.h"
#include "orbit/satellite.h"
#include "overlay/line_maker.h"
#include "picture/indexed_bitmap.h"
#include "swath/recording.h"

/// The overlay of a pass, line by line as the satellite's scanner swept the ground.
namespace pelorin::overlay {

/// Everything that decides what a map looks like.
struct OverlayRequest {
  /// What the map lies on; elements and scanner must be known. Without a size the map is as high as the pass
  /// has lines.
  swath::Recording Picture;
  orbit::Observer Station;
  double DurationMinutes = 15;              ///< later lines are left black; 0 for no such end
  Marks Overlay = Marks::None;              ///< what of the master is drawn over the ground
  bool PassDetails = false;                 ///< collect the pass data and the text lines
  std::array<std::uint8_t, 3> TextItems{};  ///< TextItem bits of the three text lines
};

struct OverlayResult {
  swath::Recording Recording;   ///< of the map; see MapOf
  QImage Map;                   ///< Format_RGB32, of its size; rows without a line are black
  picture::IndexedImage Index;  ///< the same as indices; a single row when there is no master
  picture::ColourTable IndexColours{};
  int LinesMade = 0;        ///< lost lines between them included
  QStringList PassData;     ///< per line: time, latitude and longitude of the sub-satellite point in degrees
  QStringList TextLines;    ///< the three text lines, when details are wanted
  double ElevationDeg = 0;  ///< elevation in the middle of the pass, for the text lines; 0 if none is seen
  orbit::TDateTime MiddleOfPass;  ///< UTC; 0 if none is seen
};

/// After a line: how far the map is, and when it is worth repainting or moving a progress bar on.
struct LineProgress {
  int Line;        ///< from 0
  bool Repaint;    ///< the line is the first of ten seconds, counted from the full minute
  bool NewMinute;  ///< the line is the first of a minute
  const OverlayResult& SoFar;
};

/// Answers false to stop; what was made so far is the result.
using AfterLine = std::function<bool(const LineProgress&)>;

/// How long the map of a request is, from its first line on.
double MinutesToMake(const OverlayRequest& request);

/// Whether a satellite moves south at a moment.
bool IsSouthBoundAt(const orbit::TSatellite& satellite, orbit::TDateTime moment);

/// Makes the map, at lowered priority; on several threads when nobody watches it grow. Raises OverlayError
/// when the elements give no position for a line.
OverlayResult GenerateOverlay(const OverlayRequest& request, const OverlaySources& sources,
                              const AfterLine& afterLine = {});

}  // namespace pelorin::overlay
