#include "session/controls.h"

#include <QAbstractSpinBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>

namespace pelorin::session {
namespace {

/// Looks at the events of one control and lives as long as it does.
class EventWatch : public QObject {
 public:
  /// `handler` answers whether the event ends here.
  EventWatch(QWidget* control, std::function<bool(QEvent*)> handler)
      : QObject(control), handler_(std::move(handler)) {
    control->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override { return handler_(event); }

 private:
  std::function<bool(QEvent*)> handler_;
};

/// A menu of the control's own, or another window in front, takes the keyboard for a while only.
bool IsForAWhile(const QFocusEvent& event) {
  return event.reason() == Qt::PopupFocusReason || event.reason() == Qt::MenuBarFocusReason ||
         event.reason() == Qt::ActiveWindowFocusReason;
}

void OnFocus(QWidget* control, QEvent::Type type, Prompts& boxes, std::function<void()> handler) {
  OnEvent(control, type, boxes, [handler = std::move(handler)](const QEvent& event) {
    if (!IsForAWhile(static_cast<const QFocusEvent&>(event))) handler();
  });
}

}  // namespace

bool Guarded(Prompts& boxes, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    boxes.Error(QString::fromUtf8(error.what()));
    return false;
  }
}

void OnEvent(QWidget* control, QEvent::Type type, Prompts& boxes,
             std::function<void(const QEvent&)> handler) {
  new EventWatch(control, [type, &boxes, handler = std::move(handler)](QEvent* event) {
    if (event->type() == type) Guarded(boxes, [&] { handler(*event); });
    return false;
  });
}

void OnKey(QWidget* control, Qt::Key key, Prompts& boxes, std::function<void()> handler) {
  new EventWatch(control, [key, &boxes, handler = std::move(handler)](QEvent* event) {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != key) return false;
    Guarded(boxes, handler);
    return true;
  });
}

void OnFocusIn(QWidget* control, Prompts& boxes, std::function<void()> handler) {
  OnFocus(control, QEvent::FocusIn, boxes, std::move(handler));
}

void OnFocusOut(QWidget* control, Prompts& boxes, std::function<void()> handler) {
  // Spin boxes commit when they get the event themselves, which is after those who watch them.
  OnFocus(control, QEvent::FocusOut, boxes, [control, handler = std::move(handler)] {
    if (auto* box = qobject_cast<QAbstractSpinBox*>(control)) box->interpretText();
    handler();
  });
}

QLabel* LabelFor(const QString& text, QWidget* buddy, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setBuddy(buddy);
  return label;
}

void FillChooser(QComboBox* chooser, const std::vector<NamedSatellite>& active, int selected) {
  const QSignalBlocker quiet(chooser);
  chooser->clear();
  for (const NamedSatellite& entry : active) chooser->addItem(entry.Name);
  chooser->setCurrentIndex(selected);
}

void SelectQuietly(QComboBox* chooser, int index) {
  const QSignalBlocker quiet(chooser);
  chooser->setCurrentIndex(index);
}

}  // namespace pelorin::session
