#pragma once

#include <QString>

namespace pelorin::cli {

/// How far some work is, in a line of standard error that is gone when it is done. Where nobody sees it, as
/// in a file, nothing is written.
class ProgressLine {
 public:
  /// `what` is being done, as in "Aligning".
  explicit ProgressLine(QString what);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// `share` is 0 … 1.
  void Show(double share);

 private:
  QString what_;
  bool isSeen_;
  int percent_ = -1;
};

}  // namespace pelorin::cli
