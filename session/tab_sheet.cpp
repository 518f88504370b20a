#include "session/tab_sheet.h"

#include <QHideEvent>
#include <QShowEvent>

namespace pelorin::session {

TTabSheet::TTabSheet(Session& session, QWidget* parent) : QWidget(parent), session_(session) {}

void TTabSheet::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) Q_EMIT Shown();
}

void TTabSheet::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!event->spontaneous()) Q_EMIT Hidden();
}

}  // namespace pelorin::session
