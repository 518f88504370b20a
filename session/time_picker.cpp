#include "session/time_picker.h"

#include <QScopedValueRollback>

namespace pelorin::session {

void TTimePicker::stepBy(int steps) {
  // What was typed before is no part of the step.
  interpretText();
  const QScopedValueRollback stepping(isStepping_, true);
  QDateTimeEdit::stepBy(steps);
}

}  // namespace pelorin::session
