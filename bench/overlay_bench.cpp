#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "elements/known_sets.h"
#include "lines/map_lines.h"
#include "orbit/julian_date.h"
#include "overlay/flight_replay.h"
#include "overlay/overlay_generator.h"
#include "overlay/overlay_master.h"
#include "overlay/overlay_outputs.h"
#include "overlay/picture_blend.h"
#include "overlay/picture_fit.h"
#include "swath/line_of_sight.h"
#include "swath/scanner_match.h"

namespace {

using namespace pelorin::lines;
using namespace pelorin::overlay;
namespace orbit = pelorin::orbit;
namespace swath = pelorin::swath;

const QString kCountries = QStringLiteral(PELORIN_BUILT_DATA "/Countries.dat");
const QString kCoastlines = QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat");

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
    swath::TakeElements(Noaa19(), swath::ScannerTable(), request.Picture);
    request.Station = orbit::ObserverFromDegrees(55.905, -3.2, 150);
    request.Picture.Start = orbit::MakeDateTime(2022, 2, 23, 8, 29);
    request.Overlay = Marks::All;
    request.PassDetails = true;
  }
  OverlaySources Sources() const { return {{&*topography, nullptr}, &*master}; }
};

void GroundPointsOfOneLine(benchmark::State& state) {
  const Pass pass;
  const swath::Recording& recording = pass.request.Picture;
  swath::GroundLineFinder finder(recording);
  swath::GroundLine line;
  for (auto _ : state) {
    finder.Find(recording.Elements->Epoch, line);
    benchmark::DoNotOptimize(line);
  }
}
BENCHMARK(GroundPointsOfOneLine)->Unit(benchmark::kMicrosecond);

/// The same with the library's arctangents, point by point: what the line above is measured against.
void GroundPointsOneByOne(benchmark::State& state) {
  const Pass pass;
  const swath::Recording& recording = pass.request.Picture;
  const double jd = recording.Elements->Epoch;
  const swath::ScannerAxes axes =
      swath::AxesAt(swath::TrackAt(*recording.Elements, jd).Inertial, jd, false, recording.Offsets);
  const swath::LineShape& shape = recording.SeenBy.Line;
  for (auto _ : state) {
    for (int column = 0; column < shape.Columns; ++column) {
      benchmark::DoNotOptimize(swath::PointSeen(axes, swath::ColumnAngle(shape, column)));
    }
  }
}
BENCHMARK(GroundPointsOneByOne)->Unit(benchmark::kMicrosecond);

void OneScanLine(benchmark::State& state) {
  const Pass pass;
  const swath::Recording map = MapOf(pass.request.Picture, 1);
  LineMaker maker(map, pass.Sources(), Marks::All);
  const auto width = static_cast<std::size_t>(map.Columns);
  std::vector<std::uint32_t> pixels(width);
  std::vector<std::uint8_t> indices(width);
  for (auto _ : state) {
    maker.Make(map.Elements->Epoch, MinuteMarker::None, true, pixels, indices);
    benchmark::DoNotOptimize(pixels.data());
  }
}
BENCHMARK(OneScanLine)->Unit(benchmark::kMicrosecond);

/// Time a ground point is `per_point`.
void MakeMaps(benchmark::State& state, const Pass& pass) {
  for (auto _ : state) benchmark::DoNotOptimize(GenerateOverlay(pass.request, pass.Sources()));
  const swath::Recording map = MapOf(pass.request.Picture, pass.request.DurationMinutes);
  state.counters["per_point"] =
      benchmark::Counter(static_cast<double>(map.Rows) * map.SeenBy.Line.Columns,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void MapOfFifteenMinutes(benchmark::State& state) { MakeMaps(state, Pass()); }
BENCHMARK(MapOfFifteenMinutes)->UseRealTime()->Unit(benchmark::kMillisecond);

/// A picture of one of today's scanners.
void SetPicture(int columns, int rows, swath::Recording& picture) {
  picture.SeenBy = {"even", {columns, 110.6, swath::ScanLaw::EvenAngles}, 6.5};
  picture.FirstColumn = 0;
  picture.Columns = columns;
  picture.Rows = rows;
}

/// Over such pictures: columns, rows.
void MapOfPicture(benchmark::State& state) {
  Pass pass;
  SetPicture(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), pass.request.Picture);
  pass.request.DurationMinutes = 0;
  MakeMaps(state, pass);
}
BENCHMARK(MapOfPicture)->Args({1568, 5000})->Args({2048, 6000})->UseRealTime()->Unit(benchmark::kMillisecond);

/// 2,048 by 6,000 pixels from the Laptev Sea over Scandinavia to the Alps: few pictures have more coasts.
swath::Recording BusyPicture() {
  swath::Recording picture;
  swath::TakeElements(Noaa19(), swath::ScannerTable(), picture);
  picture.Start = orbit::MakeDateTime(2022, 2, 23, 7, 45);
  SetPicture(2048, 6000, picture);
  return picture;
}

/// The file opened, and the tiles read that the picture sees.
void TilesOfPicture(benchmark::State& state) {
  const swath::Recording picture = BusyPicture();
  const swath::PixelGeometry geometry(picture);
  const PictureView view = ViewOf(picture, geometry);
  for (auto _ : state) benchmark::DoNotOptimize(FineLines::Open(kCoastlines)->Lines(TilesSeen(view)));
}
BENCHMARK(TilesOfPicture)->Unit(benchmark::kMillisecond);

void LinesOfPicture(benchmark::State& state) {
  const swath::Recording picture = BusyPicture();
  const auto file = FineLines::Open(kCoastlines);
  for (auto _ : state) benchmark::DoNotOptimize(MapLinesOf(picture, &*file, {true, true, true, 10, {}}));
}
BENCHMARK(LinesOfPicture)->Unit(benchmark::kMillisecond);

/// The same, each point's pixel sought: what the mesh is measured against.
void LinesOfPictureOneByOne(benchmark::State& state) {
  const swath::Recording picture = BusyPicture();
  const auto file = FineLines::Open(kCoastlines);
  const swath::PixelGeometry geometry(picture);
  const PictureView view = ViewOf(picture, geometry);
  const std::vector<FineLine> lines = file->Lines(TilesSeen(view));
  for (auto _ : state) {
    std::vector<PixelLine> drawn;
    for (const FineLine& line : lines) AddPixelLines(view, line.Points, drawn);
    benchmark::DoNotOptimize(drawn);
  }
}
BENCHMARK(LinesOfPictureOneByOne)->Unit(benchmark::kMillisecond);

/// A tick after five seconds: ten lines, some of them moving the full picture on.
void FlightTick(benchmark::State& state) {
  const Pass pass;
  FlightReplay flight;
  orbit::TDateTime now = pass.request.Picture.Start;
  flight.Start(pass.request.Picture, pass.Sources(), Marks::All, now, 1200);
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
  const MapLayer layer{result.Map, result.Recording, 0, result.LinesMade};
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
