#include "session/list_box.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

namespace pelorin::session {
namespace {

constexpr char kMimeType[] = "application/x-pelorin-listbox";
constexpr char kSource[] = "source";
constexpr int kEmptyTextMargin = 8;

/// The list that a drag comes from, or null. The event itself knows it only while the drag is this program's
/// own and carried out by the window system.
TListBox* SourceOf(const QDropEvent* event) {
  QObject* source = event->source();
  if (source == nullptr) source = event->mimeData()->property(kSource).value<QObject*>();
  return qobject_cast<TListBox*>(source);
}

}  // namespace

TListBox::TListBox(QWidget* parent) : QListWidget(parent) {
  connect(this, &QListWidget::itemDoubleClicked, this, &TListBox::Chosen);
}

void TListBox::SetEmptyText(const QString& text) {
  emptyText_ = text;
  viewport()->update();
}

void TListBox::SetItems(const QStringList& texts) {
  const QSignalBlocker quiet(this);
  const QString before = SelectedText();
  const int row = currentRow();
  clear();
  addItems(texts);
  if (before.isEmpty() || texts.isEmpty()) return;
  const qsizetype again = texts.indexOf(before);
  setCurrentRow(again >= 0 ? static_cast<int>(again) : std::min(row, count() - 1));
}

QStringList TListBox::Items() const {
  QStringList texts;
  for (int row = 0; row < count(); ++row) texts.append(item(row)->text());
  return texts;
}

QString TListBox::SelectedText() const {
  const QListWidgetItem* current = currentItem();
  return current != nullptr && current->isSelected() ? current->text() : QString();
}

void TListBox::AllowDragging() {
  setDragEnabled(true);
  setAcceptDrops(true);
  setDragDropMode(QAbstractItemView::DragDrop);
  setDefaultDropAction(Qt::MoveAction);
}

void TListBox::startDrag(Qt::DropActions) {
  if (SelectedText().isEmpty()) return;
  auto* drag = new QDrag(this);
  auto* content = new QMimeData;
  content->setData(QString::fromLatin1(kMimeType), QByteArray());
  content->setProperty(kSource, QVariant::fromValue<QObject*>(this));
  drag->setMimeData(content);
  drag->exec(Qt::MoveAction);
}

void TListBox::dragEnterEvent(QDragEnterEvent* event) {
  const TListBox* source = SourceOf(event);
  event->setAccepted(source != nullptr && source != this);
}

void TListBox::dragMoveEvent(QDragMoveEvent* event) {
  const TListBox* source = SourceOf(event);
  event->setAccepted(source != nullptr && source != this);
}

void TListBox::dropEvent(QDropEvent* event) {
  TListBox* source = SourceOf(event);
  if (source == nullptr || source == this) return event->ignore();
  event->acceptProposedAction();
  Q_EMIT DragDrop(source);
}

void TListBox::keyPressEvent(QKeyEvent* event) {
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !SelectedText().isEmpty()) {
    Q_EMIT Chosen();
    return;
  }
  QListWidget::keyPressEvent(event);
}

void TListBox::paintEvent(QPaintEvent* event) {
  QListWidget::paintEvent(event);
  if (count() > 0 || emptyText_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setFont(QApplication::font());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const QRect room =
      viewport()->rect().adjusted(kEmptyTextMargin, kEmptyTextMargin, -kEmptyTextMargin, -kEmptyTextMargin);
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

}  // namespace pelorin::session
