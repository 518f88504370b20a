#pragma once

class QLineEdit;
class QListWidget;

/// Folders that do not exist are marked, and stay: a disk may be plugged in again. The texts themselves are
/// left alone.
namespace pelorin::desktop {

/// Shows a warning sign in the box while its text names no existing folder. To be called after each change.
void MarkMissingFolder(QLineEdit* box);

/// Notes with each entry whether its folder exists, for FullTextDelegate to show.
void MarkMissingFolders(QListWidget* list);

}  // namespace pelorin::desktop
