#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

#include "elements/element_requests.h"
#include "elements/satellite_list.h"
#include "orbit/date_time.h"

/// Element files replaced by fresh copies from a service that publishes two-line sets.
namespace pelorin::elements {

/// What came of asking for an address.
struct ElementAnswer {
  int Status = 0;      ///< of HTTP; 0 when no answer came
  QString StatusText;  ///< that goes with it, may be empty
  QByteArray Body;     ///< as far as it came
  QString Problem;     ///< why not all of it came; empty for a whole answer
  bool Cancelled = false;
  bool Sent = false;  ///< a server got the request, whether it answered or not
};

/// Files in the list of the loaded sets that two-line sets can replace: their names, each once, in ascending
/// order.
QStringList UpdatableFiles(const TSatelliteList& satellites);

/// A local file's name at the service: the extension replaced by ".txt", in lower case.
QString RemoteFileName(const QString& fileName);

/// The address of a local file's copy; `baseAddress` ends in "/". What has a meaning of its own in addresses
/// is escaped in the name.
QString RemoteAddress(const QString& baseAddress, const QString& fileName);

/// Lines without their ends: CR LF, LF or CR.
QList<QByteArray> SplitLines(const QByteArray& text);

/// Whether lines go name, "1 …", "2 …" from the first to the last, and are three at least. The last group may
/// end early.
bool IsValidElementData(const QList<QByteArray>& lines);

/// Whether every line 1 and line 2 has its columns, and both belong to one satellite: half a line, as a
/// broken connection leaves it, reads as another orbit. A name without lines may stand at the end.
bool HasWholeSets(const QList<QByteArray>& lines);

/// More than 80% and less than 120% of the size of the file that it is to replace.
bool IsPlausibleSize(qint64 received, qint64 present);

/// The service's way to say that its copy is the one that was fetched the last time.
bool SaysNothingNew(const ElementAnswer& answer);

/// What is said of data that do not replace a file. Lines are parted by CR. Where nothing came, the reason
/// stands in its place.
QString RefusalText(const QString& localPath, const QString& address, const ElementAnswer& answer);

/// What is said when the service refuses: file, address, status, first line of its answer.
QString ServiceRefusalText(const QString& fileName, const QString& address, const ElementAnswer& answer);

enum class FileOutcome { NotFetched, Updated, AlreadyCurrent, AskedRecently, Refused };

/// "updated", "already current" and so on.
QString OutcomeText(FileOutcome outcome);
/// "2 updated, 1 already current" of a whole run.
QString OutcomeSummary(const QList<FileOutcome>& outcomes);

struct ElementUpdate {
  QStringList Files;    ///< names of element files, in the order of the run
  QString Folder;       ///< theirs, with a separator at its end
  QString BaseAddress;  ///< with a "/" at its end
  QString ArchiveFolder;
  std::function<orbit::TDateTime()> Now;  ///< UTC
  bool Insist = false;                    ///< ask again for what was asked for less than two hours ago
};

/// How an update run meets the world.
struct UpdateSteps {
  std::function<ElementAnswer(const QString& address)> Fetch;
  std::function<bool(int file)> BeforeFile;  ///< false ends the run
  std::function<void(int file, FileOutcome outcome)> AfterFile;
  std::function<void(const QString& text)> Tell;  ///< a refusal
};

struct UpdateResult {
  /// The outcome of the last file for which the service sent data.
  bool Changed = false;
  /// Not all files had their turn: the user or the service ended the run.
  bool EndedEarly = false;
};

/// Asks for each file in turn and replaces those for which plausible data come; their earlier sets go to the
/// archive before. Every other file stays as it is. An address that two files share is asked for once.
///
/// The first answer with another status than 200 ends the run, and so does none at all: services lock out
/// those who go on asking. For the same reason nothing is asked for that could not be kept or remembered.
/// Raises files::FileError or orbit::ReadError for a file that cannot be read or written, which ends the run
/// too; files already replaced stay so.
UpdateResult UpdateElementFiles(const ElementUpdate& update, const ElementRequests& requests,
                                const UpdateSteps& steps);

}  // namespace pelorin::elements
