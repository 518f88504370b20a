// "Make map" of a quarter of an hour, as the user presses it in a window that stays live, against the same
// generation and writing without a window; then a step of the roll, until the map of a picture of 1,568 ×
// 1,800 has followed on the screen.
//
// live_map_bench [runs]; QT_QPA_PLATFORM says on which platform, "offscreen" if it is not set.

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPushButton>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "app/settings.h"
#include "desktop/form_main.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "files/atomic_file.h"
#include "overlay/overlay_outputs.h"
#include "session/qt_prompts.h"
#include "swath/scanner_match.h"

namespace {

using namespace pelorin;

constexpr int kUsualRuns = 15;
const orbit::TDateTime kNow = orbit::MakeDateTime(2022, 2, 23, 8, 29);

template <class Work>
double MedianMs(int runs, const Work& work) {
  std::vector<double> times;
  for (int run = 0; run <= runs; ++run) {
    QElapsedTimer clock;
    clock.start();
    work();
    if (run > 0) times.push_back(static_cast<double>(clock.nsecsElapsed()) * 1e-6);  // the first one warms up
    for (int pause = 0; pause < 5; ++pause) QCoreApplication::processEvents();
  }
  std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
  return times[static_cast<std::size_t>(runs / 2)];
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : kUsualRuns;
  QApplication application(argc, argv);
  const QTemporaryDir folder;
  // The master is drawn here, whatever an installed program keeps in the user's cache.
  qputenv("XDG_CACHE_HOME", folder.path().toUtf8());
  QDir(folder.path()).mkdir(QStringLiteral("bin"));
  QDir(folder.path()).mkdir(QStringLiteral("share"));
  QFile::link(QStringLiteral(PELORIN_BUILT_DATA), folder.filePath(QStringLiteral("share/pelorin")));
  QFile::copy(QStringLiteral(PELORIN_DEMO_ELEMENTS), folder.filePath(QStringLiteral("bin/weather.2li")));
  files::ReplaceFile(folder.filePath(QStringLiteral("bin/pelorin-portable.txt")), "");
  const app::RegistryStore store(folder.filePath(QStringLiteral("config")));
  app::Settings settings(store, QStringLiteral("pelorin"), {});
  settings.ObserverHeight.Value = QStringLiteral("150");
  settings.TwoLineDataPath.Value = settings.ResultsPath.Value = folder.filePath(QStringLiteral("bin/"));
  settings.SatelliteList.Value = QStringLiteral("\"NOAA 19\"");
  settings.ShowOverlay.Value = settings.SavePassDetails.Value = true;
  settings.Save();
  session::QtPrompts boxes(QStringLiteral("Pelorin"), [](int) {});
  desktop::TFormMain form({store, folder.filePath(QStringLiteral("bin/pelorin")), boxes, nullptr,
                           [] { return kNow; }, app::TimeZone(), [](const QString&) {}, [](desktop::Look) {},
                           desktop::LoadBackdropAhead(folder.filePath(QStringLiteral("bin/")))});
  form.CreateForms();
  form.show();
  form.ShowPage(session::Page::GroundPath);
  auto* makeMap = form.findChild<QPushButton*>(QStringLiteral("ButtonGenTopo"));

  const auto topography = overlay::Topography::Open(QStringLiteral(PELORIN_BUILT_DATA "/etopo5.elev"));
  const auto master = overlay::MasterView::Open(folder.filePath(QStringLiteral("bin/Overlay.bmp")));
  if (!topography || !master || form.Shared().Active().empty()) {
    std::puts("live_map_bench: no map data or no elements");
    return 1;
  }
  overlay::OverlayRequest request;
  swath::TakeElements(*form.Shared().Active().front().Satellite, swath::ScannerTable(), request.Picture);
  request.Station = form.Shared().Station.Place;
  request.Picture.Start = kNow;
  request.Picture.Lies.Turned = true;
  request.Overlay = overlay::Marks::All;
  request.PassDetails = true;
  const double bare = MedianMs(runs, [&] {
    const auto result = overlay::GenerateOverlay(request, {{&*topography, nullptr}, &*master});
    overlay::WriteOverlayOutputs(result, true, folder.path());
  });
  const double live = MedianMs(runs, [&] { makeMap->click(); });
  std::printf("without a window %.1f ms, in the live window %.1f ms: %.2f times as long\n", bare, live,
              live / bare);

  QImage received(1568, 1800, QImage::Format_RGB32);
  received.fill(Qt::darkGray);
  const QString file = folder.filePath(QStringLiteral("METEOR-M2_20220223_173312.png"));
  received.save(file);
  form.findChild<desktop::TTabSheetGroundPath*>()->OpenPath(file);
  makeMap->click();
  auto* roll = form.findChild<QDoubleSpinBox*>(QStringLiteral("SpinEditRoll"));
  const double step = MedianMs(runs, [&] {
    roll->stepUp();
    QCoreApplication::processEvents();
  });
  std::printf("a step of the roll, 1,568 x 1,800: %.1f ms\n", step);
  return 0;
}
