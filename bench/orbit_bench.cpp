#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "orbit/element_file.h"
#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/pass_search.h"
#include "orbit/propagation.h"
#include "orbit/satellite_list.h"

namespace {

using namespace pelorin::orbit;

TSatellite Named(const char* file, const char* name) {
  std::vector<RejectedSet> rejected;
  return *NewestElementSet(ReadAllElementSets(file, rejected), name);
}

/// The yardstick of this machine and this run: a sine and a cosine of the same angle.
void SineAndCosine(benchmark::State& state) {
  double angle = 0.3;
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::sin(angle));
    benchmark::DoNotOptimize(std::cos(angle));
    angle += 0.01;
    if (angle > 6) angle = 0.3;
  }
}
BENCHMARK(SineAndCosine);

void Propagation(benchmark::State& state, const char* name) {
  TSatellite satellite = Named(PELORIN_REFERENCE_ELEMENTS, name);
  double minutes = 0;
  for (auto _ : state) {
    Vector position, velocity;
    PropagateSinceEpoch(satellite, minutes, position, velocity);
    benchmark::DoNotOptimize(position);
    minutes = minutes < 20000 ? minutes + 0.5 : 0;
  }
}
BENCHMARK_CAPTURE(Propagation, NearEarth, "NOAA 12");
BENCHMARK_CAPTURE(Propagation, DeepSpaceNoResonance, "STR3-11801");
BENCHMARK_CAPTURE(Propagation, DeepSpaceHalfDay, "MOLNIYA 2-14");
BENCHMARK_CAPTURE(Propagation, DeepSpaceOneDay, "EUTELSAT 1-F1");

void ElevationFunction(benchmark::State& state) {
  TSatellite satellite = Named(PELORIN_DEMO_ELEMENTS, "NOAA 19");
  const ElevationFrame frame(ObserverFromDegrees(55.905, -3.2, 150));
  double jd = satellite.Epoch;
  for (auto _ : state) {
    benchmark::DoNotOptimize(frame.Elevation(SatelliteStateKm(satellite, jd).Position, jd));
    jd = jd < satellite.Epoch + 28 ? jd + 1e-4 : satellite.Epoch;
  }
}
BENCHMARK(ElevationFunction);

void PassListOfTenSatellitesFor28Days(benchmark::State& state) {
  std::vector<RejectedSet> rejected;
  auto sets = NewestOfEach(ReadAllElementSets(PELORIN_DEMO_ELEMENTS, rejected));
  std::erase_if(sets, [](const TSatellite& set) { return set.IsDeepSpace; });
  sets.resize(10);
  const Observer observer = ObserverFromDegrees(55.905, -3.2, 150);
  std::size_t passes = 0;
  for (auto _ : state) {
    passes = 0;
    for (TSatellite& set : sets) {
      passes += SearchPasses(set, observer, {MakeDateTime(2022, 2, 23), 28, 300, 1.5}).size();
    }
  }
  state.counters["passes"] = static_cast<double>(passes);
}
BENCHMARK(PassListOfTenSatellitesFor28Days)->Unit(benchmark::kMillisecond);

void LoadElementFolder(benchmark::State& state) {
  const auto folder = std::filesystem::temp_directory_path() / "pelorin-bench-elements";
  std::filesystem::create_directories(folder);
  {
    std::ofstream file(folder / "many.2li", std::ios::binary);
    for (int i = 0; i < state.range(0); ++i) {
      const std::string number = std::to_string(10000 + i);
      file << "SATELLITE " << (i * 7919) % 100000 << "\r\n1 " << number
           << "U 91032A   99034.20978316  .00000272  00000-0  13981-3 0  1482\r\n2 " << number
           << "  98.5313  39.9325 0013250   4.9627 355.1680 14.22950462401115\r\n";
    }
  }
  int count = 0;
  for (auto _ : state) count = TSatelliteList(folder).Count();
  state.counters["sets"] = count;
  std::filesystem::remove_all(folder);
}
BENCHMARK(LoadElementFolder)->Arg(5000)->Arg(15000)->Unit(benchmark::kMillisecond);

}  // namespace
