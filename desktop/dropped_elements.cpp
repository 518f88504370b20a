#include "desktop/dropped_elements.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include "app/program_paths.h"
#include "elements/element_archive.h"
#include "session/hourglass.h"

namespace pelorin::desktop {
namespace {

constexpr qsizetype kMostLines = 20;

}  // namespace

QStringList ElementFilesAmong(const QMimeData& dragged) {
  const QStringList kinds{QStringLiteral("2li"), QStringLiteral("tle"), QStringLiteral("csv"),
                          QStringLiteral("json"), QStringLiteral("txt")};
  QStringList files;
  for (const QUrl& url : dragged.urls()) {
    const QFileInfo info(url.toLocalFile());
    if (url.isLocalFile() && (info.isDir() || kinds.contains(info.suffix().toLower()))) {
      files.append(info.filePath());
    }
  }
  return files;
}

void TakeDroppedElements(session::Session& session, const QStringList& files) {
  if (session.RefusesWhileMakingMap()) return;
  QStringList lines;
  {
    const session::Hourglass hourglass;
    lines = elements::ArchiveElementFiles(files, app::ElementArchiveFolder());
    session.ReloadSatellites();
  }
  if (lines.isEmpty()) lines.append(QStringLiteral("There are no element files in it."));
  QString text = lines.mid(0, kMostLines).join(u'\r');
  if (const qsizetype more = lines.size() - kMostLines; more > 0) {
    text += QStringLiteral("\rand %1 more files").arg(more);
  }
  session.Boxes.Message(
      text + QStringLiteral("\r\rThe archive has them now, and pictures and passes of their days use them."));
}

}  // namespace pelorin::desktop
