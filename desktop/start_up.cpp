#include "desktop/start_up.h"

#include <QDir>
#include <QFile>

#include "app/program_paths.h"
#include "files/atomic_file.h"
#include "files/read_file.h"
#include "orbit/scalar_math.h"
#include "overlay/overlay_master.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

/// The element sets that come with the program, below its data folder.
const QString kDemonstrationElements = QStringLiteral("elements/weather-2022-02-22.2li");

/// Their copy is named as element services name the group of the weather satellites, so that an update
/// replaces it.
const QString kDemonstrationCopy = QStringLiteral("weather.2li");

}  // namespace

overlay::OverlaySources GroundData::Sources() const {
  return {{Topography ? &*Topography : nullptr, BaseImage.isNull() ? nullptr : &BaseImage},
          Master ? &*Master : nullptr};
}

void MakeDefaultFolders(const app::Settings& settings) {
  // A folder that the user chose and that is gone is the user's affair: a disk may be missing.
  const app::DefaultFolders& defaults = settings.Defaults;
  if (settings.TwoLineDataPath.Value == defaults.Elements) QDir().mkpath(defaults.Elements);
  if (settings.ResultsPath.Value == defaults.Results) QDir().mkpath(defaults.Results);
}

void LoadSatelliteData(session::Session& session, const TellStatus& tellStatus) {
  tellStatus(QStringLiteral("Load satellite data ..."));
  session::Guarded(session.Boxes,
                   [&session] { session.LoadSatellites(session.Settings.TwoLineDataPath.Value); });
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
  return app::FindDataFile(QStringList{QStringLiteral("etopo5.elev"), QStringLiteral("etopo5")},
                           programFolder);
}

map::Backdrop LoadMapBackdrop(session::Session& session, const QString& programFolder, bool hasTopography,
                              const TellStatus& tellStatus) {
  map::Backdrop backdrop = map::LoadBackdrop(
      hasTopography,
      [&programFolder](const QStringList& names) { return app::FindDataFile(names, programFolder); },
      tellStatus);
  for (const QString& text : backdrop.Messages) session.Boxes.Message(text);
  return backdrop;
}

void ConnectTopography(session::Session& session, GroundData& data, const TellStatus& tellStatus) {
  tellStatus(QStringLiteral("Connecting to topography data ..."));
  if (data.TopographyFile.isEmpty()) {
    if (data.Backdrop.IsUserBitmap) {
      data.BaseImage = data.Backdrop.Picture;
    } else {
      session.Boxes.Message(QStringLiteral("Topography will not be available"));
    }
    return;
  }
  data.Topography = overlay::Topography::Open(data.TopographyFile);
  if (!data.Topography) {
    session.Boxes.Error(QStringLiteral("The topography file\n\n   %1\n\ncannot be read. Maps will be made on "
                                       "black ground.")
                            .arg(QDir::toNativeSeparators(data.TopographyFile)));
  }
}

void OpenMaster(session::Session& session, GroundData& data, const QString& programFolder,
                const TellStatus& tellStatus) {
  session::Guarded(session.Boxes, [&] {
    for (const QString& path : app::MasterFiles(programFolder)) {
      data.Master = overlay::MasterView::Open(path);
      if (data.Master) return;
    }
    const QString countries = app::FindDataFile(QStringLiteral("Countries.dat"), programFolder);
    if (countries.isEmpty()) return;
    const QString path = app::MasterFile(programFolder);
    const auto confirm = [&session](const QString& question) {
      return session.Boxes.OkOrCancel(question, overlay::kMasterMemoryHelp);
    };
    if (overlay::GenerateMaster(countries, path, tellStatus, confirm)) {
      data.Master = overlay::MasterView::Open(path);
    }
  });
}

}  // namespace pelorin::desktop
