#include "session/picker_time.h"

#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOption>
#include <algorithm>
#include <utility>

#include "orbit/time_stamp.h"
#include "session/time_picker.h"

namespace pelorin::session {

namespace {

constexpr Qt::KeyboardModifiers kCommandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

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

/// Makes a picker take dates and times as people type them. By itself it takes digits only over a part that
/// is selected, and months only by their names; and since it goes on to the next part as soon as one is
/// complete, a separator or the Tab key after it would skip a part.
class TypedParts : public QObject {
 public:
  explicit TypedParts(QDateTimeEdit* picker)
      : QObject(picker), picker_(picker), text_(picker->findChild<QLineEdit*>()) {
    picker->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    return event->type() == QEvent::KeyPress && Take(*static_cast<QKeyEvent*>(event));
  }

 private:
  /// True when the picker is to see nothing of the key.
  bool Take(const QKeyEvent& key) {
    const int typedIn = std::exchange(typedIn_, kNone);
    const bool hasGoneOn = typedIn != kNone && typedIn != picker_->currentSectionIndex();
    if (key.key() == Qt::Key_Tab) return hasGoneOn;
    if (key.text().size() != 1 || !key.text().front().isPrint() || key.modifiers() & kCommandKeys)
      return false;
    const QChar typed = key.text().front();
    if (!typed.isLetterOrNumber()) {
      if (!hasGoneOn) Select(std::min(picker_->currentSectionIndex() + 1, picker_->sectionCount() - 1));
      return true;
    }
    if (text_->selectedText() == text_->text()) {
      Select(0);
    } else if (!text_->hasSelectedText() && typed.isDigit() && picker_->hasAcceptableInput()) {
      Select(picker_->currentSectionIndex());
    }
    typedIn_ = picker_->currentSectionIndex();
    if (picker_->currentSection() != QDateTimeEdit::MonthSection || !typed.isDigit()) return false;
    TakeMonthDigit(typed.digitValue(), typedIn == typedIn_);
    return true;
  }

  void Select(int part) { picker_->setSelectedSection(picker_->sectionAt(part)); }

  void TakeMonthDigit(int digit, bool isSecond) {
    const int month = isSecond && tens_ * 10 + digit <= 12 ? tens_ * 10 + digit : digit;
    const bool isWhole = isSecond || digit > 1;
    tens_ = digit;
    if (month > 0) {
      const QDate date = picker_->date();
      picker_->setDate(QDate(date.year(), month, 1)
                           .addDays(std::min(date.day(), QDate(date.year(), month, 1).daysInMonth()) - 1));
    }
    Select(typedIn_ + (isWhole ? 1 : 0));
  }

  static constexpr int kNone = -1;
  QDateTimeEdit* picker_;
  QLineEdit* text_;
  int typedIn_ = kNone;  ///< the part into which the last key was typed
  int tens_ = 0;         ///< the digit of a month that was typed last
};

}  // namespace

bool TypesDigit(const QKeyEvent& event) {
  const QString text = event.text();
  return text.size() == 1 && text.front().isDigit() && !(event.modifiers() & kCommandKeys);
}

void SetUpPicker(QDateTimeEdit* picker, const QString& format) {
  picker->setTimeSpec(Qt::UTC);
  picker->setLocale(QLocale::c());
  picker->setDisplayFormat(format);
  const bool showsDate = (picker->displayedSections() & QDateTimeEdit::DateSections_Mask) != 0;
  picker->setCalendarPopup(showsDate);
  picker->setWrapping(!showsDate);
  if (showsDate) new FrameClicks(picker);
  new TypedParts(picker);
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
