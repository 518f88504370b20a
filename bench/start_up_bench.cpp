// From process start to a painted window, as the user waits for it: every run is a process of its own. The
// yardstick is an empty window of the same toolkit on the same platform.
//
// start_up_bench [runs]; QT_QPA_PLATFORM says on which platform, "offscreen" if it is not set.

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

#include "app/settings.h"
#include "desktop/program.h"

namespace {

constexpr int kSets = 200;
constexpr int kUsualRuns = 15;

/// Ends the process as soon as a main window has been painted.
class EndWhenPainted : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest && qobject_cast<QMainWindow*>(receiver) != nullptr) {
      receiver->event(event);
      std::_Exit(0);
    }
    return false;
  }
};

void WatchForPainting() { qApp->installEventFilter(new EndWhenPainted(qApp)); }

int EmptyWindow(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(1120, 760);
  window.show();
  return QApplication::exec();
}

/// Element sets of many satellites out of a few: every copy has a number and a name of its own. They are of
/// today, since older ones would be told in a box before the window is painted.
void WriteElements(const QString& path) {
  QFile source(QStringLiteral(PELORIN_DEMO_ELEMENTS)), target(path);
  if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly)) std::abort();
  const QList<QByteArray> lines = source.readAll().split('\n');
  const int sets = static_cast<int>(lines.size()) / 3;
  for (int copy = 0; copy < kSets; ++copy) {
    const int first = copy % sets * 3;
    const QByteArray number = QByteArray::number(10000 + copy);
    const QDate today = QDate::currentDate();
    const QByteArray epoch = today.toString(QStringLiteral("yy")).toLatin1() +
                             QByteArray::number(today.dayOfYear()).rightJustified(3, '0') + ".00000000";
    target.write(lines[first].trimmed() + ' ' + number + '\n');
    target.write(QByteArray(lines[first + 1]).replace(2, 5, number).replace(18, 14, epoch) + '\n');
    target.write(QByteArray(lines[first + 2]).replace(2, 5, number) + '\n');
  }
}

double MedianMs(const QString& program, const QString& role, int runs) {
  std::vector<double> times;
  for (int run = 0; run <= runs; ++run) {
    QElapsedTimer clock;
    clock.start();
    if (QProcess::execute(program, {role}) != 0) return -1;
    if (run > 0) times.push_back(static_cast<double>(clock.nsecsElapsed()) * 1e-6);  // the first one warms up
  }
  std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
  return times[static_cast<std::size_t>(runs / 2)];
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view role = argc > 1 ? argv[1] : "";
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (role == "empty" || role == "pelorin") {
    qAddPreRoutine(WatchForPainting);
    int one = 1;
    return role == "empty" ? EmptyWindow(one, argv) : pelorin::desktop::RunProgram(one, argv);
  }

  QCoreApplication application(argc, argv);
  const int runs = role.empty() ? kUsualRuns : std::max(1, std::atoi(argv[1]));
  const QTemporaryDir folder;
  WriteElements(folder.filePath(QStringLiteral("many.tle")));
  const pelorin::app::RegistryStore store(folder.path());
  pelorin::app::Settings settings(store, QStringLiteral("start_up_bench"), {});
  settings.ObserverHeight.Value = QStringLiteral("150");
  settings.TwoLineDataPath.Value = settings.ResultsPath.Value = folder.path() + u'/';
  settings.SatelliteList.Value = QStringLiteral("\"NOAA 15 10023\",\"NOAA 19 10034\"");
  settings.Save();
  qputenv("PELORIN_CONFIG_DIR", folder.path().toUtf8());
  qputenv("PELORIN_DATA_DIR", folder.path().toUtf8());

  const QString program = QCoreApplication::applicationFilePath();
  const double empty = MedianMs(program, QStringLiteral("empty"), runs);
  const double pelorin = MedianMs(program, QStringLiteral("pelorin"), runs);
  std::printf(
      "to a painted window, median of %d runs\n  empty window %.0f ms\n  Pelorin with %d element sets %.0f "
      "ms, "
      "%.1f times the empty one\n",
      runs, empty, kSets, pelorin, pelorin / empty);
  return empty > 0 && pelorin > 0 ? 0 : 1;
}
