#include "desktop/folder_marks.h"

#include <QAction>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QStyle>

#include "desktop/full_text_delegate.h"

namespace pelorin::desktop {
namespace {

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
    item->setData(kMissingRole, IsFolder(item->text()) ? QString() : QStringLiteral("not found"));
  }
}

}  // namespace pelorin::desktop
