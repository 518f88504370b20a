#include "elements/update_texts.h"

#include <QStringList>

namespace pelorin::elements {
namespace {

/// No box holds more, and no element file needs it to be recognised as something else.
constexpr qsizetype kMostShown = 20000;
constexpr qsizetype kMostShownOfRefusal = 600;
constexpr qsizetype kMostNamesShown = 12;

QString NamesShown(const QStringList& names) {
  QString text = names.mid(0, kMostNamesShown).join(QStringLiteral(", "));
  if (const qsizetype more = names.size() - kMostNamesShown; more > 0) {
    text += QStringLiteral(" and %1 more").arg(more);
  }
  return text;
}

}  // namespace

QString OutcomeText(FileOutcome outcome) {
  switch (outcome) {
    case FileOutcome::Updated:
      return QStringLiteral("updated");
    case FileOutcome::AlreadyCurrent:
      return QStringLiteral("already current");
    case FileOutcome::AskedRecently:
      return QStringLiteral("not asked for again");
    case FileOutcome::UnknownThere:
      return QStringLiteral("unknown to the service");
    case FileOutcome::Refused:
      return QStringLiteral("not updated");
    case FileOutcome::Failed:
      return QStringLiteral("failed");
    case FileOutcome::NotFetched:
      break;
  }
  return QStringLiteral("not fetched");
}

QString ResultText(const FileResult& result) {
  QString text = OutcomeText(result.Outcome);
  if (!result.NewName.isEmpty()) text += QStringLiteral(" as ") + result.NewName;
  if (result.StillHere > 0) text += QStringLiteral("; still here: %1").arg(result.StillHere);
  return text;
}

QString OutcomeSummary(const QList<FileOutcome>& outcomes) {
  QStringList parts;
  for (const FileOutcome outcome :
       {FileOutcome::Updated, FileOutcome::AlreadyCurrent, FileOutcome::Refused, FileOutcome::Failed,
        FileOutcome::UnknownThere, FileOutcome::AskedRecently, FileOutcome::NotFetched}) {
    if (const qsizetype count = outcomes.count(outcome); count > 0) {
      parts.append(QStringLiteral("%1 %2").arg(count).arg(OutcomeText(outcome)));
    }
  }
  return parts.join(QStringLiteral(", "));
}

QString RefusalText(const QString& localPath, const QString& address, const ElementAnswer& answer) {
  if (answer.Status == 0) {
    return QStringLiteral(
               "There is no answer from %1: %2. %3 stays as it is; look to the connection, and update again.")
        .arg(address, answer.Problem, localPath);
  }
  QString received = AnswerText(answer.Body.left(kMostShown));
  if (answer.Body.size() > kMostShown) {
    received += QStringLiteral("\r(and so on: %1 bytes in all)").arg(answer.Body.size());
  }
  if (!answer.Problem.isEmpty()) {
    received += received.isEmpty() ? QString() : QStringLiteral("\r");
    received += QStringLiteral("(%1)").arg(answer.Problem);
  }
  return QStringLiteral(
             "The data received does not appear to be valid Kepler data or is outside the limits of 80% to "
             "120% of the present file size.  The file:  ") +
         localPath + QStringLiteral("  has not been updated from:  ") + address +
         QStringLiteral("\r\rData received from the server was:\r") + received;
}

QString ServiceRefusalText(const QString& fileName, const QString& address, const ElementAnswer& answer) {
  const QString status = QStringLiteral("%1 %2").arg(answer.Status).arg(answer.StatusText).trimmed();
  QString said = AnswerText(answer.Body.left(kMostShown)).trimmed();
  if (said.isEmpty()) said = QStringLiteral("(no text)");
  if (said.size() > kMostShownOfRefusal) said = said.left(kMostShownOfRefusal) + QStringLiteral("...");
  return fileName + QStringLiteral(" has not been updated: ") + address + QStringLiteral(" answered ") +
         status + QStringLiteral(":\r\r") + said;
}

QString OlderText(const QString& localPath, const QString& address, const UpdateVerdict& verdict) {
  return QStringLiteral(
             "The elements received are older than those that are there, by %1 days in the mean.  The file: "
             " ")
             .arg(verdict.DaysOlder, 0, 'f', 1) +
         localPath + QStringLiteral("  has not been updated from:  ") + address;
}

QString OtherNumberQuestion(const QString& localPath, const QString& address, const UpdateVerdict& verdict) {
  QString text =
      QStringLiteral(
          "The data received is outside the limits of 80% to 120% of the present file.\r\rThe file:  %1\r"
          "Element sets in it: %2\rElement sets received from %3: %4\r\r")
          .arg(localPath)
          .arg(verdict.PresentSets)
          .arg(address)
          .arg(verdict.ReceivedSets);
  text += verdict.Gone.isEmpty()
              ? QStringLiteral("All satellites of the file are among them.")
              : QStringLiteral("These satellites of the file would go: %1.").arg(NamesShown(verdict.Gone));
  return text + QStringLiteral("\r\rReplace the file? Its present sets are kept in the archive.");
}

QString QuestionAsNote(const QString& question) {
  return question.left(question.lastIndexOf(QStringLiteral("\r\r")));
}

}  // namespace pelorin::elements
