#include "elements/element_renewal.h"

#include <exception>
#include <set>

#include "elements/element_download.h"

namespace pelorin::elements {

QStringList FilesToRenew(const std::vector<const orbit::TSatellite*>& inUse, double nowJd, int days) {
  std::set<QString> files;
  for (const orbit::TSatellite* satellite : inUse) {
    if (nowJd - satellite->Epoch > days) files.insert(QString::fromStdString(satellite->SourceFile));
  }
  return {files.begin(), files.end()};
}

QString RenewalDay(orbit::TDateTime now) { return QString::fromStdString(FormatDateTime("yyyy-mm-dd", now)); }

bool IsRenewalDue(const QString& lastDay, orbit::TDateTime now) { return lastDay != RenewalDay(now); }

RenewalReport RenewElements(const ElementUpdate& update, const QString& requestsFile,
                            const std::function<bool()>& goesOn) {
  RenewalReport report;
  report.Outcomes = QList<FileOutcome>(update.Files.size(), FileOutcome::NotFetched);
  const auto say = [&report](const QString& text) { report.Said.append(text); };
  try {
    ElementDownload download;
    UpdateElementFiles(
        update, ElementRequests(requestsFile),
        {[&download](const QString& address) { return download.Get(address); },
         [&goesOn](int) { return goesOn(); },
         [&report](int file, const FileResult& result) { report.Outcomes[file] = result.Outcome; }, say,
         [&say](const QString& question) {
           say(QuestionAsNote(question));
           return false;
         }});
  } catch (const std::exception& error) {
    say(QString::fromUtf8(error.what()));
  }
  return report;
}

QString RenewalText(const RenewalReport& report) {
  const QString summary = OutcomeSummary(report.Outcomes);
  if (report.Outcomes.contains(FileOutcome::Updated)) return QStringLiteral("Elements renewed: ") + summary;
  return QStringLiteral("Elements not renewed: ") + summary;
}

}  // namespace pelorin::elements
