#pragma once

#include <QStyledItemDelegate>

namespace pelorin::desktop {

/// Tells an entry's whole text as a tool tip where the list is too narrow for it.
class FullTextDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
};

}  // namespace pelorin::desktop
