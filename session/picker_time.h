#pragma once

#include <QString>

#include "orbit/date_time.h"

class QDateTimeEdit;

/// Moments in the date and time pickers. All pickers show UTC, with English month names as in the pass list.
namespace pelorin::session {

/// Makes a picker show UTC in a format of QDateTime: "yyyy MMM dd", "HH:mm", "HH:mm:ss". Date pickers get a
/// calendar, time pickers wrap at midnight.
void SetUpPicker(QDateTimeEdit* picker, const QString& format);

/// 00:00 of the day that a date picker shows.
orbit::TDateTime PickedDay(const QDateTimeEdit* date);
/// The day of one picker with the time of the other.
orbit::TDateTime PickedMoment(const QDateTimeEdit* date, const QDateTimeEdit* time);

/// Turns a picker to a moment, cut to the second, without telling anybody.
void TurnPicker(QDateTimeEdit* picker, orbit::TDateTime moment);

}  // namespace pelorin::session
