#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "align/logged_alignment.h"

/// What a plot of the log over time shows, in numbers. Drawing it is somebody else's.
namespace pelorin::align {

struct AxisTick {
  double At;
  QString Text;
};

struct PlotAxis {
  double From = 0, To = 1;  ///< To is the larger one
  std::vector<AxisTick> Ticks;
};

/// At round numbers (1, 2 or 5 times a power of ten) so that all values lie between the first and the last
/// one; at most about so many. Values that lie close together do not fill an axis: it is `least` long at
/// least.
PlotAxis ValueAxis(double lowest, double highest, double least, int mostTicks);

/// At round hours, days, months or years, UTC; moments are days as in TDateTime. The axis reaches a little
/// beyond both moments, and is a day long at least.
PlotAxis TimeAxis(double first, double last, int mostTicks);

struct PlotPoint {
  double Days, Value;
  int Satellite;    ///< in AlignmentPlot::Satellites
  std::size_t Row;  ///< in what was plotted
  bool Counts;      ///< in the medians; others were found roughly, or tell of another clock
};

struct PlotMedian {
  double Value;
  int Satellite;  ///< −1 for all of them
};

/// One of the plots that lie above each other.
struct PlotPanel {
  QString Title;
  PlotAxis Values;
  std::vector<PlotPoint> Points;
  std::vector<PlotMedian> Medians;
};

struct AlignmentPlot {
  PlotAxis Time;
  QStringList Satellites;  ///< by name, each once
  std::vector<PlotPanel> Panels;
};

/// Clock correction, roll and yaw. A start that is known to the minute tells of no clock, and what was found
/// roughly of no attitude: such points are left out. The clock is the station's and has one median; each
/// satellite has its own of roll and yaw.
AlignmentPlot PlotOf(std::span<const LoggedAlignment> rows, int mostTimeTicks, int mostValueTicks);

}  // namespace pelorin::align
