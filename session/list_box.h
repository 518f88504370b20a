#pragma once

#include <QListWidget>

namespace pelorin::session {

/// A list that explains itself while it is empty, and whose entries can be dragged to another list of the
/// kind, though not within it. What a drop means is its owner's affair.
class TListBox : public QListWidget {
  Q_OBJECT

 public:
  explicit TListBox(QWidget* parent = nullptr);

  /// Shown, wrapped and dimmed, while there are no entries.
  void SetEmptyText(const QString& text);

  /// Replaces all entries without telling anybody; the current entry stays if it is among them, or else the
  /// one that took its row.
  void SetItems(const QStringList& texts);
  QStringList Items() const;
  /// Empty when none is selected.
  QString SelectedText() const;

  /// Entries can be dragged out of this list and dropped on it.
  void AllowDragging();

 Q_SIGNALS:
  /// An entry of another list, its selected one, was dropped here.
  void DragDrop(pelorin::session::TListBox* source);
  /// Enter, or a double click on an entry.
  void Chosen();

 protected:
  void startDrag(Qt::DropActions supported) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QString emptyText_;
};

}  // namespace pelorin::session
