#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "elements/known_sets.h"
#include "orbit/element_file.h"
#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/pass_search.h"
#include "orbit/propagation.h"

namespace {

using namespace pelorin::orbit;
namespace elements = pelorin::elements;

TSatellite Named(const char* file, const char* name) { return *elements::KnownSets(file, {}).Find(name); }

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
  auto sets = ReadAllElementSets(PELORIN_DEMO_ELEMENTS, rejected);
  std::erase_if(sets, [](const TSatellite& set) { return set.IsDeepSpace; });
  sets.resize(10);
  const Observer observer = ObserverFromDegrees(55.905, -3.2, 150);
  std::size_t passes = 0;
  for (auto _ : state) {
    passes = 0;
    for (const TSatellite& set : sets) {
      passes += SearchPasses(set, observer, {MakeDateTime(2022, 2, 23), 28, 1.5}).size();
    }
  }
  state.counters["passes"] = static_cast<double>(passes);
}
BENCHMARK(PassListOfTenSatellitesFor28Days)->Unit(benchmark::kMillisecond);

/// The same sets in each form; `file` tells which.
std::string ElementFile(std::string_view file, std::int64_t sets) {
  const bool csv = file.ends_with("csv"), json = file.ends_with("json");
  std::ostringstream text;
  if (csv) {
    text << "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,"
            "ARG_OF_PERICENTER,MEAN_ANOMALY,EPHEMERIS_TYPE,CLASSIFICATION_TYPE,NORAD_CAT_ID,ELEMENT_SET_NO,"
            "REV_AT_EPOCH,BSTAR,MEAN_MOTION_DOT,MEAN_MOTION_DDOT\r\n";
  }
  for (std::int64_t i = 0; i < sets; ++i) {
    const std::string name = "SATELLITE " + std::to_string((i * 7919) % 100000);
    const std::string number = std::to_string(10000 + i);
    if (csv) {
      text << name << ",1991-032A,1999-02-03T05:02:05.265024,14.22950462,.001325,98.5313,39.9325,4.9627,"
           << "355.168,0,U," << number << ",148,40111,.13981E-3,.272E-5,0\r\n";
    } else if (json) {
      text << (i == 0 ? "[" : ",") << "{\"OBJECT_NAME\":\"" << name
           << "\",\"OBJECT_ID\":\"1991-032A\",\"EPOCH\":\"1999-02-03T05:02:05.265024\","
              "\"MEAN_MOTION\":14.22950462,\"ECCENTRICITY\":0.001325,\"INCLINATION\":98.5313,"
              "\"RA_OF_ASC_NODE\":39.9325,\"ARG_OF_PERICENTER\":4.9627,\"MEAN_ANOMALY\":355.168,"
              "\"EPHEMERIS_TYPE\":0,\"CLASSIFICATION_TYPE\":\"U\",\"NORAD_CAT_ID\":"
           << number
           << ",\"ELEMENT_SET_NO\":148,\"REV_AT_EPOCH\":40111,\"BSTAR\":0.00013981,"
              "\"MEAN_MOTION_DOT\":2.72e-6,\"MEAN_MOTION_DDOT\":0}"
           << (i + 1 == sets ? "]" : "");
    } else {
      text << name << "\r\n1 " << number
           << "U 91032A   99034.20978316  .00000272  00000-0  13981-3 0  1482\r\n2 " << number
           << "  98.5313  39.9325 0013250   4.9627 355.1680 14.22950462401115\r\n";
    }
  }
  return text.str();
}

void LoadElementFolder(benchmark::State& state, const char* fileName) {
  const auto folder = std::filesystem::temp_directory_path() / "pelorin-bench-elements";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / fileName, std::ios::binary) << ElementFile(fileName, state.range(0));
  int count = 0;
  for (auto _ : state) count = elements::KnownSets(folder, {}).Satellites().Count();
  state.counters["sets"] = count;
  std::filesystem::remove_all(folder);
}
BENCHMARK_CAPTURE(LoadElementFolder, TwoLine, "many.2li")
    ->Arg(5000)
    ->Arg(15000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LoadElementFolder, Csv, "many.csv")->Arg(15000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LoadElementFolder, Json, "many.json")->Arg(15000)->Unit(benchmark::kMillisecond);

}  // namespace
