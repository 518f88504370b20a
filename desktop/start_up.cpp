#include "desktop/start_up.h"

#include <QDir>
#include <QFileInfo>
#include <filesystem>

#include "app/program_paths.h"
#include "app/scanner_files.h"
#include "files/atomic_file.h"
#include "files/read_file.h"
#include "orbit/element_file.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

/// The element sets that come with the program, below its data folder.
const QString kDemonstrationElements = QStringLiteral("elements/weather-2022-02-22.2li");

/// Their copy is named as element services name the group of the weather satellites, so that an update
/// replaces it.
const QString kDemonstrationCopy = QStringLiteral("weather.2li");

/// What is there already stays.
void CopyElementFiles(const QString& from, const QString& to) {
  for (const std::filesystem::path& file :
       orbit::ElementFilesIn(std::filesystem::path(from.toStdU16String()))) {
    const QString name = QString::fromStdU16String(file.filename().u16string());
    const QString copy = QDir(to).filePath(name);
    if (!QFileInfo::exists(copy)) files::ReplaceFile(copy, files::ReadFile(QDir(from).filePath(name)));
  }
}

}  // namespace

void PrepareFolders(session::Session& session) {
  const app::DefaultFolders& defaults = session.Settings.Defaults;
  QString& elements = session.Settings.TwoLineDataPath.Value;
  // A folder that the user chose and that is gone is the user's affair: a disk may be missing.
  for (const QString& folder : {defaults.Elements, defaults.Results}) {
    if (folder == elements || folder == session.Settings.ResultsPath.Value) QDir().mkpath(folder);
  }
  if (defaults.Left.isEmpty() || elements != defaults.Left) return;
  session::Guarded(session.Boxes, [&] {
    const QString folder = app::UserFolders().Elements;
    QDir().mkpath(folder);
    CopyElementFiles(elements, folder);
    elements = folder;
  });
}

void LoadSatelliteData(session::Session& session, const TellStatus& tellStatus) {
  tellStatus(QStringLiteral("Load satellite data ..."));
  session::Guarded(session.Boxes,
                   [&session] { session.LoadSatellites(session.Settings.TwoLineDataPath.Value); });
}

void LoadSetAgeing(session::Session& session, const QString& programFolder) {
  session::Guarded(session.Boxes, [&] {
    session.Ageing =
        elements::LoadSetAgeing(app::FindDataFile(QStringLiteral("set-ageing.json"), programFolder));
  });
}

swath::ScannerTable LoadScanners(session::Session& session, const QString& programFolder) {
  std::vector<std::string> problems;
  swath::ScannerTable scanners = swath::LoadScannerTables(app::ScannerFiles(programFolder), problems);
  QStringList lines;
  for (const std::string& problem : problems) lines.append(QString::fromStdString(problem));
  if (!lines.isEmpty()) {
    session.Boxes.Message(QStringLiteral("A table of scanners cannot be used as it is; the rest of it counts."
                                         "\n\n%1")
                              .arg(lines.mid(0, 10).join(u'\n')));
  }
  return scanners;
}

void OfferDemonstrationElements(session::Session& session, const QString& programFolder,
                                const TellStatus& tellStatus) {
  const QString shipped = app::FindDataFile(kDemonstrationElements, programFolder);
  if (session.Satellites().Count() > 0 || shipped.isEmpty()) return;
  const QString folder = session.Settings.TwoLineDataPath.Value;
  const QString question = QStringLiteral(
      "There are no element sets yet in the folder\n\n   %1\n\nShall the element sets of the weather "
      "satellites that come with Pelorin be copied there? They are of February 2022: good for a look round "
      "and for pictures of those days. For passes of today get new ones with Options, Update Keplers...");
  if (!session.Boxes.Confirm(question.arg(QDir::toNativeSeparators(folder)))) return;
  session::Guarded(session.Boxes, [&] {
    QDir().mkpath(folder);
    files::ReplaceFile(QDir(folder).filePath(kDemonstrationCopy), files::ReadFile(shipped));
    LoadSatelliteData(session, tellStatus);
  });
}

QString FindTopographyFile(const QString& programFolder) {
  return app::FindDataFile(overlay::TopographyNames(), programFolder);
}

std::future<map::Backdrop> LoadBackdropAhead(const QString& programFolder) {
  // Where no thread can be had, TakeBackdrop does the work.
  return std::async(std::launch::async | std::launch::deferred, [programFolder] {
    return map::LoadBackdrop(
        !FindTopographyFile(programFolder).isEmpty(),
        [&programFolder](const QStringList& names) { return app::FindDataFile(names, programFolder); });
  });
}

map::Backdrop TakeBackdrop(session::Session& session, std::future<map::Backdrop> ahead,
                           const TellStatus& tellStatus) {
  map::Backdrop backdrop = ahead.get();
  for (const QString& name : backdrop.Tried) {
    tellStatus(QStringLiteral("Loading map background from %1  ...").arg(name));
  }
  for (const QString& text : backdrop.Messages) session.Boxes.Message(text);
  return backdrop;
}

void ConnectTopography(session::Session& session, GroundData& data, const TellStatus& tellStatus) {
  tellStatus(QStringLiteral("Connecting to topography data ..."));
  data.Sources.FindGround(data.TopographyFile, data.Backdrop.IsUserBitmap ? data.Backdrop.Picture : QImage(),
                          [&session](const QString& text) { session.Boxes.Message(text); });
}

void OpenFineLines(GroundData& data, const QString& programFolder) {
  lines::FoundFineLines found =
      lines::FindFineLines(app::FindDataFile(QStringLiteral("Coastlines.dat"), programFolder));
  data.Lines = std::move(found.Lines);
  data.NoLines = found.Problem;
}

void OpenMaster(session::Session& session, GroundData& data, const QString& programFolder,
                const TellStatus& tellStatus) {
  const overlay::MasterFolders folders{.Users = app::UserDataFolder(),
                                       .Program = programFolder,
                                       .Cache = app::CacheFolder(),
                                       .IsPortable = app::IsPortable(programFolder)};
  data.Sources.FindMaster(
      folders, app::FindDataFile(QStringLiteral("Countries.dat"), programFolder), tellStatus,
      [&session](const QString& question) {
        return session.Boxes.OkOrCancel(question, overlay::kMasterMemoryHelp);
      },
      [&session](const QString& text) { session.Boxes.Error(text); });
}

}  // namespace pelorin::desktop
