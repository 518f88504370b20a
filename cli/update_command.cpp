#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "app/element_address.h"
#include "app/program_paths.h"
#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"
#include "elements/element_download.h"
#include "elements/element_queries.h"
#include "elements/element_update.h"
#include "elements/known_sets.h"

namespace pelorin::cli {
namespace {

using elements::FileOutcome;

/// Long enough for the end of any update that is well.
constexpr int kPatienceMs = 120000;

QString NumberOf(const QString& satellite, const elements::KnownSets& known) {
  const bool isNumber = !satellite.isEmpty() && std::all_of(satellite.begin(), satellite.end(),
                                                            [](QChar c) { return c >= u'0' && c <= u'9'; });
  if (isNumber) return satellite;
  const orbit::TSatellite* found = known.Find(satellite.toStdString());
  if (found == nullptr) {
    throw UsageError(
        QStringLiteral("There is no satellite \"%1\" yet; give its catalogue number").arg(satellite));
  }
  return QString::fromStdString(found->CatalogueKey());
}

/// The file of the folder that has what is asked for, or the name of a new one.
QString FileFor(const QString& name, const QDir& folder) {
  const QString query = elements::QueryOf(name + QStringLiteral(".csv"));
  for (const std::filesystem::path& path : orbit::ElementFilesIn(folder.path().toStdU16String())) {
    const QString file = QString::fromStdU16String(path.filename().u16string());
    if (elements::QueryOf(file) == query) return file;
  }
  return name + QStringLiteral(".csv");
}

QStringList WantedFiles(const Arguments& arguments, const QString& folder) {
  const elements::KnownSets known(std::filesystem::path(folder.toStdU16String()), {});
  const QStringList groups = arguments.Texts(QStringLiteral("group")),
                    satellites = arguments.Texts(QStringLiteral("satellite"));
  if (arguments.Has(QStringLiteral("all")) && !(groups.isEmpty() && satellites.isEmpty())) {
    throw UsageError(QStringLiteral("--all goes without --group and --satellite"));
  }
  QStringList files;
  for (const QString& group : groups) files.append(FileFor(group.toLower(), folder));
  for (const QString& satellite : satellites) files.append(FileFor(NumberOf(satellite, known), folder));
  if (files.isEmpty()) files = elements::UpdatableFiles(known.Satellites());
  files.removeDuplicates();
  if (files.isEmpty()) {
    throw Failure(
        QStringLiteral("There are no element files in %1; name what to get with --group or --satellite")
            .arg(folder));
  }
  return files;
}

/// The worst of a run decides.
void RaiseFor(const QList<FileOutcome>& outcomes, bool isNamed) {
  const bool isUnknown = isNamed && outcomes.contains(FileOutcome::UnknownThere);
  if (isUnknown || outcomes.contains(FileOutcome::Failed) || outcomes.contains(FileOutcome::NotFetched)) {
    throw Failure(elements::OutcomeSummary(outcomes));
  }
  if (outcomes.contains(FileOutcome::Refused)) throw Implausible(elements::OutcomeSummary(outcomes));
}

}  // namespace

void RunUpdate(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("update"),
      QStringLiteral("Gets fresh element sets from the element service and puts them in the place of the "
                     "files that are there; "
                     "earlier sets go to the archive. Asks for nothing twice within two hours, so it may be "
                     "called at any time. "
                     "Exit status: 0 updated or current, 1 failed, 2 called wrongly, 3 refused, because what "
                     "came is no elements, "
                     "older, or far more or fewer than before."),
      {{QStringLiteral("group"), QStringLiteral("NAME"),
        QStringLiteral("A group of the service, as in weather; may be given several times.")},
       {QStringLiteral("satellite"), QStringLiteral("NAME|NUMBER"),
        QStringLiteral(
            "A single satellite, by its catalogue number or a name that is known already; may be given "
            "several times.")},
       {QStringLiteral("all"), {}, QStringLiteral("All element files of the folder. Default.")},
       {QStringLiteral("to"), QStringLiteral("DIR"),
        QStringLiteral("Folder of the element files. Default: the settings' folder.")},
       {QStringLiteral("accept"),
        {},
        QStringLiteral("Take also what has far more or far fewer sets than before.")},
       TableFormatOption()},
      list);
  const bool json = arguments.WantsJson();
  const QString folder = arguments.Text(QStringLiteral("to"), arguments.Settings().TwoLineDataPath.Value);
  if (!arguments.Has(QStringLiteral("to"))) QDir().mkpath(folder);
  if (!QFileInfo(folder).isDir()) {
    throw Failure(QStringLiteral("There is no folder %1; make it, or name another with --to").arg(folder));
  }

  elements::ElementUpdate update;
  update.Files = WantedFiles(arguments, folder);
  update.Folder = app::WithSeparator(folder);
  update.BaseAddress = app::ElementAddress(arguments.Settings());
  update.PlainFilesToo = !app::IsPublicService(update.BaseAddress);
  update.ArchiveFolder = app::ElementArchiveFolder();
  update.Now = [] { return orbit::NowUTC(); };
  update.MayCreate = true;
  update.PatienceMs = kPatienceMs;

  elements::ElementDownload download;
  QList<FileOutcome> outcomes(update.Files.size(), FileOutcome::NotFetched);
  QList<elements::FileResult> results(update.Files.size());
  const bool accept = arguments.Has(QStringLiteral("accept"));
  elements::UpdateElementFiles(
      update, elements::ElementRequests(app::ElementRequestsFile()),
      {[&download](const QString& address) { return download.Get(address); }, [](int) { return true; },
       [&](int file, const elements::FileResult& result) {
         outcomes[file] = result.Outcome;
         results[file] = result;
       },
       [](const QString& text) { Say(QString(text).replace(u'\r', u'\n')); },
       [accept](const QString& question) {
         if (!accept) Say(elements::QuestionAsNote(question).replace(u'\r', u'\n'));
         return accept;
       }});
  Table table({QStringLiteral("file"), QStringLiteral("query"), QStringLiteral("outcome"),
               QStringLiteral("new_file"), QStringLiteral("satellites_left_in_file")},
              json);
  for (int file = 0; file < update.Files.size(); ++file) {
    table.Add({update.Files[file], elements::QueryOf(update.Files[file]),
               elements::OutcomeText(outcomes[file]), results[file].NewName,
               static_cast<int>(results[file].StillHere)});
  }
  table.Finish();
  RaiseFor(outcomes, arguments.Has(QStringLiteral("group")) || arguments.Has(QStringLiteral("satellite")));
}

}  // namespace pelorin::cli
