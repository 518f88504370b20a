#include "align/alignment_plot.h"

#include <algorithm>
#include <cmath>

#include "align/alignment_medians.h"

namespace pelorin::align {
namespace {

constexpr double kLeastClockS = 2, kLeastDeg = 0.2;
/// Of an axis of time, at either end.
constexpr double kMargin = 0.03;

/// A step of an axis of time, and how its ticks are written.
struct TimeStep {
  enum { Hours, Days, Months } Unit;
  int Count;
  const char* Pattern;
};
constexpr TimeStep kTimeSteps[] = {
    {TimeStep::Hours, 3, "mmm dd hh:nn"},  {TimeStep::Hours, 6, "mmm dd hh:nn"},
    {TimeStep::Hours, 12, "mmm dd hh:nn"}, {TimeStep::Days, 1, "yyyy mmm dd"},
    {TimeStep::Days, 2, "yyyy mmm dd"},    {TimeStep::Days, 5, "yyyy mmm dd"},
    {TimeStep::Days, 10, "yyyy mmm dd"},   {TimeStep::Months, 1, "yyyy mmm"},
    {TimeStep::Months, 2, "yyyy mmm"},     {TimeStep::Months, 3, "yyyy mmm"},
    {TimeStep::Months, 6, "yyyy mmm"},     {TimeStep::Months, 12, "yyyy"},
    {TimeStep::Months, 24, "yyyy"},        {TimeStep::Months, 60, "yyyy"},
    {TimeStep::Months, 120, "yyyy"},       {TimeStep::Months, 600, "yyyy"}};

double LengthDays(const TimeStep& step) {
  constexpr double perMonth = 30.4;
  return step.Unit == TimeStep::Hours ? step.Count / 24.0
                                      : step.Count * (step.Unit == TimeStep::Days ? 1 : perMonth);
}

std::vector<AxisTick> TicksOf(const TimeStep& step, double from, double to) {
  std::vector<AxisTick> ticks;
  const auto add = [&](orbit::TDateTime moment) {
    if (moment.Days >= from && moment.Days <= to)
      ticks.push_back({moment.Days, QString::fromStdString(orbit::FormatDateTime(step.Pattern, moment))});
  };
  if (step.Unit == TimeStep::Months) {
    const int last = orbit::TakeApart({to}).Year;
    for (int months = orbit::TakeApart({from}).Year / 50 * 50 * 12; months / 12 <= last; months += step.Count)
      add(orbit::MakeDateTime(months / 12, months % 12 + 1, 1));
    return ticks;
  }
  // Counting from a round number keeps a tick where it is when the axis grows.
  const double length = LengthDays(step);
  for (double count = std::ceil(from / length); count * length <= to; ++count) add({count * length});
  return ticks;
}

double RoundStep(double atLeast) {
  const double power = std::pow(10.0, std::floor(std::log10(atLeast)));
  for (const double times : {1.0, 2.0, 5.0}) {
    if (power * times >= atLeast * (1 - 1e-9)) return power * times;
  }
  return power * 10;
}

/// What is plotted in a panel.
struct Quantity {
  QString Title;
  double Least;
  bool IsOfStation;
  double (*Of)(const LoggedAlignment&);
};

PlotPanel PanelOf(const Quantity& quantity, std::span<const LoggedAlignment> rows,
                  const QStringList& satellites, int mostTicks) {
  PlotPanel panel;
  panel.Title = quantity.Title;
  double lowest = HUGE_VAL, highest = -HUGE_VAL;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const LoggedAlignment& one = rows[row];
    const bool isRough = one.How == FoundBy::CoastsRoughly;
    const bool isOfClock = one.StartIsFrom == swath::StartFrom::NameSecond;
    const bool isTold =
        quantity.IsOfStation ? isOfClock || one.StartIsFrom == swath::StartFrom::Stamps : !isRough;
    if (!isTold) continue;
    const double value = quantity.Of(one);
    const bool counts = !isRough && (isOfClock || !quantity.IsOfStation);
    panel.Points.push_back(
        {one.Start.Days, value, static_cast<int>(satellites.indexOf(one.Satellite)), row, counts});
    lowest = std::fmin(lowest, value);
    highest = std::fmax(highest, value);
  }
  if (panel.Points.empty()) lowest = highest = 0;
  panel.Values = ValueAxis(lowest, highest, quantity.Least, mostTicks);
  const auto addMedian = [&](int satellite) {
    std::vector<double> values;
    for (const PlotPoint& point : panel.Points) {
      if (point.Counts && (satellite < 0 || point.Satellite == satellite)) values.push_back(point.Value);
    }
    if (!values.empty()) panel.Medians.push_back({MedianOf(std::move(values)), satellite});
  };
  if (quantity.IsOfStation) addMedian(-1);
  for (int satellite = 0; !quantity.IsOfStation && satellite < satellites.size(); ++satellite)
    addMedian(satellite);
  return panel;
}

}  // namespace

PlotAxis ValueAxis(double lowest, double highest, double least, int mostTicks) {
  const double middle = (lowest + highest) / 2, half = std::fmax(highest - lowest, least) / 2;
  const double step = RoundStep(2 * half / std::max(mostTicks - 1, 1));
  PlotAxis axis{
      std::floor((middle - half) / step + 1e-9) * step, std::ceil((middle + half) / step - 1e-9) * step, {}};
  const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
  const auto count = std::lround((axis.To - axis.From) / step);
  for (long tick = 0; tick <= count; ++tick) {
    // Adding zero makes −0 a 0.
    const double at = std::round(axis.From / step + static_cast<double>(tick)) * step + 0.0;
    axis.Ticks.push_back({at, QString::number(at, 'f', decimals).replace(u'-', QChar(0x2212))});
  }
  return axis;
}

PlotAxis TimeAxis(double first, double last, int mostTicks) {
  const double margin = std::fmax((last - first) * kMargin, (1 - (last - first)) / 2);
  PlotAxis axis{first - margin, last + margin, {}};
  for (const TimeStep& step : kTimeSteps) {
    if ((axis.To - axis.From) / LengthDays(step) > std::max(mostTicks, 1)) continue;
    axis.Ticks = TicksOf(step, axis.From, axis.To);
    break;
  }
  return axis;
}

AlignmentPlot PlotOf(std::span<const LoggedAlignment> rows, int mostTimeTicks, int mostValueTicks) {
  AlignmentPlot plot;
  if (rows.empty()) return plot;
  for (const LoggedAlignment& one : rows) {
    if (!plot.Satellites.contains(one.Satellite)) plot.Satellites.append(one.Satellite);
  }
  plot.Satellites.sort(Qt::CaseInsensitive);
  const auto days = [](const LoggedAlignment& one) { return one.Start.Days; };
  plot.Time = TimeAxis(std::ranges::min(rows, {}, days).Start.Days,
                       std::ranges::max(rows, {}, days).Start.Days, mostTimeTicks);
  const Quantity quantities[] = {{QStringLiteral("Clock correction, s"), kLeastClockS, true,
                                  [](const LoggedAlignment& one) { return one.ClockS; }},
                                 {QStringLiteral("Roll, °"), kLeastDeg, false,
                                  [](const LoggedAlignment& one) { return one.Offsets.RollDeg; }},
                                 {QStringLiteral("Yaw, °"), kLeastDeg, false,
                                  [](const LoggedAlignment& one) { return one.Offsets.YawDeg; }}};
  for (const Quantity& quantity : quantities)
    plot.Panels.push_back(PanelOf(quantity, rows, plot.Satellites, mostValueTicks));
  return plot;
}

}  // namespace pelorin::align
