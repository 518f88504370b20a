#include "desktop/folder_marks.h"

#include <QAction>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QStyle>

namespace pelorin::desktop {
namespace {

constexpr int kMissingRole = Qt::UserRole;

bool IsFolder(const QString& path) { return !path.isEmpty() && QFileInfo(path).isDir(); }

}  // namespace

void MarkMissingFolder(QLineEdit* box) {
  const QString name = QStringLiteral("ActionFolderMissing");
  auto* sign = box->findChild<QAction*>(name);
  if (sign == nullptr) {
    sign =
        box->addAction(box->style()->standardIcon(QStyle::SP_MessageBoxWarning), QLineEdit::TrailingPosition);
    sign->setObjectName(name);
    sign->setToolTip(QStringLiteral("There is no such folder"));
  }
  sign->setVisible(!IsFolder(box->text()));
}

void MarkMissingFolders(QListWidget* list) {
  for (int row = 0; row < list->count(); ++row) {
    QListWidgetItem* item = list->item(row);
    item->setData(kMissingRole, !IsFolder(item->text()));
  }
}

void FolderDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  FullTextDelegate::initStyleOption(option, index);
  if (!index.data(kMissingRole).toBool()) return;
  option->text += QStringLiteral("  (not found)");
  option->font.setItalic(true);
  option->fontMetrics = QFontMetrics(option->font);
  option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
}

}  // namespace pelorin::desktop
