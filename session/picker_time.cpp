#include "session/picker_time.h"

#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOption>

#include "orbit/time_stamp.h"
#include "session/time_picker.h"

namespace pelorin::session {

namespace {

/// A date picker's frame would count as its upper step button; only the arrow opens the calendar.
class FrameClicks : public QObject {
 public:
  explicit FrameClicks(QDateTimeEdit* picker) : QObject(picker), picker_(picker) {
    picker->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick)
      return false;
    QStyleOptionComboBox box;
    box.initFrom(picker_);
    box.editable = true;
    box.subControls = QStyle::SC_All;
    const QPoint position = static_cast<QMouseEvent*>(event)->position().toPoint();
    return picker_->style()->hitTestComplexControl(QStyle::CC_ComboBox, &box, position, picker_) !=
           QStyle::SC_ComboBoxArrow;
  }

 private:
  QDateTimeEdit* picker_;
};

/// By itself a picker takes digits only over a part that is selected, as the Tab key leaves it.
class DigitsAfterClick : public QObject {
 public:
  explicit DigitsAfterClick(QDateTimeEdit* picker)
      : QObject(picker), picker_(picker), text_(picker->findChild<QLineEdit*>()) {
    picker->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && TypesDigit(*static_cast<QKeyEvent*>(event)) &&
        !text_->hasSelectedText() && picker_->hasAcceptableInput()) {
      picker_->setSelectedSection(picker_->currentSection());
    }
    return false;
  }

 private:
  QDateTimeEdit* picker_;
  QLineEdit* text_;
};

}  // namespace

bool TypesDigit(const QKeyEvent& event) {
  constexpr Qt::KeyboardModifiers commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  const QString text = event.text();
  return text.size() == 1 && text.front().isDigit() && !(event.modifiers() & commands);
}

void SetUpPicker(QDateTimeEdit* picker, const QString& format) {
  picker->setTimeSpec(Qt::UTC);
  picker->setLocale(QLocale::c());
  picker->setDisplayFormat(format);
  const bool showsDate = (picker->displayedSections() & QDateTimeEdit::DateSections_Mask) != 0;
  picker->setCalendarPopup(showsDate);
  picker->setWrapping(!showsDate);
  if (showsDate) new FrameClicks(picker);
  new DigitsAfterClick(picker);
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

orbit::TDateTime ChangedMoment(const QDateTimeEdit* date, const TTimePicker* time, orbit::TDateTime before) {
  const QTime clock = time->time();
  if (time->IsStepping()) return orbit::SteppedTime(PickedDay(date), clock.hour(), clock.minute(), before);
  return orbit::CutToMinute(PickedMoment(date, time));
}

void TurnPicker(QDateTimeEdit* picker, orbit::TDateTime moment) {
  const orbit::DateTimeFields fields = TakeApart(moment);
  const QSignalBlocker quiet(picker);
  picker->setDateTime(QDateTime(QDate(fields.Year, fields.Month, fields.Day),
                                QTime(fields.Hour, fields.Minute, fields.Second), Qt::UTC));
}

}  // namespace pelorin::session
