#include "app/session/picker_time.h"

#include <QDateTimeEdit>
#include <QSignalBlocker>

namespace pelorin::session {

void SetUpPicker(QDateTimeEdit* picker, const QString& format) {
  picker->setTimeSpec(Qt::UTC);
  picker->setLocale(QLocale::c());
  picker->setDisplayFormat(format);
  const bool showsDate = (picker->displayedSections() & QDateTimeEdit::DateSections_Mask) != 0;
  picker->setCalendarPopup(showsDate);
  picker->setWrapping(!showsDate);
}

orbit::TDateTime PickedDay(const QDateTimeEdit* date) {
  const QDate day = date->date();
  return orbit::MakeDateTime(day.year(), day.month(), day.day());
}

orbit::TDateTime PickedMoment(const QDateTimeEdit* date, const QDateTimeEdit* time) {
  const QDate day = date->date();
  const QTime clock = time->time();
  return orbit::MakeDateTime(day.year(), day.month(), day.day(), clock.hour(), clock.minute(),
                             clock.second());
}

void TurnPicker(QDateTimeEdit* picker, orbit::TDateTime moment) {
  const orbit::DateTimeFields fields = TakeApart(moment);
  const QSignalBlocker quiet(picker);
  picker->setDateTime(QDateTime(QDate(fields.Year, fields.Month, fields.Day),
                                QTime(fields.Hour, fields.Minute, fields.Second), Qt::UTC));
}

}  // namespace pelorin::session
