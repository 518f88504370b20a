#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <vector>

#include "align/logged_alignment.h"

namespace pelorin::align {

/// The log is cut to so many alignments, the oldest going first: fifteen years of four pictures a day.
inline constexpr std::size_t kMostLogged = 20'000;

/// The log of alignments that were accepted: a table that other programs can read (docs/formats.md), a row a
/// picture, the one that was accepted last at the end.
///
/// What is not understood, be it a row, a column or the whole file, is passed over and stays in the file as
/// it is. The file is replaced whole or not at all, and the folder is locked from reading to replacing, so
/// that several programs that write it at once lose nothing of each other's.
class AlignmentLog {
 public:
  /// Neither file nor folder need exist; nothing is read yet.
  explicit AlignmentLog(QString path) : path_(std::move(path)) {}

  const QString& Path() const { return path_; }

  /// As the file has them now, whoever wrote it; valid until the next call. None when there is no file, or
  /// one that cannot be read.
  const std::vector<LoggedAlignment>& Rows() const;
  /// There is no file, or it was read; otherwise Note tells why not.
  bool WasRead() const;
  /// What of the file was passed over, or why all of it, for the user, in one text; empty when all is
  /// understood.
  QString Note() const;
  /// The alignment of a picture, the last if there are several; null when it was never aligned. Valid until
  /// the next call.
  const LoggedAlignment* Find(const LoggedAlignment& picture) const;

  /// In place of what the log had of the same picture, of which the columns that are not ours are kept.
  /// Raises FileError; the log is then as it was.
  void Add(const LoggedAlignment& alignment);
  /// Takes out whatever the log has of these pictures. Raises FileError likewise.
  void Remove(const std::vector<LoggedAlignment>& pictures);

 private:
  struct Content;
  static Content Read(const QString& path);
  void Change(const std::function<void(Content&)>& change);
  void Refresh() const;

  QString path_;
  /// What was read last, and of which file.
  mutable std::vector<LoggedAlignment> rows_;
  mutable QString note_;
  mutable bool wasRead_ = true;
  mutable qint64 bytes_ = -1;
  mutable QDateTime written_;
};

}  // namespace pelorin::align
