#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <stdexcept>

#include "align/picture_alignment.h"
#include "overlay/master_surface.h"
#include "overlay/overlay_generator.h"
#include "overlay/overlay_master.h"
#include "tests/support/painted_pass.h"
#include "tests/support/tables.h"

/// A picture that finds its place, beside the making of its map: both on one core.
namespace {

using namespace pelorin;

struct Scene {
  swath::Recording Recording;
  QImage Picture;
};

/// Ten minutes over Europe, northward, with clouds and noise.
Scene PaintedScene(const tests::PaintedEarth& earth, const swath::LineShape& line, double rowsPerSecond) {
  Scene scene;
  swath::Recording& recording = scene.Recording;
  recording.Elements = std::make_shared<const orbit::TSatellite>(tests::DemonstrationSatellite("NOAA 19"));
  recording.SeenBy = {"scanner", line, rowsPerSecond, false};
  recording.Start = orbit::MakeDateTime(2022, 2, 23, 17, 42);
  recording.Rows = static_cast<int>(600 * rowsPerSecond);
  recording.Columns = line.Columns;
  scene.Picture = tests::PaintedPass(recording, earth, {0.35, 6});
  return scene;
}

struct World {
  QTemporaryDir Folder;
  tests::PaintedEarth Painted;
  std::optional<overlay::MasterView> Master;
  std::optional<overlay::Topography> Elevations =
      overlay::Topography::Open(QStringLiteral(PELORIN_BUILT_DATA "/etopo5.elev"));
  std::optional<lines::FineLines> Shores =
      lines::FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"));

  World() {
    const QString path = Folder.filePath(QStringLiteral("Overlay.bmp"));
    overlay::GenerateMaster(
        QStringLiteral(PELORIN_BUILT_DATA "/Countries.dat"), path, [](const QString&) {},
        [](const QString&) { return true; });
    Master = overlay::MasterView::Open(path);
  }
  static const World& Only() {
    static const World world;
    return world;
  }
};

Scene SceneOf(const benchmark::State& state) {
  return state.range(0) == 909
             ? PaintedScene(World::Only().Painted, {909, 110.74, swath::ScanLaw::Zones}, 2)
             : PaintedScene(World::Only().Painted, {1568, 110.1, swath::ScanLaw::EvenAngles}, 6.498);
}

void AlignPictureOf(benchmark::State& state) {
  const Scene scene = SceneOf(state);
  swath::Recording recording = scene.Recording;
  recording.OffsetS += 90;
  const align::Ground ground{overlay::SurfacesIn(*World::Only().Master), &*World::Only().Shores};
  for (auto _ : state) {
    const auto found =
        align::AlignPicture(recording, std::span(&scene.Picture, 1), ground, {}, [](double) { return true; });
    if (found.Is != align::Finding::Found) throw std::logic_error("The picture was not found");
  }
}
BENCHMARK(AlignPictureOf)->Arg(909)->Arg(1568)->Unit(benchmark::kMillisecond);

/// With the topography and the coasts, watched growing: on this thread alone.
void MapOfSamePicture(benchmark::State& state) {
  overlay::OverlayRequest request;
  request.Picture = SceneOf(state).Recording;
  request.DurationMinutes = 0;
  request.Overlay = overlay::Marks::All;
  const overlay::OverlaySources sources{{&*World::Only().Elevations, nullptr}, &*World::Only().Master};
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        overlay::GenerateOverlay(request, sources, [](const overlay::LineProgress&) { return true; }));
  }
}
BENCHMARK(MapOfSamePicture)->Arg(909)->Arg(1568)->Unit(benchmark::kMillisecond);

}  // namespace
