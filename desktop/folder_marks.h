#pragma once

#include "desktop/full_text_delegate.h"

class QLineEdit;
class QListWidget;

/// Folders that do not exist are marked, and stay: a disk may be plugged in again. The texts themselves are
/// left alone.
namespace pelorin::desktop {

/// Shows a warning sign in the box while its text names no existing folder. To be called after each change.
void MarkMissingFolder(QLineEdit* box);

/// Notes with each entry whether its folder exists, for FolderDelegate to show.
void MarkMissingFolders(QListWidget* list);

/// Draws what MarkMissingFolders found missing dimmed, with "not found" behind it.
class FolderDelegate : public FullTextDelegate {
  Q_OBJECT

 public:
  using FullTextDelegate::FullTextDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace pelorin::desktop
