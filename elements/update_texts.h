#pragma once

#include <QList>
#include <QString>

#include "elements/element_answer.h"
#include "elements/update_verdict.h"

/// What an update says. Lines are parted by CR.
namespace pelorin::elements {

enum class FileOutcome {
  NotFetched,
  Updated,
  AlreadyCurrent,
  AskedRecently,
  UnknownThere,
  Refused,  ///< what came cannot take the file's place
  Failed,   ///< the service gave nothing
};

/// What came of one file.
struct FileResult {
  FileOutcome Outcome = FileOutcome::NotFetched;
  QString NewName;          ///< of the file that has the sets now, where that is another; else empty
  qsizetype StillHere = 0;  ///< satellites that only the earlier file has, which therefore stays
};

/// "updated", "already current" and so on.
QString OutcomeText(FileOutcome outcome);
/// The same, and where the sets went.
QString ResultText(const FileResult& result);
/// "2 updated, 1 already current" of a whole run.
QString OutcomeSummary(const QList<FileOutcome>& outcomes);

/// What is said of data that do not replace a file, or in a line why nothing came.
QString RefusalText(const QString& localPath, const QString& address, const ElementAnswer& answer);

/// What is said when the service refuses: file, address, status, and its words.
QString ServiceRefusalText(const QString& fileName, const QString& address, const ElementAnswer& answer);

QString OlderText(const QString& localPath, const QString& address, const UpdateVerdict& verdict);

/// Whether data with far more or fewer sets shall replace the file: a question, with the names that would go.
QString OtherNumberQuestion(const QString& localPath, const QString& address, const UpdateVerdict& verdict);
/// The same as it is said where nobody can be asked.
QString QuestionAsNote(const QString& question);

}  // namespace pelorin::elements
