#include "elements/element_update.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>

#include "elements/element_archive.h"
#include "files/atomic_file.h"
#include "files/read_file.h"
#include "files/text_file.h"

namespace pelorin::elements {
namespace {

constexpr int kStatusOk = 200;
constexpr int kStatusForbidden = 403;

/// Columns of a line that are used; the checksum after them is not.
constexpr qsizetype kLineColumns = 68;

/// No box holds more, and no element file needs it to be recognised as something else.
constexpr qsizetype kMostShown = 20000;
constexpr qsizetype kMostShownOfLine = 200;

bool IsPairOfLines(const QByteArray& line1, const QByteArray& line2) {
  const auto number = [](const QByteArray& line) { return line.mid(2, 5).trimmed(); };
  return line1.size() >= kLineColumns && line2.size() >= kLineColumns && !number(line1).isEmpty() &&
         number(line1) == number(line2) && line1[23] == '.' && line2[11] == '.' && line2[20] == '.' &&
         line2[37] == '.' && line2[46] == '.' && line2[54] == '.';
}

bool IsWebPage(const QByteArray& text) { return text.trimmed().startsWith('<'); }

bool IsAcceptable(const ElementAnswer& answer, const QList<QByteArray>& lines, qint64 present) {
  return answer.Status == kStatusOk && answer.Problem.isEmpty() && !IsWebPage(answer.Body) &&
         IsValidElementData(lines) && HasWholeSets(lines) && IsPlausibleSize(answer.Body.size(), present);
}

void ReplaceElements(const QString& localPath, const QList<QByteArray>& lines, const QString& archiveFolder) {
  ArchiveElementFile(localPath, archiveFolder);
  files::ReplaceFile(localPath, lines.join("\r\n") + "\r\n");
}

/// Raises files::FileError unless a file with this content can be made in the folder.
void NeedToWrite(const QDir& folder, const QByteArray& content) {
  const QString probe = folder.filePath(QStringLiteral("element-update.tmp"));
  files::ReplaceFile(probe, content);
  QFile::remove(probe);
}

/// One request that the service sees, and that is on record before it sees it.
ElementAnswer Ask(const ElementUpdate& update, const QString& address, const ElementRequests& requests,
                  const UpdateSteps& steps) {
  const QString earlier = requests.Remember(address, update.Now());
  ElementAnswer answer = steps.Fetch(address);
  if (!answer.Sent) requests.TakeBack(address, earlier, update.Now());
  return answer;
}

/// The first line with something in it.
QString FirstLine(const QByteArray& text) {
  for (const QByteArray& line : SplitLines(text)) {
    const QString shown = files::DecodeText(line).simplified();
    if (!shown.isEmpty()) return shown.left(kMostShownOfLine);
  }
  return QStringLiteral("(no text)");
}

}  // namespace

QStringList UpdatableFiles(const TSatelliteList& satellites) {
  QStringList names;
  for (int index = 0; index < satellites.Count(); ++index) {
    const QString name = QString::fromStdString(satellites.Satellite(index).SourceFile);
    const QString extension = QFileInfo(name).suffix().toLower();
    if (extension == QStringLiteral("2li") || extension == QStringLiteral("tle")) names.append(name);
  }
  std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
    const int order = a.compare(b, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : a < b;
  });
  names.removeDuplicates();
  return names;
}

QString RemoteFileName(const QString& fileName) {
  return QString(QFileInfo(fileName).completeBaseName() + QStringLiteral(".txt")).toLower();
}

QString RemoteAddress(const QString& baseAddress, const QString& fileName) {
  return baseAddress + QString::fromLatin1(RemoteFileName(fileName).toUtf8().toPercentEncoding());
}

QList<QByteArray> SplitLines(const QByteArray& text) {
  QList<QByteArray> lines;
  qsizetype start = 0;
  while (start < text.size()) {
    qsizetype end = start;
    while (end < text.size() && text[end] != '\r' && text[end] != '\n') ++end;
    lines.append(text.mid(start, end - start));
    const bool isPair = end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n';
    start = end + (isPair ? 2 : 1);
  }
  return lines;
}

bool IsValidElementData(const QList<QByteArray>& lines) {
  if (lines.size() < 3) return false;
  for (qsizetype index = 0; index < lines.size(); ++index) {
    const QByteArray& line = lines[index];
    const bool isLast = index + 1 == lines.size();
    switch (index % 3) {
      case 0:
        // A set without a name would be passed over when the file is read; an empty last line means nothing.
        if (line.startsWith(' ') || (line.isEmpty() && !isLast)) return false;
        break;
      case 1:
        if (!line.startsWith("1 ")) return false;
        break;
      default:
        if (!line.startsWith("2 ")) return false;
    }
  }
  return true;
}

bool HasWholeSets(const QList<QByteArray>& lines) {
  for (qsizetype index = 1; index < lines.size(); index += 3) {
    if (index + 1 >= lines.size() || !IsPairOfLines(lines[index], lines[index + 1])) return false;
  }
  return true;
}

bool IsPlausibleSize(qint64 received, qint64 present) {
  return received > present * 4 / 5 && received < present * 6 / 5;
}

bool SaysNothingNew(const ElementAnswer& answer) {
  if (answer.Status != kStatusForbidden) return false;
  const QByteArray text = answer.Body.simplified().toLower();
  return text.contains("not updated since") || text.contains("not been updated since");
}

QString RefusalText(const QString& localPath, const QString& address, const ElementAnswer& answer) {
  QString received = files::DecodeText(answer.Body.left(kMostShown));
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
  return fileName + QStringLiteral(" has not been updated: ") + address + QStringLiteral(" answered ") +
         status + QStringLiteral(": ") + FirstLine(answer.Body);
}

QString OutcomeText(FileOutcome outcome) {
  switch (outcome) {
    case FileOutcome::Updated:
      return QStringLiteral("updated");
    case FileOutcome::AlreadyCurrent:
      return QStringLiteral("already current");
    case FileOutcome::AskedRecently:
      return QStringLiteral("not asked for again");
    case FileOutcome::Refused:
      return QStringLiteral("not updated");
    case FileOutcome::NotFetched:
      break;
  }
  return QStringLiteral("not fetched");
}

QString OutcomeSummary(const QList<FileOutcome>& outcomes) {
  QStringList parts;
  for (const FileOutcome outcome : {FileOutcome::Updated, FileOutcome::AlreadyCurrent, FileOutcome::Refused,
                                    FileOutcome::AskedRecently, FileOutcome::NotFetched}) {
    if (const qsizetype count = outcomes.count(outcome); count > 0) {
      parts.append(QStringLiteral("%1 %2").arg(count).arg(OutcomeText(outcome)));
    }
  }
  return parts.join(QStringLiteral(", "));
}

UpdateResult UpdateElementFiles(const ElementUpdate& update, const ElementRequests& requests,
                                const UpdateSteps& steps) {
  UpdateResult result;
  QHash<QString, ElementAnswer> answers;
  for (int file = 0; file < update.Files.size(); ++file) {
    const QString name = update.Files[file], localPath = update.Folder + name;
    const QString address = RemoteAddress(update.BaseAddress, name);
    if (!steps.BeforeFile(file)) {
      result.EndedEarly = true;
      return result;
    }
    const QByteArray present = files::ReadFile(localPath);
    auto answer = answers.constFind(address);
    if (answer == answers.constEnd()) {
      if (!update.Insist && requests.AskedRecently(address, update.Now())) {
        steps.AfterFile(file, FileOutcome::AskedRecently);
        continue;
      }
      NeedToWrite(update.Folder, present);
      QDir().mkpath(update.ArchiveFolder);
      NeedToWrite(update.ArchiveFolder, present);
      answer = answers.insert(address, Ask(update, address, requests, steps));
    }
    if (answer->Cancelled) {
      result.EndedEarly = true;
      return result;
    }
    if (SaysNothingNew(*answer)) {
      steps.AfterFile(file, FileOutcome::AlreadyCurrent);
      continue;
    }
    const QList<QByteArray> lines = SplitLines(answer->Body);
    result.Changed = IsAcceptable(*answer, lines, present.size());
    if (result.Changed) {
      ReplaceElements(localPath, lines, update.ArchiveFolder);
    } else {
      const bool isAnswer = answer->Status != 0 && answer->Problem.isEmpty();
      steps.Tell(isAnswer && answer->Status != kStatusOk ? ServiceRefusalText(name, address, *answer)
                                                         : RefusalText(localPath, address, *answer));
    }
    steps.AfterFile(file, result.Changed ? FileOutcome::Updated : FileOutcome::Refused);
    if (answer->Status != kStatusOk) {
      result.EndedEarly = file + 1 < update.Files.size();
      return result;
    }
  }
  return result;
}

}  // namespace pelorin::elements
