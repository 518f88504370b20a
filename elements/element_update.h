#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <stdexcept>

#include "elements/element_answer.h"
#include "elements/element_requests.h"
#include "elements/satellite_list.h"
#include "elements/update_texts.h"
#include "elements/update_verdict.h"
#include "orbit/date_time.h"

/// Element files replaced by fresh copies from a service that publishes element sets.
namespace pelorin::elements {

/// The files of the loaded sets: their names, each once, in ascending order.
QStringList UpdatableFiles(const TSatelliteList& satellites);

struct ElementUpdate {
  QStringList Files;    ///< names of element files, in the order of the run
  QString Folder;       ///< theirs, with a separator at its end
  QString BaseAddress;  ///< with a "/" at its end
  /// Ask a service that does not know a query for a file of the name, as services of old have them.
  bool PlainFilesToo = false;
  QString ArchiveFolder;
  std::function<orbit::TDateTime()> Now;  ///< UTC
  bool Insist = false;                    ///< ask again for what was asked for less than two hours ago
  bool MayCreate = false;                 ///< files that are not there are made, of whatever size
  int PatienceMs = 0;                     ///< how long to wait for the end of another update
};

/// Another update, perhaps of another program, has not ended yet. what() is fit to be shown.
class UpdateRunning : public std::runtime_error {
 public:
  UpdateRunning()
      : std::runtime_error(
            "Another update of the element files is running.  Wait until it has ended, and try again.") {}
};

/// How an update run meets the world.
struct UpdateSteps {
  std::function<ElementAnswer(const QString& address)> Fetch;
  std::function<bool(int file)> BeforeFile;  ///< false ends the run
  std::function<void(int file, const FileResult& result)> AfterFile;
  std::function<void(const QString& text)> Tell;  ///< a refusal
  /// Whether good data of another number of sets shall replace a file.
  std::function<bool(const QString& question)> Confirm;
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
/// Data that come in another form than the file's are written under the file's name with the extension of
/// their form; the earlier file then goes to the archive as a whole, unless it has satellites that the data
/// have not.
///
/// What the service does not know is told by the outcome, and the run goes on. It ends with the first answer
/// for which EndsRun holds: services lock out those who go on asking. For the same reason nothing is asked
/// for that could not be kept or remembered. Updates with the same record of requests never run at the same
/// time: raises UpdateRunning. Raises files::FileError or orbit::ReadError for a file that cannot be read or
/// written, which ends the run too; files already replaced stay so.
UpdateResult UpdateElementFiles(const ElementUpdate& update, const ElementRequests& requests,
                                const UpdateSteps& steps);

}  // namespace pelorin::elements
