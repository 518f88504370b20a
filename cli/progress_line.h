#pragma once

#include <QString>
#include <chrono>

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

  /// Since it was made.
  int Milliseconds() const;

 private:
  QString what_;
  bool isSeen_;
  int percent_ = -1;
  std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

}  // namespace pelorin::cli
