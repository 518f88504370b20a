#include "desktop/full_text_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace pelorin::desktop {

bool FullTextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index) {
  const bool isCut = event->type() == QEvent::ToolTip && index.isValid() &&
                     sizeHint(option, index).width() > view->viewport()->width();
  if (!isCut) return QStyledItemDelegate::helpEvent(event, view, option, index);
  QStyleOptionViewItem shown(option);
  initStyleOption(&shown, index);
  QToolTip::showText(event->globalPos(), shown.text, view);
  return true;
}

void FullTextDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const QString missing = index.data(kMissingRole).toString();
  if (missing.isEmpty()) return;
  option->text += QStringLiteral("  (%1)").arg(missing);
  option->font.setItalic(true);
  option->fontMetrics = QFontMetrics(option->font);
  option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
}

}  // namespace pelorin::desktop
