#pragma once

#include <QString>

#include "orbit/date_time.h"

class QDateTimeEdit;
class QKeyEvent;

/// Moments in the date and time pickers. All pickers show UTC, with English month names as in the pass list.
namespace pelorin::session {

class TTimePicker;

/// Makes a picker show UTC in a format of QDateTime: "yyyy MMM dd", "HH:mm", "HH:mm:ss". Date pickers get a
/// calendar, time pickers wrap at midnight. What is typed counts however it is written: over everything that
/// is selected, after a click into a part that is complete, with or without separators, months as digits.
void SetUpPicker(QDateTimeEdit* picker, const QString& format);

/// 00:00 of the day that a date picker shows.
orbit::TDateTime PickedDay(const QDateTimeEdit* date);
/// The day of one picker with the time of the other.
orbit::TDateTime PickedMoment(const QDateTimeEdit* date, const QDateTimeEdit* time);

/// What they show, to the minute, once the user has changed one of them. A minute that was stepped past the
/// hour's end takes hour and date along; `before` is what they showed until now.
orbit::TDateTime ChangedMoment(const QDateTimeEdit* date, const TTimePicker* time, orbit::TDateTime before);

/// The key writes a digit, and is no command.
bool TypesDigit(const QKeyEvent& event);

/// Turns a picker to a moment, cut to the second, without telling anybody.
void TurnPicker(QDateTimeEdit* picker, orbit::TDateTime moment);

}  // namespace pelorin::session
