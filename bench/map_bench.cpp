#include <benchmark/benchmark.h>

#include "map/satellite_info.h"
#include "map/satellite_plot.h"
#include "orbit/element_file.h"

namespace {

using namespace pelorin;

/// `count` near-Earth satellites, no two at one place.
std::vector<orbit::TSatellite> Fleet(int count) {
  std::vector<orbit::RejectedSet> rejected;
  auto sets = orbit::ReadAllElementSets(PELORIN_DEMO_ELEMENTS, rejected);
  std::vector<orbit::TSatellite> fleet;
  for (int i = 0; i < count; ++i) {
    fleet.push_back(sets[static_cast<std::size_t>(i) % sets.size()]);
    fleet.back().Propagator = {};
    fleet.back().MeanAnomaly += 0.01 * i;
  }
  return fleet;
}

QSize TextSize(const QString& text) { return {6 * static_cast<int>(text.size()), 10}; }

/// A step of the map's clock: everything is propagated, and the lists to draw are made.
void MapStep(benchmark::State& state, int footprintLevel) {
  auto fleet = Fleet(static_cast<int>(state.range(0)));
  std::vector<const orbit::TSatellite*> active;
  for (const orbit::TSatellite& satellite : fleet) active.push_back(&satellite);
  const map::MapFrame frame{1600, 800, false};
  const orbit::Observer station = orbit::ObserverFromDegrees(55.905, -3.2, 150);
  orbit::TDateTime time = orbit::MakeDateTime(2022, 2, 23);
  map::SkyKeeper keeper;
  for (auto _ : state) {
    time.Days += 1.0 / 86400;
    const map::Sky& sky = keeper.At(active, time, map::TrailMinutes(footprintLevel));
    benchmark::DoNotOptimize(map::PlotSatellites(sky, frame, active.front(), footprintLevel, TextSize));
    benchmark::DoNotOptimize(map::InfoOf(*active.front(), sky.Satellites.front().State, sky.Jd, station));
  }
}
BENCHMARK_CAPTURE(MapStep, NoFootprints, map::kFootprintNone)
    ->Arg(100)
    ->Arg(1000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(MapStep, AllFootprints, map::kFootprintAll)
    ->Arg(100)
    ->Arg(1000)
    ->Unit(benchmark::kMicrosecond);

/// The same moment once more: another size, another satellite selected.
void MapResized(benchmark::State& state) {
  auto fleet = Fleet(1000);
  std::vector<const orbit::TSatellite*> active;
  for (const orbit::TSatellite& satellite : fleet) active.push_back(&satellite);
  const orbit::TDateTime time = orbit::MakeDateTime(2022, 2, 23);
  map::SkyKeeper keeper;
  int width = 800;
  for (auto _ : state) {
    const map::Sky& sky = keeper.At(active, time, map::TrailMinutes(map::kFootprintAll));
    benchmark::DoNotOptimize(
        map::PlotSatellites(sky, {++width, 800, false}, active.front(), map::kFootprintAll, TextSize));
  }
}
BENCHMARK(MapResized)->Unit(benchmark::kMicrosecond);

}  // namespace
