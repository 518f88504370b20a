#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "orbit/date_time.h"
#include "overlay/flight_image.h"
#include "overlay/line_maker.h"

namespace pelorin::overlay {

/// A pass replayed as if it were being received: the lines that its scanner has sent by now, at its own rate.
/// Time is what the caller says it is. Lines enter its picture; see FlightImage.
class FlightReplay {
 public:
  /// The first tick draws what was sent in the seconds before the start, both ends included: the line that
  /// begins just now is sent, too. At 120 lines a minute these are 21.
  static constexpr int kSecondsAtOnce = 10;

  /// Ends a running flight. Of the recording its elements, scanner and direction count. `height` is that of
  /// the picture. Raises OverlayError when the elements give no position; the picture of before stays.
  void Start(const swath::Recording& recording, const OverlaySources& sources, Marks marks,
             orbit::TDateTime now, int height);

  bool Running() const { return isRunning_; }
  /// The flight ends at the next tick.
  void RequestStop() { isStopRequested_ = true; }
  bool StopRequested() const { return isStopRequested_; }
  /// The flight ends at once. Its picture stays.
  void Stop();

  /// Draws the lines that are due and answers how many they are. Lines that would have left the picture again
  /// by the end of the tick are left out: a computer that slept for a night goes on at once. While it is
  /// `held` no lines are drawn; they follow later. Draws nothing between flights. Raises OverlayError.
  int Tick(orbit::TDateTime now, bool held = false);

  /// The satellite is taken to move the other way; the picture is turned with it.
  void Turn();

  /// What covers the ground in the lines to come.
  void SetMarks(Marks marks);

  /// Lines drawn since the start.
  int Lines() const { return lines_; }
  /// Null before the first start.
  const FlightImage* Picture() const { return picture_ ? &*picture_ : nullptr; }

 private:
  /// Borrowed parts make it immovable, so each flight has a new one.
  std::unique_ptr<LineMaker> maker_;
  std::optional<FlightImage> picture_;
  std::vector<std::uint8_t> indices_;  ///< of one line; nobody wants them
  bool isRunning_ = false, isStopRequested_ = false;
  double startJd_ = 0;
  double rowsPerSecond_ = 2;
  long long next_ = 0;  ///< number of the next line, counted from `startJd_`
  int lines_ = 0;
};

/// What the status bar says of a flight: " Line: 0020 2019 May 21  15:25:38.07".
QString FlightStatus(int lines, orbit::TDateTime moment);

}  // namespace pelorin::overlay
