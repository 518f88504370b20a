#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "elements/known_sets.h"
#include "orbit/julian_date.h"
#include "overlay/flight_replay.h"
#include "overlay/overlay_generator.h"
#include "overlay/overlay_master.h"
#include "overlay/overlay_outputs.h"
#include "overlay/picture_blend.h"
#include "overlay/scan_line.h"

namespace {

using namespace pelorin::overlay;
namespace orbit = pelorin::orbit;
namespace swath = pelorin::swath;

const QString kCountries = QStringLiteral(PELORIN_BUILT_DATA "/Countries.dat");

bool AnyMemory(const QString&) { return true; }

orbit::TSatellite Noaa19() {
  return *pelorin::elements::KnownSets(PELORIN_DEMO_ELEMENTS, {}).Find("NOAA 19");
}

/// Master, topography and request of a quarter of an hour with everything on.
struct Pass {
  QTemporaryDir folder;
  std::optional<Topography> topography = Topography::Open(QStringLiteral(PELORIN_BUILT_DATA "/etopo5.elev"));
  std::optional<MasterView> master;
  OverlayRequest request;

  Pass() {
    const QString path = folder.filePath(QStringLiteral("Overlay.bmp"));
    GenerateMaster(
        kCountries, path, [](const QString&) {}, AnyMemory);
    master = MasterView::Open(path);
    request.Satellite = Noaa19();
    request.Station = orbit::ObserverFromDegrees(55.905, -3.2, 150);
    request.Start = orbit::MakeDateTime(2022, 2, 23, 8, 29);
    request.Overlay = Marks::All;
    request.PassDetails = true;
  }
  OverlaySources Sources() const { return {{&*topography, nullptr}, &*master}; }
};

void GroundPointsOfOneLine(benchmark::State& state) {
  const orbit::TSatellite satellite = Noaa19();
  const swath::GroundTrack track = swath::TrackAt(satellite, satellite.Epoch);
  const swath::ScanDistances distances =
      swath::ScanDistancesOf(swath::ScannerFamily::Noaa, track.Below.Altitude);
  swath::GroundLine line;
  for (auto _ : state) {
    swath::FillGroundLine(track, distances, line);
    benchmark::DoNotOptimize(line);
  }
}
BENCHMARK(GroundPointsOfOneLine)->Unit(benchmark::kMicrosecond);

/// The same with the library's arctangents, point by point: what the line above is measured against.
void GroundPointsOneByOne(benchmark::State& state) {
  const orbit::TSatellite satellite = Noaa19();
  const swath::GroundTrack track = swath::TrackAt(satellite, satellite.Epoch);
  const swath::ScanDistances distances =
      swath::ScanDistancesOf(swath::ScannerFamily::Noaa, track.Below.Altitude);
  for (auto _ : state) {
    for (const double distance : distances) benchmark::DoNotOptimize(swath::PointAcross(track, distance));
  }
}
BENCHMARK(GroundPointsOneByOne)->Unit(benchmark::kMicrosecond);

void OneScanLine(benchmark::State& state) {
  Pass pass;
  const swath::GroundTrack track = swath::TrackAt(pass.request.Satellite, pass.request.Satellite.Epoch);
  const swath::ScanDistances distances =
      swath::ScanDistancesOf(swath::ScannerFamily::Noaa, track.Below.Altitude);
  const GroundColours colours({&*pass.topography, nullptr}, &*pass.master, Marks::All);
  const ScanLineWriter writer(colours);
  swath::GroundLine line;
  std::vector<std::uint32_t> pixels(kUsualLineWidth);
  std::vector<std::uint8_t> indices(kUsualLineWidth);
  for (auto _ : state) {
    swath::FillGroundLine(track, distances, line);
    writer.Write(line, MinuteMarker::None, true, pixels, indices);
    benchmark::DoNotOptimize(pixels.data());
  }
}
BENCHMARK(OneScanLine)->Unit(benchmark::kMicrosecond);

void MapOfFifteenMinutes(benchmark::State& state) {
  const Pass pass;
  for (auto _ : state) benchmark::DoNotOptimize(GenerateOverlay(pass.request, pass.Sources()));
}
BENCHMARK(MapOfFifteenMinutes)->Unit(benchmark::kMillisecond);

/// A tick after five seconds: ten lines, some of them moving the full picture on.
void FlightTick(benchmark::State& state) {
  const Pass pass;
  FlightReplay flight;
  orbit::TDateTime now = pass.request.Start;
  flight.Start(pass.request.Satellite, pass.Sources(), Marks::All, true, now, 1200);
  flight.Tick(now);
  for (auto _ : state) {
    now.Days += 5.0 / 86400;
    benchmark::DoNotOptimize(flight.Tick(now));
  }
}
BENCHMARK(FlightTick)->Unit(benchmark::kMicrosecond);

void BlendMapAndPicture(benchmark::State& state) {
  const Pass pass;
  const OverlayResult result = GenerateOverlay(pass.request, pass.Sources());
  const QImage picture = result.Map.copy(86, 0, 909, result.Map.height());
  const MapLayer layer{result.Map, pass.request.SouthBound, result.LinesMade};
  for (auto _ : state) benchmark::DoNotOptimize(BlendPicture(picture, layer, 50));
}
BENCHMARK(BlendMapAndPicture)->Unit(benchmark::kMillisecond);

void WriteFourFiles(benchmark::State& state) {
  const Pass pass;
  const OverlayResult result = GenerateOverlay(pass.request, pass.Sources());
  for (auto _ : state) WriteOverlayOutputs(result, true, pass.folder.path());
}
BENCHMARK(WriteFourFiles)->Unit(benchmark::kMillisecond);

void MasterFromCountries(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(DrawMaster(LoadPolygons(kCountries), [](const QString&) {}));
}
BENCHMARK(MasterFromCountries)->Unit(benchmark::kMillisecond);

void WriteMasterFile(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("Overlay.bmp"));
  for (auto _ : state)
    GenerateMaster(
        kCountries, path, [](const QString&) {}, AnyMemory);
}
BENCHMARK(WriteMasterFile)->Unit(benchmark::kMillisecond);

}  // namespace
