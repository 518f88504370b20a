#include "desktop/passes/form_sat_keps_summary.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "elements/element_summary.h"
#include "elements/stale_elements.h"
#include "orbit/julian_date.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

enum SummaryColumn { kSatelliteColumn, kNumberColumn, kEpochColumn, kAgeColumn, kFileColumn, kColumnCount };

/// Room for the window's title.
constexpr int kTitleCharacters = 60;
constexpr int kFewestRows = 8;
constexpr int kMostRows = 30;
constexpr qsizetype kMostLeftOut = 4;
/// The most of the screen that the window takes.
constexpr double kScreenPart = 0.85;

QString StaleHint() {
  return QStringLiteral("Data more than %1 days old is stale, and leads to inaccurate predictions.")
      .arg(elements::kStaleAfterDays);
}

QTreeWidgetItem* ListItem(const elements::ElementSummaryRow& row) {
  auto* item = new QTreeWidgetItem;
  item->setText(kSatelliteColumn, row.Satellite);
  item->setText(kNumberColumn, row.CatalogueNumber);
  item->setText(kEpochColumn, row.Epoch);
  item->setText(kAgeColumn, QString::number(row.DaysAge));
  item->setTextAlignment(kAgeColumn, Qt::AlignRight | Qt::AlignVCenter);
  item->setText(kFileColumn, row.File);
  if (row.DaysAge > elements::kStaleAfterDays) {
    QFont bold = item->font(kAgeColumn);
    bold.setBold(true);
    item->setFont(kAgeColumn, bold);
  }
  return item;
}

}  // namespace

TFormSatKepsSummary::TFormSatKepsSummary(session::Session& session, QWidget* parent)
    : TForm(session, "FormSatKepsSummary", QStringLiteral("Pelorin - Satellite Kepler data summary"),
            parent) {}

void TFormSatKepsSummary::FormCreate() {
  labelSource_ = session::Named(new QLabel(this), "LabelSource");
  listViewKeps_ = session::Named(new QTreeWidget(this), "ListViewKeps");
  labelEmpty_ = session::Named(new QLabel(listViewKeps_->viewport()), "LabelEmpty");
  labelLeftOut_ = session::Named(new QLabel(this), "LabelLeftOut");

  // A long folder must not widen the window.
  labelSource_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  labelSource_->setTextFormat(Qt::PlainText);
  labelSource_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  listViewKeps_->setHeaderLabels({QStringLiteral("Satellite"), QStringLiteral("No."), QStringLiteral("Epoch"),
                                  QStringLiteral("Days age"), QStringLiteral("In file")});
  listViewKeps_->headerItem()->setTextAlignment(kAgeColumn, Qt::AlignRight | Qt::AlignVCenter);
  listViewKeps_->header()->setSectionsMovable(false);
  listViewKeps_->setRootIsDecorated(false);
  listViewKeps_->setUniformRowHeights(true);
  listViewKeps_->setAllColumnsShowFocus(true);
  listViewKeps_->setAlternatingRowColors(true);
  listViewKeps_->setAccessibleName(QStringLiteral("Element sets"));
  session::Hinted(listViewKeps_, StaleHint());

  labelEmpty_->setText(
      QStringLiteral("No satellite data was found in this folder.\n\nPut element files named *.2LI or *.TLE "
                     "there, or choose another folder on the set-up page, and start Pelorin again."));
  labelEmpty_->setWordWrap(true);
  labelEmpty_->setAlignment(Qt::AlignCenter);
  labelEmpty_->setForegroundRole(QPalette::PlaceholderText);
  (new QVBoxLayout(listViewKeps_->viewport()))->addWidget(labelEmpty_);

  labelLeftOut_->setTextFormat(Qt::PlainText);
  labelLeftOut_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  labelLeftOut_->setWordWrap(true);

  auto* buttonClose = session::Named(new QPushButton(QStringLiteral("&Close"), this), "ButtonClose");
  buttonClose->setDefault(true);
  connect(buttonClose, &QPushButton::clicked, this, &QDialog::accept);

  setMinimumWidth(fontMetrics().averageCharWidth() * kTitleCharacters);
  auto* source = new QHBoxLayout;
  source->addWidget(new QLabel(QStringLiteral("Data source folder:"), this));
  source->addWidget(labelSource_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(buttonClose);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(source);
  layout->addWidget(listViewKeps_, 1);
  layout->addWidget(labelLeftOut_);
  layout->addLayout(buttons);
}

void TFormSatKepsSummary::FormShow() {
  FillList();
  ShowLeftOut();
  const int columnsWidth = SizeColumns();
  // Later on it keeps the size that the user likes.
  if (!std::exchange(wasSized_, true)) SizeToList(columnsWidth);
}

void TFormSatKepsSummary::FillList() {
  listViewKeps_->setUpdatesEnabled(false);
  const auto repaint = qScopeGuard([this] { listViewKeps_->setUpdatesEnabled(true); });
  listViewKeps_->clear();
  const QString folder = QString::fromStdU16String(session_.Satellites().Folder().u16string());
  labelSource_->setText(folder);
  labelSource_->setToolTip(folder);
  QList<QTreeWidgetItem*> items;
  for (const elements::ElementSummaryRow& row :
       elements::ElementSummary(session_.Satellites(), JulianDateOfDateTime(session_.LocalNow()))) {
    items.append(ListItem(row));
  }
  listViewKeps_->addTopLevelItems(items);
  labelEmpty_->setVisible(items.isEmpty());
}

void TFormSatKepsSummary::ShowLeftOut() {
  QStringList texts = elements::LeftOutTexts(session_.LeftOut());
  labelLeftOut_->setVisible(!texts.isEmpty());
  const QString all = texts.join(u'\n');
  labelLeftOut_->setToolTip(Qt::mightBeRichText(all) ? all.toHtmlEscaped() : all);
  if (texts.size() > kMostLeftOut) {
    const qsizetype more = texts.size() - kMostLeftOut;
    texts = texts.first(kMostLeftOut) + QStringList(QStringLiteral("and %1 more").arg(more));
  }
  labelLeftOut_->setText(QStringLiteral("Left out:\n") + texts.join(u'\n'));
}

int TFormSatKepsSummary::SizeColumns() {
  QHeaderView* header = listViewKeps_->header();
  // The last column fills the window, except while its own width is asked for.
  header->setStretchLastSection(false);
  const auto stretch = qScopeGuard([header] { header->setStretchLastSection(true); });
  for (int column = 0; column < kColumnCount; ++column) {
    if (column == kAgeColumn) {
      header->resizeSection(column, header->sectionSizeHint(column));
    } else {
      listViewKeps_->resizeColumnToContents(column);
    }
  }
  return header->length();
}

void TFormSatKepsSummary::SizeToList(int columnsWidth) {
  const int frame = 2 * listViewKeps_->frameWidth();
  const int rowHeight = std::max(listViewKeps_->sizeHintForRow(0), listViewKeps_->fontMetrics().height());
  const int rows = std::clamp(listViewKeps_->topLevelItemCount(), kFewestRows, kMostRows);
  const QSize list(columnsWidth + listViewKeps_->verticalScrollBar()->sizeHint().width() + frame,
                   listViewKeps_->header()->sizeHint().height() + rows * rowHeight + frame);
  const QMargins margins = layout()->contentsMargins();
  const int otherRows = layout()->sizeHint().height() - listViewKeps_->sizeHint().height();
  const QSize wanted(list.width() + margins.left() + margins.right(), list.height() + otherRows);
  resize(wanted.boundedTo(screen()->availableSize() * kScreenPart).expandedTo(minimumSizeHint()));
}

QWidget* TFormSatKepsSummary::FirstControl() const { return listViewKeps_; }

}  // namespace pelorin::desktop
