#include "align/alignment_log.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "align/log_columns.h"
#include "files/atomic_file.h"
#include "files/csv.h"
#include "files/file_error.h"
#include "files/folder_lock.h"
#include "files/read_file.h"

namespace pelorin::align {
namespace {

/// Who waits longer is waiting for a program that has come to harm.
constexpr int kPatienceMs = 2000;
constexpr qint64 kMostBytes = 64 << 20;
/// So many lines are named to the user.
constexpr qsizetype kMostNamed = 5;

QByteArray RowOf(const QStringList& fields) {
  QStringList written;
  for (const QString& field : fields) written.append(files::CsvField(field));
  return written.join(u',').toUtf8();
}

}  // namespace

/// The file line by line.
struct AlignmentLog::Content {
  /// What it was read from, without the line's end; what was not changed goes back byte by byte.
  struct Line {
    QByteArray Bytes;
    QStringList Fields;
    std::optional<LoggedAlignment> Alignment;  ///< nothing where it is not understood
  };

  QByteArray HeaderBytes;
  QStringList Header;
  std::size_t FirstLine = 1;  ///< where Lines begin in the file
  std::vector<Line> Lines;

  /// All columns that we write are in the header from now on.
  void CompleteHeader() {
    const qsizetype before = Header.size();
    for (const QString& name : LogColumns()) {
      if (!Header.contains(name)) Header.append(name);
    }
    if (Header.size() != before) HeaderBytes = RowOf(Header);
  }

  /// What the log has of a picture goes; returns the last of these rows.
  std::optional<Line> Take(const LoggedAlignment& picture) {
    std::optional<Line> last;
    std::erase_if(Lines, [&](const Line& line) {
      if (!line.Alignment || !IsSamePicture(*line.Alignment, picture)) return false;
      last = line;
      return true;
    });
    return last;
  }

  void Append(const LoggedAlignment& alignment, const QStringList& foreign) {
    const QStringList names = LogColumns(), own = LogFields(alignment);
    QStringList fields;
    for (qsizetype at = 0; at < Header.size(); ++at) {
      const qsizetype column = names.indexOf(Header[at]);
      fields.append(column < 0 ? foreign.value(at) : own[column]);
    }
    Lines.push_back({RowOf(fields), fields, alignment});
  }

  void CutToLimit() {
    auto tooMany = std::ranges::count_if(Lines, [](const Line& line) { return line.Alignment.has_value(); }) -
                   static_cast<std::ptrdiff_t>(kMostLogged);
    std::erase_if(Lines, [&](const Line& line) { return line.Alignment && tooMany-- > 0; });
  }

  QByteArray Bytes() const {
    QByteArray bytes = HeaderBytes + '\n';
    for (const Line& line : Lines) bytes += line.Bytes + '\n';
    return bytes;
  }

  QString NoteOn(const QString& path) const {
    QStringList bad, foreign;
    for (std::size_t at = 0; at < Lines.size(); ++at) {
      const bool isBlank = Lines[at].Bytes.trimmed().isEmpty();
      if (!Lines[at].Alignment && !isBlank) bad.append(QString::number(at + FirstLine));
    }
    const QStringList names = LogColumns();
    for (const QString& name : Header) {
      if (!names.contains(name)) foreign.append(u'"' + name + u'"');
    }
    QStringList parts;
    if (!bad.isEmpty()) {
      const qsizetype more = bad.size() - kMostNamed;
      parts.append(QStringLiteral("rows that are not understood (line %1%2)")
                       .arg(bad.first(std::min(bad.size(), kMostNamed)).join(QStringLiteral(", ")))
                       .arg(more > 0 ? QStringLiteral(" and %1 more").arg(more) : QString()));
    }
    if (!foreign.isEmpty()) {
      parts.append(QStringLiteral("columns that are not known: %1").arg(foreign.join(QStringLiteral(", "))));
    }
    if (parts.isEmpty()) return QString();
    return QStringLiteral("%1: %2. They are passed over, and kept in the file.")
        .arg(QDir::toNativeSeparators(path), parts.join(QStringLiteral("; ")));
  }
};

AlignmentLog::Content AlignmentLog::Read(const QString& path) {
  Content content;
  if (QFileInfo::exists(path)) {
    const QByteArray all = files::ReadFile(path, kMostBytes);
    for (QByteArray bytes : all.split('\n')) {
      if (bytes.endsWith('\r')) bytes.chop(1);
      content.Lines.push_back({bytes, {}, {}});
    }
    // What follows the last line's end is no line.
    if (content.Lines.back().Bytes.isEmpty()) content.Lines.pop_back();
  }
  const auto fieldsOf = [](const QByteArray& bytes) {
    return files::CsvFields(QString::fromUtf8(bytes)).value_or(QStringList());
  };
  if (!content.Lines.empty()) {
    QByteArray first = content.Lines.front().Bytes;
    // Spreadsheets begin what is UTF-8 with a mark.
    if (first.startsWith("\xEF\xBB\xBF")) first.remove(0, 3);
    const QStringList header = fieldsOf(first);
    if (HasNeededColumns(header)) {
      content.Header = header;
      content.HeaderBytes = content.Lines.front().Bytes;
      content.Lines.erase(content.Lines.begin());
      content.FirstLine = 2;
    }
  }
  if (content.Header.isEmpty()) content.CompleteHeader();
  for (Content::Line& line : content.Lines) {
    line.Fields = fieldsOf(line.Bytes);
    line.Alignment = ReadLogFields(content.Header, line.Fields);
  }
  content.CompleteHeader();
  return content;
}

void AlignmentLog::Refresh() const {
  const QFileInfo file(path_);
  const qint64 bytes = file.exists() ? file.size() : -1;
  const QDateTime written = file.lastModified();
  if (bytes == bytes_ && written == written_) return;
  bytes_ = bytes;
  written_ = written;
  rows_.clear();
  note_.clear();
  wasRead_ = true;
  try {
    const Content content = Read(path_);
    for (const Content::Line& line : content.Lines) {
      if (line.Alignment) rows_.push_back(*line.Alignment);
    }
    note_ = content.NoteOn(path_);
  } catch (const files::FileError& error) {
    note_ = error.Text();
    wasRead_ = false;
  }
}

const std::vector<LoggedAlignment>& AlignmentLog::Rows() const {
  Refresh();
  return rows_;
}

bool AlignmentLog::WasRead() const {
  Refresh();
  return wasRead_;
}

QString AlignmentLog::Note() const {
  Refresh();
  return note_;
}

const LoggedAlignment* AlignmentLog::Find(const LoggedAlignment& picture) const {
  Refresh();
  const auto found = std::find_if(rows_.rbegin(), rows_.rend(),
                                  [&](const LoggedAlignment& row) { return IsSamePicture(row, picture); });
  return found == rows_.rend() ? nullptr : &*found;
}

void AlignmentLog::Add(const LoggedAlignment& alignment) {
  Change([&](Content& content) {
    const auto before = content.Take(alignment);
    content.Append(alignment, before ? before->Fields : QStringList());
    content.CutToLimit();
  });
}

void AlignmentLog::Remove(const std::vector<LoggedAlignment>& pictures) {
  Change([&](Content& content) {
    for (const LoggedAlignment& picture : pictures) content.Take(picture);
  });
}

void AlignmentLog::Change(const std::function<void(Content&)>& change) {
  const QString folder = QFileInfo(path_).path();
  QDir().mkpath(folder);
  // What is read here must still be all that is there when it is replaced.
  const files::FolderLock lock(folder, kPatienceMs);
  Content content = Read(path_);
  change(content);
  files::ReplaceFile(path_, content.Bytes());
  // Two changes may fall into one tick of the file system's clock.
  written_ = QDateTime();
}

}  // namespace pelorin::align
