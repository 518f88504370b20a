#include "desktop/overlay/form_alignments.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextDocument>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "align/alignment_table.h"
#include "app/program_paths.h"
#include "desktop/overlay/alignment_plot_view.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Named;

constexpr QSize kFirstSize(1000, 560);
/// The most of the screen that the window takes at first.
constexpr double kScreenPart = 0.9;
/// Lines of medians that are seen at once.
constexpr qsizetype kMostMedians = 4;
constexpr int kPlaceRole = Qt::UserRole, kOrderRole = Qt::UserRole + 1;

/// Sorts by what a cell means, not by how it is written.
class TAlignmentItem : public QTreeWidgetItem {
 public:
  TAlignmentItem(const align::LoggedAlignment& alignment, std::size_t place) {
    int column = 0;
    for (const align::TableCell& cell : align::TableRow(alignment)) {
      setText(column, cell.Text);
      setData(column, kOrderRole, cell.SortedBy);
      if (cell.IsNumber) setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
      ++column;
    }
    setData(0, kPlaceRole, static_cast<qulonglong>(place));
  }

  std::size_t Place() const { return data(0, kPlaceRole).toULongLong(); }

  bool operator<(const QTreeWidgetItem& other) const override {
    const int column = treeWidget()->sortColumn();
    const QVariant mine = data(column, kOrderRole), others = other.data(column, kOrderRole);
    return mine.typeId() == QMetaType::QString ? mine.toString().localeAwareCompare(others.toString()) < 0
                                               : mine.toDouble() < others.toDouble();
  }
};

const TAlignmentItem& ItemAt(const QTreeWidget* list, int row) {
  return static_cast<const TAlignmentItem&>(*list->topLevelItem(row));
}

}  // namespace

TFormAlignments::TFormAlignments(session::Session& session, QWidget* parent)
    : TForm(session, "FormAlignments", QStringLiteral("Pelorin - Alignments"), parent),
      log_(app::AlignmentLogFile()) {}

void TFormAlignments::FormCreate() {
  Build();
  session::Handle(comboBoxSatellite_, &QComboBox::currentIndexChanged, this,
                  &TFormAlignments::ComboBoxSatelliteChange);
  session::Handle(listViewAlignments_, &QTreeWidget::itemSelectionChanged, this,
                  &TFormAlignments::SelectionChanged);
  session::Handle(plot_, &TAlignmentPlotView::PointChosen, this, &TFormAlignments::PointChosen);
  session::Handle(buttonDelete_, &QPushButton::clicked, this, &TFormAlignments::ButtonDeleteClick);
  session::Handle(buttonCopy_, &QPushButton::clicked, this, &TFormAlignments::ButtonCopyClick);
  session::OnKey(listViewAlignments_, Qt::Key_Delete, Boxes(), [this] { ButtonDeleteClick(); });
  auto* copy = new QShortcut(QKeySequence::Copy, listViewAlignments_);
  copy->setContext(Qt::WidgetShortcut);
  session::Handle(copy, &QShortcut::activated, this, &TFormAlignments::ButtonCopyClick);

  resize(kFirstSize.boundedTo(screen()->availableSize() * kScreenPart));
  restoreGeometry(QByteArray::fromBase64(session_.Settings.AlignmentsPlace.Value.toLatin1()));
}

void TFormAlignments::Build() {
  comboBoxSatellite_ = session::Hinted(Named(new QComboBox(this), "ComboBoxLogSatellite"),
                                       QStringLiteral("Show the alignments of one satellite alone"));
  comboBoxSatellite_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  labelMedians_ = Named(new QLabel(this), "LabelMedians");
  labelNote_ = Named(new QLabel(this), "LabelLogNote");
  for (QLabel* label : {labelMedians_, labelNote_}) {
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
  }

  listViewAlignments_ = Named(new QTreeWidget(this), "ListViewAlignments");
  listViewAlignments_->setHeaderLabels(align::TableHeadings());
  listViewAlignments_->setRootIsDecorated(false);
  listViewAlignments_->setUniformRowHeights(true);
  listViewAlignments_->setAllColumnsShowFocus(true);
  listViewAlignments_->setAlternatingRowColors(true);
  listViewAlignments_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  listViewAlignments_->setSortingEnabled(true);
  listViewAlignments_->sortByColumn(0, Qt::DescendingOrder);
  listViewAlignments_->setAccessibleName(QStringLiteral("Alignments"));
  labelEmpty_ = Named(new QLabel(listViewAlignments_->viewport()), "LabelNoAlignments");
  labelEmpty_->setText(QStringLiteral(
      "No picture was aligned yet.\n\nOpen one on the Ground Path page, align it there and take what was "
      "found. It is listed here, and opens aligned from then on."));
  labelEmpty_->setWordWrap(true);
  labelEmpty_->setAlignment(Qt::AlignCenter);
  labelEmpty_->setForegroundRole(QPalette::PlaceholderText);
  (new QVBoxLayout(listViewAlignments_->viewport()))->addWidget(labelEmpty_);

  plot_ = Named(new TAlignmentPlotView(this), "AlignmentPlot");
  auto* halves = Named(new QSplitter(this), "SplitterAlignments");
  halves->addWidget(listViewAlignments_);
  halves->addWidget(plot_);
  halves->setStretchFactor(0, 1);
  halves->setStretchFactor(1, 1);
  halves->setChildrenCollapsible(false);

  buttonDelete_ =
      session::Hinted(Named(new QPushButton(QStringLiteral("&Delete..."), this), "ButtonDeleteLogged"),
                      QStringLiteral("Forget the selected alignments; their pictures lie as usual again"));
  buttonCopy_ = session::Hinted(Named(new QPushButton(QStringLiteral("C&opy"), this), "ButtonCopyLogged"),
                                QStringLiteral("Copy the selected rows, or all, as a table"));
  auto* buttonClose = Named(new QPushButton(QStringLiteral("&Close"), this), "ButtonClose");
  buttonClose->setDefault(true);
  connect(buttonClose, &QPushButton::clicked, this, &QDialog::accept);

  auto* top = new QHBoxLayout;
  top->addWidget(session::LabelFor(QStringLiteral("&Satellite:"), comboBoxSatellite_, this));
  top->addWidget(comboBoxSatellite_);
  top->addWidget(labelMedians_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(buttonDelete_);
  buttons->addWidget(buttonCopy_);
  buttons->addStretch();
  buttons->addWidget(buttonClose);
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(top);
  rows->addWidget(halves, 1);
  rows->addWidget(labelNote_);
  rows->addLayout(buttons);
}

void TFormAlignments::FormShow() {
  FillSatellites();
  FillTable();
  for (int column = 0; column < listViewAlignments_->columnCount(); ++column)
    listViewAlignments_->resizeColumnToContents(column);
}

void TFormAlignments::done(int result) {
  session_.Settings.AlignmentsPlace.Value = QString::fromLatin1(saveGeometry().toBase64());
  TForm::done(result);
}

void TFormAlignments::FillSatellites() {
  QStringList names;
  for (const align::LoggedAlignment& row : log_.Rows()) {
    if (!names.contains(row.Satellite)) names.append(row.Satellite);
  }
  names.sort(Qt::CaseInsensitive);
  const QString chosen =
      comboBoxSatellite_->currentIndex() > 0 ? comboBoxSatellite_->currentText() : QString();
  const QSignalBlocker quiet(comboBoxSatellite_);
  comboBoxSatellite_->clear();
  comboBoxSatellite_->addItem(QStringLiteral("All"));
  comboBoxSatellite_->addItems(names);
  comboBoxSatellite_->setCurrentIndex(static_cast<int>(names.indexOf(chosen)) + 1);
}

void TFormAlignments::FillTable() {
  const bool isOfAll = comboBoxSatellite_->currentIndex() <= 0;
  shown_ = align::LatestFirst(log_.Rows(), isOfAll ? QString() : comboBoxSatellite_->currentText());
  {
    const QSignalBlocker quiet(listViewAlignments_);
    listViewAlignments_->clear();
    QList<QTreeWidgetItem*> items;
    for (std::size_t place = 0; place < shown_.size(); ++place)
      items.append(new TAlignmentItem(shown_[place], place));
    listViewAlignments_->addTopLevelItems(items);
  }
  plot_->SetRows(shown_);
  plot_->setVisible(!shown_.empty());
  labelEmpty_->setVisible(shown_.empty());
  ShowMedians();
  labelNote_->setText(log_.Note());
  labelNote_->setVisible(!log_.Note().isEmpty());
  buttonCopy_->setEnabled(!shown_.empty());
  SelectionChanged();
}

void TFormAlignments::ShowMedians() {
  QStringList lines = align::MedianLines(shown_);
  const QString all = lines.join(u'\n');
  // Names come from files and are no markup.
  labelMedians_->setToolTip(Qt::mightBeRichText(all) ? all.toHtmlEscaped() : all);
  if (const qsizetype more = lines.size() - kMostMedians; more > 0)
    lines = lines.first(kMostMedians) + QStringList(QStringLiteral("and %1 more").arg(more));
  labelMedians_->setText(lines.join(u'\n'));
}

void TFormAlignments::ComboBoxSatelliteChange() { FillTable(); }

std::vector<std::size_t> TFormAlignments::Selected() const {
  std::vector<std::size_t> places;
  for (int row = 0; row < listViewAlignments_->topLevelItemCount(); ++row) {
    const TAlignmentItem& item = ItemAt(listViewAlignments_, row);
    if (item.isSelected()) places.push_back(item.Place());
  }
  return places;
}

void TFormAlignments::SelectionChanged() {
  const std::vector<std::size_t> selected = Selected();
  buttonDelete_->setEnabled(!selected.empty());
  plot_->SetChosen(selected);
}

void TFormAlignments::PointChosen(std::size_t row) {
  for (int at = 0; at < listViewAlignments_->topLevelItemCount(); ++at) {
    if (ItemAt(listViewAlignments_, at).Place() != row) continue;
    listViewAlignments_->setCurrentItem(listViewAlignments_->topLevelItem(at));
    return;
  }
}

void TFormAlignments::ButtonDeleteClick() {
  std::vector<align::LoggedAlignment> selected;
  for (const std::size_t place : Selected()) selected.push_back(shown_[place]);
  if (selected.empty()) return;
  const QString which = selected.size() == 1
                            ? QStringLiteral("the alignment of %1").arg(selected.front().Picture)
                            : QStringLiteral("these %1 alignments").arg(selected.size());
  if (!Boxes().Confirm(QStringLiteral("Forget %1? It cannot be brought back.").arg(which), 0,
                       session::Answer::No)) {
    return;
  }
  log_.Remove(selected);
  FillSatellites();
  FillTable();
}

void TFormAlignments::ButtonCopyClick() {
  const bool isAll = Selected().empty();
  QStringList lines{align::TableHeadings().join(u'\t')};
  for (int row = 0; row < listViewAlignments_->topLevelItemCount(); ++row) {
    const TAlignmentItem& item = ItemAt(listViewAlignments_, row);
    if (!isAll && !item.isSelected()) continue;
    QStringList cells;
    for (int column = 0; column < item.columnCount(); ++column) cells.append(item.text(column));
    lines.append(cells.join(u'\t'));
  }
  QApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

QWidget* TFormAlignments::FirstControl() const { return listViewAlignments_; }

}  // namespace pelorin::desktop
