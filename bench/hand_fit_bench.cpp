// A line that is pulled with the mouse: from the pointer's step to the picture on the screen, and how long
// the mode takes to begin and a point to be let go.
//
// hand_fit_bench [frames]; QT_QPA_PLATFORM says on which platform, "offscreen" if it is not set.

#include <QApplication>
#include <QMouseEvent>
#include <QScrollArea>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

#include "desktop/overlay/hand_fit.h"
#include "desktop/overlay/hand_fit_bar.h"
#include "desktop/overlay/picture_view.h"
#include "orbit/element_file.h"
#include "session/qt_prompts.h"

namespace {

using namespace pelorin;

constexpr int kUsualFrames = 60;

swath::Recording Pass(const char* name, const swath::LineShape& line, double rowsPerSecond, int rows,
                      orbit::TDateTime start) {
  swath::Recording recording;
  std::vector<orbit::RejectedSet> rejected;
  for (const orbit::TSatellite& set : orbit::ReadAllElementSets(PELORIN_DEMO_ELEMENTS, rejected)) {
    if (set.Name == name) recording.Elements = std::make_shared<const orbit::TSatellite>(set);
  }
  recording.Start = start;
  recording.SeenBy = {"", line, rowsPerSecond, false};
  recording.Rows = rows;
  recording.Columns = line.Columns;
  return recording;
}

/// Processor time since the last start: all of it is work, and others may be at work on the machine.
class Clock {
 public:
  void Start() { start_ = std::clock(); }
  double Ms() const { return 1e3 * static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }

 private:
  std::clock_t start_ = std::clock();
};

void Send(QWidget* view, QEvent::Type type, QPointF at) {
  const bool isMove = type == QEvent::MouseMove;
  QMouseEvent event(type, at, view->mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                    {});
  QCoreApplication::sendEvent(view, &event);
}

void Measure(const char* label, const swath::Recording& recording, const lines::FineLines& lines,
             QSize window, int frames) {
  session::QtPrompts boxes(QStringLiteral("Pelorin"), [](int) {});
  QScrollArea area;
  area.resize(window);
  auto* view = new desktop::TPictureView;
  area.setWidget(view);
  QImage picture(recording.Columns, recording.Rows, QImage::Format_RGB32);
  picture.fill(Qt::darkGray);
  view->SetPicture(picture);
  view->resize(window.width(), window.width() * recording.Rows / recording.Columns);
  area.show();
  desktop::THandFitBar bar(nullptr);
  desktop::THandFit fit(boxes, view, &bar, nullptr);
  Clock clock;
  clock.Start();
  fit.Begin(recording, lines);
  const double begin = clock.Ms();
  QCoreApplication::processEvents();

  std::size_t points = 0;
  QPointF from;
  const QRect seen = view->visibleRegion().boundingRect().adjusted(40, 40, -40, -40);
  for (const lines::PixelLine& line : view->Marks().Lines->Shores) {
    points += line.size();
    const QPointF at = view->Scale().OnView(line.front());
    if (seen.contains(at.toPoint())) from = at;
  }
  Send(view, QEvent::MouseButtonPress, from);
  std::vector<double> times;
  for (int frame = 0; frame < frames; ++frame) {
    clock.Start();
    Send(view, QEvent::MouseMove, from + 20 * QPointF(std::sin(frame * 0.3), std::cos(frame * 0.3)));
    view->repaint();
    times.push_back(clock.Ms());
  }
  clock.Start();
  Send(view, QEvent::MouseButtonRelease, from + QPointF(3, 5));
  const double drop = clock.Ms();
  std::ranges::sort(times);
  std::printf(
      "%s, %zu points of shores, %d x %d: a frame %.1f ms, the slowest of %d %.1f ms; begin %.0f ms, let go "
      "%.0f ms\n",
      label, points, window.width(), window.height(), times[times.size() / 2], frames, times.back(), begin,
      drop);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const int frames = argc > 1 ? std::max(1, std::atoi(argv[1])) : kUsualFrames;
  QApplication application(argc, argv);
  const auto lines = lines::FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"));
  if (!lines) {
    std::puts("hand_fit_bench: no map data");
    return 1;
  }
  const swath::Recording apt =
      Pass("NOAA 19", {909, 110.74, swath::ScanLaw::Zones}, 2, 1800, orbit::MakeDateTime(2022, 2, 23, 7, 45));
  const swath::Recording lrpt = Pass("METEOR M2", {1568, 110.1, swath::ScanLaw::EvenAngles}, 6.498, 5000,
                                     orbit::MakeDateTime(2022, 2, 23, 17, 33));
  for (const QSize window : {QSize(440, 400), QSize(1568, 860)}) {
    Measure("909 x 1,800", apt, *lines, window, frames);
    Measure("1,568 x 5,000", lrpt, *lines, window, frames);
  }
  return 0;
}
