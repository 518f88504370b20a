#pragma once

#include <QStyledItemDelegate>

namespace pelorin::desktop {

/// A text under this role says what an entry lacks: the entry is dimmed, with the text behind it. The entry's
/// own text is left alone.
inline constexpr int kMissingRole = Qt::UserRole;

/// Draws what is missing dimmed, and tells an entry's whole text as a tool tip where the list is too narrow
/// for it.
class FullTextDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace pelorin::desktop
