#include <algorithm>
#include <cmath>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"
#include "orbit/julian_date.h"
#include "orbit/pass_search.h"
#include "passes/pass_details.h"
#include "passes/pass_table.h"

namespace pelorin::cli {
namespace {

struct FoundPass {
  orbit::Pass Pass;
  const orbit::TSatellite* Satellite;
};

void PrintTable(const std::vector<FoundPass>& passes, const orbit::Observer& observer, bool json) {
  Table table(passes::PassColumns(), json);
  for (const FoundPass& found : passes) {
    std::vector<Cell> cells;
    for (const passes::PassCell& cell : PassRow(passes::DetailsOf(found.Pass, *found.Satellite, observer))) {
      cells.push_back(cell.IsNumber ? Cell::WrittenNumber(cell.Text) : Cell(cell.Text));
    }
    table.Add(cells);
  }
  table.Finish();
}

}  // namespace

void RunPasses(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("passes"),
      QStringLiteral(
          "Lists the passes of satellites over a station in order of their rise. The text format has a "
          "record a line: mmddhhnnss of the rise, direction, longitude, elevation, seconds, name. Longitude "
          "and elevation are those of the search, up to a minute before the satellite is highest: overhead "
          "the elevation is up to 22 degrees too low. The other formats tell the highest elevation."),
      {ElementsOption(),
       StationOption(),
       {QStringLiteral("min-elevation"), QStringLiteral("DEG"),
        QStringLiteral("Elevation from which a satellite counts as risen, 0 to 10. Default: the settings'.")},
       {QStringLiteral("from"), QStringLiteral("YYYY-MM-DD"),
        QStringLiteral("First day (UTC). Default: today.")},
       {QStringLiteral("days"), QStringLiteral("N"),
        QStringLiteral("Days from then on, 1 to 366. Default: 1.")},
       {QStringLiteral("min-seconds"), QStringLiteral("N"),
        QStringLiteral("Only passes longer than this. Default: %1.").arg(orbit::kShortestPassSeconds)},
       {QStringLiteral("satellite"), QStringLiteral("NAME"),
        QStringLiteral("Only this satellite; may be given several times. Default: all.")},
       {QStringLiteral("format"), QStringLiteral("text|csv|json"), QStringLiteral("Default: text.")},
       NewestOption()},
      list);
  const QString format = arguments.Choice(
      QStringLiteral("format"), {QStringLiteral("text"), QStringLiteral("csv"), QStringLiteral("json")});
  const app::Station station = arguments.Station();
  const orbit::PassRequest request{
      arguments.Has(QStringLiteral("from")) ? ParseDate(arguments.Text(QStringLiteral("from")))
                                            : orbit::DatePart(orbit::NowUTC()),
      arguments.Whole(QStringLiteral("days"), 1, 1, 366), station.MinElevationDeg,
      arguments.Whole(QStringLiteral("min-seconds"), orbit::kShortestPassSeconds, 0,
                      static_cast<int>(orbit::kSecondsPerDay))};
  const double middle = orbit::JulianDateOfDateTime(request.Start) + request.Days / 2.0;
  const std::vector<orbit::TSatellite> chosen = ChosenSatellites(arguments, middle);

  const auto age = [middle](const orbit::TSatellite& satellite) {
    return std::fabs(middle - satellite.Epoch);
  };
  if (!chosen.empty()) WarnOfAge(arguments, *std::ranges::max_element(chosen, {}, age), middle);

  std::vector<FoundPass> passes;
  for (const orbit::TSatellite& satellite : chosen) {
    for (const orbit::Pass& pass : orbit::SearchPasses(satellite, station.Place, request)) {
      passes.push_back({pass, &satellite});
    }
  }
  std::stable_sort(passes.begin(), passes.end(),
                   [](const FoundPass& a, const FoundPass& b) { return a.Pass.Aos < b.Pass.Aos; });
  if (format == QStringLiteral("text")) {
    for (const FoundPass& found : passes) {
      PrintOut(QString::fromStdString(found.Pass.Record.ToText()) + QLatin1Char('\n'));
    }
  } else {
    PrintTable(passes, station.Place, format == QStringLiteral("json"));
  }
}

}  // namespace pelorin::cli
