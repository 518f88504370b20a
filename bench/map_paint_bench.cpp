#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>

#include "desktop/map/paint_box_grid.h"
#include "desktop/map/paint_box_sats.h"
#include "orbit/element_file.h"

namespace {

using namespace pelorin;

/// Widgets need an application, though nobody sees them.
void StartWidgets() {
  static int argumentCount = 1;
  static char name[] = "pelorin_bench";
  static char* arguments[] = {name, nullptr};
  if (QCoreApplication::instance() == nullptr) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(argumentCount, arguments);
  }
}

/// Both layers over each other, as on the page.
class MapLayers : public QWidget {
 public:
  MapLayers(int satellites, QSize size) : grid_(this), sats_(this) {
    resize(size);
    grid_.resize(size);
    sats_.resize(size);
    const map::MapFrame frame{size.width(), size.height(), false};
    grid_.SetFrame(frame);
    backdrop_.fill(qRgb(91, 144, 196));
    grid_.SetBackdrop(backdrop_);

    std::vector<orbit::RejectedSet> rejected;
    const auto sets = orbit::ReadAllElementSets(PELORIN_DEMO_ELEMENTS, rejected);
    std::vector<const orbit::TSatellite*> active;
    fleet_.reserve(static_cast<std::size_t>(satellites));
    for (int i = 0; i < satellites; ++i) {
      fleet_.push_back(sets[static_cast<std::size_t>(i) % sets.size()]);
      fleet_.back().Name += std::to_string(i);
      fleet_.back().Propagator = {};
      fleet_.back().MeanAnomaly += 0.01 * i;
      active.push_back(&fleet_.back());
    }
    const map::Sky sky = map::SkyAt(active, orbit::MakeDateTime(2022, 2, 23), 5);
    sats_.SetPlot(map::PlotSatellites(sky, frame, active.empty() ? nullptr : active.front(),
                                      map::kFootprintAll, sats_.Measure()));
  }

  /// The lower layer anew, as for another size.
  void DropGrid() { grid_.SetBackdrop(backdrop_); }

 private:
  QImage backdrop_{2048, 1024, QImage::Format_RGB32};
  desktop::TPaintBoxGrid grid_;
  desktop::TPaintBoxSats sats_;
  std::vector<orbit::TSatellite> fleet_;
};

/// Painting the map with all footprints once its lists are made; argument: satellites. QT_SCALE_FACTOR says
/// how many device pixels a logical one has.
void MapPaint(benchmark::State& state) {
  StartWidgets();
  MapLayers layers(static_cast<int>(state.range(0)), QSize(1600, 800));
  const double ratio = layers.devicePixelRatioF();
  QImage screen(layers.size() * ratio, QImage::Format_RGB32);
  screen.setDevicePixelRatio(ratio);
  layers.render(&screen);
  for (auto _ : state) layers.render(&screen);
}
BENCHMARK(MapPaint)->Arg(0)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// The same with the backdrop scaled and the grid drawn, as after a resize; argument: the map's width.
void MapResizedPaint(benchmark::State& state) {
  StartWidgets();
  const int width = static_cast<int>(state.range(0));
  MapLayers layers(15, QSize(width, width / 2));
  QImage screen(layers.size(), QImage::Format_RGB32);
  for (auto _ : state) {
    layers.DropGrid();
    layers.render(&screen);
  }
}
BENCHMARK(MapResizedPaint)->Arg(1100)->Arg(3840)->Unit(benchmark::kMillisecond);

}  // namespace
