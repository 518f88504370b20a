#include "desktop/overlay/form_overlay_text_options.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "overlay/overlay_text.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

QListWidget* NewItemList(std::size_t number) {
  auto* list = new QListWidget;
  list->setObjectName(QStringLiteral("CheckListBoxLine%1").arg(number));
  for (const overlay::TextItemChoice& choice : overlay::TextItemChoices()) {
    auto* item = new QListWidgetItem(choice.Caption, list);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
  }
  list->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
  list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setMinimumWidth(150);
  return list;
}

/// As wide as the longest line, so that the dialog keeps its size while boxes are checked.
QLabel* NewPreview(std::size_t number) {
  auto* preview = new QLabel;
  preview->setObjectName(QStringLiteral("LabelPreview%1").arg(number));
  preview->setTextFormat(Qt::PlainText);
  preview->setAlignment(Qt::AlignCenter);
  preview->setMinimumWidth(
      preview->fontMetrics().horizontalAdvance(overlay::PreviewText(overlay::MaskItems(0xFF))));
  return preview;
}

}  // namespace

TFormOverlayTextOptions::TFormOverlayTextOptions(session::Session& session, QWidget* parent)
    : TForm(session, "FormOverlayTextOptions", QStringLiteral("Pelorin - Overlay Text Options"), parent) {}

void TFormOverlayTextOptions::FormCreate() {
  auto* lines = new QGridLayout;
  auto* sample = new QGroupBox(QStringLiteral(" Sample Overlay Text Preview "), this);
  auto* previews = new QVBoxLayout(sample);
  for (std::size_t line = 0; line < kLines; ++line) {
    const int column = static_cast<int>(line);
    lists_[line] = NewItemList(line + 1);
    lines->addWidget(session::LabelFor(QStringLiteral("Line %1").arg(line + 1), lists_[line], this), 0,
                     column);
    lines->addWidget(lists_[line], 1, column);
    previews_[line] = NewPreview(line + 1);
    previews->addWidget(previews_[line]);
    session::Handle(lists_[line], &QListWidget::itemChanged, this,
                    [line](TFormOverlayTextOptions* form) { form->CheckListBoxLinesClickCheck(line); });
  }

  auto* buttons = new QDialogButtonBox(this);
  session::Named(buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole), "ButtonOK");
  auto* cancel = session::Named(buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole),
                                "ButtonCancel");
  cancel->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* form = new QVBoxLayout(this);
  form->addWidget(
      new QLabel(QStringLiteral("Check the boxes for the elements each line should contain."), this));
  form->addLayout(lines);
  form->addWidget(sample);
  form->addWidget(buttons);
  form->setSizeConstraint(QLayout::SetFixedSize);
}

void TFormOverlayTextOptions::Run() {
  for (std::size_t line = 0; line < kLines; ++line) {
    items_[line] = overlay::MaskItems(session_.Settings.OvlTextLine[line].Value);
  }
  if (exec() != QDialog::Accepted) return;
  for (std::size_t line = 0; line < kLines; ++line) session_.Settings.OvlTextLine[line].Value = items_[line];
}

void TFormOverlayTextOptions::FormShow() {
  const auto& choices = overlay::TextItemChoices();
  for (std::size_t line = 0; line < kLines; ++line) {
    const QSignalBlocker quiet(lists_[line]);
    for (std::size_t i = 0; i < choices.size(); ++i) {
      const bool isChosen = (items_[line] & choices[i].Item) != 0;
      lists_[line]->item(static_cast<int>(i))->setCheckState(isChosen ? Qt::Checked : Qt::Unchecked);
    }
  }
  ShowPreview();
}

QWidget* TFormOverlayTextOptions::FirstControl() const { return lists_[0]; }

void TFormOverlayTextOptions::CheckListBoxLinesClickCheck(std::size_t line) {
  const auto& choices = overlay::TextItemChoices();
  int items = 0;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (lists_[line]->item(static_cast<int>(i))->checkState() == Qt::Checked) items |= choices[i].Item;
  }
  items_[line] = overlay::MaskItems(items);
  ShowPreview();
}

void TFormOverlayTextOptions::ShowPreview() {
  for (std::size_t line = 0; line < kLines; ++line)
    previews_[line]->setText(overlay::PreviewText(items_[line]));
}

}  // namespace pelorin::desktop
