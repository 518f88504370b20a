#pragma once

#include <QDateTimeEdit>

namespace pelorin::session {

/// A picker of hours and minutes that tells a step from what is typed: 00 over 14:59 is 14:00 when typed, and
/// the next hour when stepped to.
class TTimePicker : public QDateTimeEdit {
 public:
  using QDateTimeEdit::QDateTimeEdit;

  /// The change that is just being told is a step: by arrow, wheel or key.
  bool IsStepping() const { return isStepping_; }

  void stepBy(int steps) override;

 private:
  bool isStepping_ = false;
};

}  // namespace pelorin::session
