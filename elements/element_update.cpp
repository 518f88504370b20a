#include "elements/element_update.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <array>
#include <optional>
#include <random>
#include <utility>

#include "elements/element_archive.h"
#include "elements/element_queries.h"
#include "files/atomic_file.h"
#include "files/folder_lock.h"
#include "files/read_file.h"

namespace pelorin::elements {
namespace {

using orbit::ElementForm;

std::filesystem::path PathOf(const QString& path) { return path.toStdU16String(); }

/// Raises files::FileError unless a file with this content can be made in the folder. Its name is one that
/// nobody can have put a link under.
void NeedToWrite(const QDir& folder, const QByteArray& content) {
  std::random_device random;
  const QString name = QString::number(random(), 36) + QString::number(random(), 36);
  const QString probe = folder.filePath(QStringLiteral("element-update-") + name + QStringLiteral(".tmp"));
  files::ReplaceFile(probe, content);
  QFile::remove(probe);
}

/// The name of the file beside a local one that has the sets in that form: the file's own where its form is
/// that, one that is there already, or a new one.
QString NameInForm(const QString& folder, const QString& fileName, ElementForm form) {
  if (orbit::FormOfFile(PathOf(fileName)) == form) return fileName;
  const QString base = QFileInfo(fileName).completeBaseName();
  const QString extension = form == ElementForm::Csv    ? QStringLiteral(".csv")
                            : form == ElementForm::Json ? QStringLiteral(".json")
                                                        : QStringLiteral(".2li");
  for (const QString& present : QDir(folder).entryList(QDir::Files)) {
    if (present.compare(base + extension, Qt::CaseInsensitive) == 0) return present;
  }
  return base + extension;
}

/// What stands in a file, as it was received: lines end as other text files of ours.
QByteArray FileContent(const ElementData& data) {
  return data.Form == ElementForm::TwoLine ? SplitLines(data.Bytes).join("\r\n") + "\r\n" : data.Bytes;
}

class Run {
 public:
  Run(const ElementUpdate& update, const ElementRequests& requests, const UpdateSteps& steps)
      : update_(update), requests_(requests), steps_(steps) {}

  UpdateResult All() {
    for (int file = 0; file < update_.Files.size(); ++file) {
      if (!steps_.BeforeFile(file)) return EndedEarly();
      const QString name = update_.Files[file];
      const QByteArray present = Present(name);
      const std::optional<Reply> reply = ReplyFor(name, present);
      if (!reply) {
        steps_.AfterFile(file, {FileOutcome::AskedRecently, {}, 0});
        continue;
      }
      if (reply->Answer.Cancelled) return EndedEarly();
      const FileResult result = Put(name, *reply);
      if (result.Outcome != FileOutcome::AlreadyCurrent && result.Outcome != FileOutcome::UnknownThere) {
        result_.Changed = result.Outcome == FileOutcome::Updated;
      }
      steps_.AfterFile(file, result);
      if (EndsRun(reply->Answer)) {
        result_.EndedEarly = file + 1 < update_.Files.size();
        break;
      }
    }
    return result_;
  }

 private:
  struct Reply {
    QString Address;
    ElementAnswer Answer;
  };

  UpdateResult EndedEarly() {
    result_.EndedEarly = true;
    return result_;
  }

  QByteArray Present(const QString& name) const {
    const QString path = update_.Folder + name;
    return update_.MayCreate && !QFileInfo::exists(path) ? QByteArray() : files::ReadFile(path);
  }

  /// Nothing where the service was asked a short time ago.
  std::optional<Reply> ReplyFor(const QString& name, const QByteArray& present) {
    const QString query = QueryAddress(update_.BaseAddress, name);
    if (const auto known = replies_.constFind(query); known != replies_.constEnd()) return *known;
    if (!update_.Insist && requests_.AskedRecently(query, update_.Now())) return std::nullopt;
    NeedToWrite(QDir(update_.Folder), present);
    QDir().mkpath(update_.ArchiveFolder);
    NeedToWrite(QDir(update_.ArchiveFolder), present);
    Reply reply{query, Ask(query)};
    if (update_.PlainFilesToo && IsUnknownThere(reply.Answer)) {
      const QString plain = RemoteAddress(update_.BaseAddress, name);
      reply = {plain, Ask(plain)};
    }
    return *replies_.insert(query, reply);
  }

  /// One request that the service sees, and that is on record before it sees it.
  ElementAnswer Ask(const QString& address) const {
    const QString earlier = requests_.Remember(address, update_.Now());
    ElementAnswer answer = steps_.Fetch(address);
    if (!answer.Sent) requests_.TakeBack(address, earlier, update_.Now());
    return answer;
  }

  /// Judges what came for one file, and puts it there if it is good.
  FileResult Put(const QString& name, const Reply& reply) const {
    const ElementAnswer& answer = reply.Answer;
    if (SaysNothingNew(answer)) return {FileOutcome::AlreadyCurrent, {}, 0};
    if (IsUnknownThere(answer)) return {FileOutcome::UnknownThere, {}, 0};
    const QString path = update_.Folder + name;
    if (!HasData(answer)) {
      const bool isAnswer = answer.Status != 0 && answer.Problem.isEmpty();
      steps_.Tell(isAnswer ? ServiceRefusalText(name, reply.Address, answer)
                           : RefusalText(path, reply.Address, answer));
      return {FileOutcome::Failed, {}, 0};
    }
    const ElementData received = ElementDataOf(answer.Body);
    const QString target = NameInForm(update_.Folder, name, received.Form);
    Leave leave = LeaveToReplace(path, received, reply);
    if (leave != Leave::No && target != name &&
        LeaveToReplace(update_.Folder + target, received, reply) == Leave::No) {
      leave = Leave::No;
    }
    if (leave == Leave::No) return {FileOutcome::Refused, {}, 0};
    return Replace(name, target, received, leave == Leave::ByUser);
  }

  enum class Leave { No, ByRule, ByUser };

  Leave LeaveToReplace(const QString& path, const ElementData& received, const Reply& reply) const {
    const bool isThere = QFileInfo::exists(path);
    const ElementData present =
        ElementDataOf(isThere ? files::ReadFile(path) : QByteArray(), orbit::FormOfFile(PathOf(path)));
    const UpdateVerdict verdict = JudgeUpdate(received, present);
    switch (verdict.Fault) {
      case UpdateFault::None:
        return Leave::ByRule;
      case UpdateFault::NoElements:
        steps_.Tell(RefusalText(path, reply.Address, reply.Answer));
        return Leave::No;
      case UpdateFault::Older:
        steps_.Tell(OlderText(path, reply.Address, verdict));
        return Leave::No;
      case UpdateFault::OtherNumber:
        break;
    }
    if (!isThere) return Leave::ByRule;
    return steps_.Confirm(OtherNumberQuestion(path, reply.Address, verdict)) ? Leave::ByUser : Leave::No;
  }

  /// `mayGo`: satellites that the received data have not need not be kept.
  FileResult Replace(const QString& name, const QString& target, const ElementData& received,
                     bool mayGo) const {
    const QString path = update_.Folder + name, newPath = update_.Folder + target;
    const QByteArray content = FileContent(received);
    // Another file of the same group may have brought it.
    const bool isThere = QFileInfo::exists(newPath) && files::ReadFile(newPath) == content;
    for (const QString& earlier : {path, newPath}) {
      if (!(isThere && earlier == newPath) && QFileInfo::exists(earlier)) {
        ArchiveElementFile(earlier, update_.ArchiveFolder);
      }
    }
    if (!isThere) files::ReplaceFile(newPath, content);
    FileResult result{FileOutcome::Updated, {}, 0};
    if (target == name) return result;
    result.NewName = target;
    if (!QFileInfo::exists(path)) return result;
    if (!mayGo) {
      const ElementData earlier = ElementDataOf(files::ReadFile(path), orbit::FormOfFile(PathOf(path)));
      result.StillHere = JudgeUpdate(received, earlier).Gone.size();
    }
    if (result.StillHere == 0) QFile::remove(path);
    return result;
  }

  const ElementUpdate& update_;
  const ElementRequests& requests_;
  const UpdateSteps& steps_;
  QHash<QString, Reply> replies_;  ///< by query
  UpdateResult result_;
};

}  // namespace

QStringList UpdatableFiles(const TSatelliteList& satellites) {
  QStringList names;
  for (int index = 0; index < satellites.Count(); ++index) {
    names.append(QString::fromStdString(satellites.Satellite(index).SourceFile));
  }
  std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
    const int order = a.compare(b, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : a < b;
  });
  names.removeDuplicates();
  return names;
}

UpdateResult UpdateElementFiles(const ElementUpdate& update, const ElementRequests& requests,
                                const UpdateSteps& steps) {
  const QString folder = QFileInfo(requests.File()).path();
  QDir().mkpath(folder);
  const files::FolderLock lock(folder, update.PatienceMs);
  if (lock.IsTaken()) throw UpdateRunning();
  return Run(update, requests, steps).All();
}

}  // namespace pelorin::elements
