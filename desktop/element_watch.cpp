#include "desktop/element_watch.h"

#include <QApplication>
#include <QDateTime>
#include <QFileInfo>

#include "orbit/element_file.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

/// Files that are copied come piece by piece, and one after the other.
constexpr int kSettlingMs = 1500;

QStringList FilesOf(const session::Session& session) {
  QStringList files;
  for (const std::filesystem::path& file : orbit::ElementFilesIn(session.Satellites().Folder())) {
    files.append(QString::fromStdU16String(file.u16string()));
  }
  return files;
}

QString Fingerprint(const QStringList& files) {
  QString text;
  for (const QString& file : files) {
    const QFileInfo info(file);
    text +=
        QStringLiteral("%1 %2 %3\n").arg(file).arg(info.size()).arg(info.lastModified().toMSecsSinceEpoch());
  }
  return text;
}

}  // namespace

ElementWatch::ElementWatch(session::Session& session, QObject* parent)
    : QObject(parent),
      session_(session),
      timerSettled_(session::Named(new QTimer(this), "TimerElementsSettled")) {
  timerSettled_->setInterval(kSettlingMs);
  timerSettled_->setSingleShot(true);
  session::Handle(timerSettled_, &QTimer::timeout, this, &ElementWatch::TimerSettledTimer);
  const auto wait = [this] { timerSettled_->start(); };
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, wait);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, wait);
  session::Handle(&session, &session::Session::SatellitesReloaded, this, &ElementWatch::Watch);
  Watch();
}

void ElementWatch::Watch() {
  const QString folder = QString::fromStdU16String(session_.Satellites().Folder().u16string());
  const QStringList files = FilesOf(session_);
  known_ = Fingerprint(files);
  // A file that was replaced is watched no longer.
  if (const QStringList before = watcher_.directories() + watcher_.files(); !before.isEmpty()) {
    watcher_.removePaths(before);
  }
  if (QFileInfo(folder).isDir()) watcher_.addPaths(files + QStringList(folder));
}

void ElementWatch::TimerSettledTimer() {
  if (session_.Run.MakingMap || QApplication::activeModalWidget() != nullptr) {
    timerSettled_->start();
    return;
  }
  if (session_.Run.Closing || Fingerprint(FilesOf(session_)) == known_) return;
  session_.ReloadSatellites();
  session_.Window.SetStatus(QStringLiteral("The element files have changed and are in use: %1 satellites")
                                .arg(session_.Satellites().Count()));
}

}  // namespace pelorin::desktop
