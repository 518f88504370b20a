#pragma once

#include <QString>
#include <map>
#include <optional>

namespace pelorin::swath {

/// The seconds that are added to a pass's start, which is known to the minute: those at which the recording
/// began, if its name tells them, and what the recorder's clock was off. The latter is remembered for each
/// satellite, since passes of one satellite are recorded the same way; seconds without a name for them are
/// good for one picture alone.
class TimeCorrection {
 public:
  static constexpr double kLimitS = 90, kStepS = 0.5;

  /// `saved` is what Saved gave; what is not understood is passed over.
  explicit TimeCorrection(const QString& saved);

  /// A picture, or none, is at hand: gives the correction to begin with.
  double Begin(const QString& satellite, std::optional<int> secondsOfName);
  /// The user wants this correction; gives it, brought into the limits and to a whole step.
  double Change(double seconds);

  /// The clock corrections, to be kept.
  QString Saved() const;

 private:
  /// Files write a satellite's name as they like.
  struct CaseAside {
    bool operator()(const QString& a, const QString& b) const {
      return a.compare(b, Qt::CaseInsensitive) < 0;
    }
  };

  std::map<QString, double, CaseAside> clocks_;  ///< by satellite name, seconds
  QString satellite_;
  std::optional<int> secondsOfName_;
};

}  // namespace pelorin::swath
