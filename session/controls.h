#pragma once

#include <QComboBox>
#include <QEvent>
#include <QObject>
#include <QWidget>
#include <exception>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "session/active_satellites.h"
#include "session/prompts.h"

class QGroupBox;
class QLabel;
class QPushButton;

namespace pelorin::session {

/// The control itself, known by its name to tests, style sheets and those who look for it.
template <class Control>
Control* Named(Control* control, const char* name) {
  control->setObjectName(QString::fromLatin1(name));
  return control;
}

/// The application's default error box: runs `work` and shows what leaves it. The program goes on. True when
/// nothing left it.
bool Guarded(Prompts& boxes, const std::function<void()>& work);

/// Connects an event to its handler, a member of `page`, which has `Boxes()`; an error that leaves the
/// handler is shown in the default error box. Handlers take the signal's arguments or none.
template <class Sender, class Signal, class Page, class Method>
QMetaObject::Connection Handle(const Sender* sender, Signal signal, Page* page, Method method) {
  if constexpr (std::is_invocable_v<Method, Page*>) {
    return QObject::connect(sender, signal, page,
                            [page, method] { Guarded(page->Boxes(), [&] { std::invoke(method, page); }); });
  } else {
    return QObject::connect(sender, signal, page, [page, method](auto&&... arguments) {
      Guarded(page->Boxes(),
              [&] { std::invoke(method, page, std::forward<decltype(arguments)>(arguments)...); });
    });
  }
}

/// Calls `handler` with every event of a type that the control gets, before the control itself sees it.
/// Errors are shown as in Handle.
void OnEvent(QWidget* control, QEvent::Type type, Prompts& boxes, std::function<void(const QEvent&)> handler);

/// Calls `handler` when the key is pressed in the control; the control does not see it then. Errors are shown
/// as in Handle.
void OnKey(QWidget* control, Qt::Key key, Prompts& boxes, std::function<void()> handler);

/// Calls `handler` when the control gets, or loses, the keyboard; not when it is lent to a menu or to another
/// window. Before OnFocusOut's handler is called the control has committed what was typed into it: a spin box
/// or picker has its new value, and has told it.
void OnFocusIn(QWidget* control, Prompts& boxes, std::function<void()> handler);
void OnFocusOut(QWidget* control, Prompts& boxes, std::function<void()> handler);

/// A text's own label, with `buddy` reached by its mnemonic.
QLabel* LabelFor(const QString& text, QWidget* buddy, QWidget* parent);

/// Button or box with its hint, which also describes it to screen readers.
template <class Control>
Control* Hinted(Control* control, const QString& hint) {
  control->setToolTip(hint);
  control->setAccessibleDescription(hint);
  return control;
}

/// Fills a satellite chooser with the active satellites, in their order, and selects one without telling
/// anybody; −1 for none.
void FillChooser(QComboBox* chooser, const std::vector<NamedSatellite>& active, int selected);
/// Selects without telling anybody.
void SelectQuietly(QComboBox* chooser, int index);

}  // namespace pelorin::session
