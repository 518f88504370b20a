#include "desktop/help/help_window.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

#include "desktop/help/help.h"
#include "desktop/help/help_book.h"
#include "session/controls.h"
#include "session/prompts.h"

namespace pelorin::desktop {
namespace {

using session::Named;

/// Wide enough for the pictures of pages.
constexpr QSize kHelpSize(1240, 800);
constexpr QSize kFrameRoom(16, 48);
constexpr int kSideWidth = 280;
constexpr int kPageMargin = 14;

enum HelpTab { kContentsTab, kIndexTab, kSearchTab };
enum HitRole { kUrlRole = Qt::UserRole };

/// Pages, pictures and the style sheet come out of the book.
class HelpBrowser : public QTextBrowser {
 public:
  HelpBrowser(const HelpBook& book, QWidget* parent) : QTextBrowser(parent), book_(book) {}

  QVariant loadResource(int type, const QUrl& name) override {
    const QUrl url = source().isEmpty() ? name : source().resolved(name);
    if (url.scheme() != QStringLiteral("qthelp")) return QTextBrowser::loadResource(type, name);
    const QByteArray content = book_.Data(url);
    return type == QTextDocument::ImageResource ? QVariant(Fitting(QImage::fromData(content)))
                                                : QVariant(content);
  }

 private:
  /// The picture, no wider than the page now is beside its scroll bar.
  QImage Fitting(const QImage& picture) const {
    const int room = contentsRect().width() - verticalScrollBar()->sizeHint().width() - 2 * kPageMargin;
    return picture.width() <= room ? picture : picture.scaledToWidth(room, Qt::SmoothTransformation);
  }

  const HelpBook& book_;
};

QWidget* Below(QLineEdit* edit, QWidget* list) {
  auto* page = new QWidget;
  auto* rows = new QVBoxLayout(page);
  rows->setContentsMargins(4, 4, 4, 4);
  rows->addWidget(edit);
  rows->addWidget(list, 1);
  return page;
}

QLineEdit* NewFilter(const char* name, const QString& placeholder) {
  auto* edit = Named(new QLineEdit, name);
  edit->setPlaceholderText(placeholder);
  edit->setClearButtonEnabled(true);
  return edit;
}

}  // namespace

THelpWindow::THelpWindow(std::unique_ptr<HelpBook> book)
    : book_(std::move(book)),
      tabs_(Named(new QTabWidget(this), "HelpTabs")),
      browser_(Named(new HelpBrowser(*book_, this), "HelpPage")) {
  setObjectName(QStringLiteral("HelpWindow"));
  setWindowTitle(QStringLiteral("Pelorin - Help"));
  // The program ends with its main window, also while somebody reads.
  setAttribute(Qt::WA_QuitOnClose, false);
  browser_->document()->setDocumentMargin(kPageMargin);
  browser_->setAccessibleName(QStringLiteral("Help page"));
  tabs_->addTab(BuildContents(), QStringLiteral("&Contents"));
  tabs_->addTab(BuildIndex(), QStringLiteral("I&ndex"));
  tabs_->addTab(BuildSearch(), QStringLiteral("&Search"));
  auto* splitter = new QSplitter(this);
  splitter->addWidget(tabs_);
  splitter->addWidget(browser_);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kSideWidth, kHelpSize.width() - kSideWidth});
  splitter->setChildrenCollapsible(false);
  setCentralWidget(splitter);
  BuildToolBar();
  BuildFindBar();
  connect(browser_, &QTextBrowser::sourceChanged, this, &THelpWindow::PageChanged);
  resize(kHelpSize.boundedTo(screen()->availableSize() - kFrameRoom));
}

THelpWindow::~THelpWindow() {
  // Views look at the book until they are gone.
  delete takeCentralWidget();
}

void THelpWindow::BuildToolBar() {
  auto* bar = Named(addToolBar(QStringLiteral("Navigation")), "HelpNavigation");
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  const auto add = [&](QStyle::StandardPixmap icon, const QString& text, const QKeySequence& key) {
    QAction* action = bar->addAction(style()->standardIcon(icon), text);
    action->setShortcut(key);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText)));
    return action;
  };
  QAction* back = add(QStyle::SP_ArrowBack, QStringLiteral("Back"), QKeySequence(Qt::ALT | Qt::Key_Left));
  QAction* forward =
      add(QStyle::SP_ArrowForward, QStringLiteral("Forward"), QKeySequence(Qt::ALT | Qt::Key_Right));
  QAction* home = add(QStyle::SP_DirHomeIcon, QStringLiteral("Home"), QKeySequence(Qt::ALT | Qt::Key_Home));
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
  connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
  connect(home, &QAction::triggered, this, [this] { OpenPage(book_->Topic(kHelpIntroduction)); });
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
  bar->addSeparator();
  QAction* find = add(QStyle::SP_FileDialogContentsView, QStringLiteral("Find in page"),
                      QKeySequence(QKeySequence::Find));
  connect(find, &QAction::triggered, this, &THelpWindow::StartFinding);
  auto* close = new QAction(this);
  close->setShortcuts({QKeySequence(QKeySequence::Close), QKeySequence(Qt::Key_Escape)});
  addAction(close);
  connect(close, &QAction::triggered, this, [this] {
    if (findBar_->isVisible()) {
      EndFinding();
    } else {
      this->close();
    }
  });
}

void THelpWindow::BuildFindBar() {
  findBar_ = Named(new QToolBar(QStringLiteral("Find in page"), this), "HelpFindBar");
  findBar_->setMovable(false);
  findBar_->setContextMenuPolicy(Qt::PreventContextMenu);
  addToolBar(Qt::BottomToolBarArea, findBar_);
  findBar_->hide();
  editFind_ = NewFilter("EditFind", QStringLiteral("Find in this page"));
  editFind_->setMaximumWidth(kSideWidth);
  findBar_->addWidget(editFind_);
  QAction* next = findBar_->addAction(QStringLiteral("Next"));
  QAction* previous = findBar_->addAction(QStringLiteral("Previous"));
  next->setShortcut(QKeySequence::FindNext);
  previous->setShortcut(QKeySequence::FindPrevious);
  connect(next, &QAction::triggered, this, [this] { FindInPage(false); });
  connect(previous, &QAction::triggered, this, [this] { FindInPage(true); });
  connect(editFind_, &QLineEdit::returnPressed, this, [this] { FindInPage(false); });
  connect(findBar_->addAction(QStringLiteral("Close")), &QAction::triggered, this, &THelpWindow::EndFinding);
}

QWidget* THelpWindow::BuildContents() {
  QHelpContentWidget* contents = Named(book_->Engine().contentWidget(), "HelpContents");
  connect(book_->Engine().contentModel(), &QHelpContentModel::contentsCreated, this, [this, contents] {
    contents->expandAll();
    PageChanged(browser_->source());
  });
  connect(contents, &QHelpContentWidget::linkActivated, this, &THelpWindow::OpenPage);
  connect(contents, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
    if (const QHelpContentItem* item = book_->Engine().contentModel()->contentItemAt(index)) {
      OpenPage(item->url());
    }
  });
  return contents;
}

QWidget* THelpWindow::BuildIndex() {
  QHelpIndexWidget* index = Named(book_->Engine().indexWidget(), "HelpIndex");
  editIndex_ = NewFilter("EditIndex", QStringLiteral("Look for a keyword"));
  connect(editIndex_, &QLineEdit::textChanged, index,
          [index](const QString& text) { index->filterIndices(text); });
  connect(editIndex_, &QLineEdit::returnPressed, index, &QHelpIndexWidget::activateCurrentItem);
  connect(index, &QAbstractItemView::clicked, index, &QHelpIndexWidget::activateCurrentItem);
  connect(index, &QHelpIndexWidget::documentActivated, this,
          [this](const QHelpLink& link) { OpenPage(link.url); });
  connect(index, &QHelpIndexWidget::documentsActivated, this,
          [this](const QList<QHelpLink>& links) { OpenPage(links.constFirst().url); });
  return Below(editIndex_, index);
}

QWidget* THelpWindow::BuildSearch() {
  hits_ = Named(new QListWidget, "HelpHits");
  editSearch_ = NewFilter("EditSearch", QStringLiteral("Search for words in all pages"));
  connect(editSearch_, &QLineEdit::textChanged, this, &THelpWindow::Search);
  connect(editSearch_, &QLineEdit::returnPressed, this, [this] { OpenHit(hits_->item(0)); });
  connect(hits_, &QListWidget::itemClicked, this, &THelpWindow::OpenHit);
  connect(hits_, &QListWidget::itemActivated, this, &THelpWindow::OpenHit);
  return Below(editSearch_, hits_);
}

// ------------------------------------------------------------------------------------- its pages

void THelpWindow::ShowTopic(int context) {
  if (context == session::kHelpIndex) {
    tabs_->setCurrentIndex(kIndexTab);
    editIndex_->setFocus();
  } else {
    tabs_->setCurrentIndex(kContentsTab);
  }
  const QUrl topic = context > 0 ? book_->Topic(context) : QUrl();
  if (!topic.isEmpty()) {
    OpenPage(topic);
  } else if (browser_->source().isEmpty()) {
    OpenPage(book_->Topic(kHelpIntroduction));
  }
  ComeToFront();
}

void THelpWindow::OpenPage(const QUrl& url) {
  if (!url.isEmpty()) browser_->setSource(url);
}

void THelpWindow::PageChanged(const QUrl& url) {
  const QString title = browser_->documentTitle();
  setWindowTitle(title.isEmpty() ? QStringLiteral("Pelorin - Help")
                                 : QStringLiteral("Pelorin - Help: %1").arg(title));
  QHelpContentWidget* contents = book_->Engine().contentWidget();
  if (const QModelIndex place = contents->indexOf(url); place.isValid()) contents->setCurrentIndex(place);
}

bool THelpWindow::event(QEvent* event) {
  // A dialog opened later than this window, which may now lie beside it. Blocking comes before the dialog has
  // its place.
  if (event->type() == QEvent::WindowBlocked || event->type() == QEvent::Move) {
    QMetaObject::invokeMethod(this, &THelpWindow::BelongToModalWindowBeside, Qt::QueuedConnection);
  }
  return QMainWindow::event(event);
}

void THelpWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  // The page takes its colours from the palette when it is read.
  if (event->type() == QEvent::PaletteChange && !browser_->source().isEmpty()) browser_->reload();
}

// ------------------------------------------------------------------------------------ its window

void THelpWindow::ComeToFront() {
  winId();
  BelongToModalWindow();
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void THelpWindow::BelongToModalWindow() {
  // Beside a modal window only windows that belong to it can be used.
  QWidget* modal = QApplication::activeModalWidget();
  windowHandle()->setTransientParent(modal != nullptr ? modal->windowHandle() : nullptr);
  if (auto* dialog = qobject_cast<QDialog*>(modal)) {
    // When it closes, another one may be left that it came from.
    connect(dialog, &QDialog::finished, this, &THelpWindow::BelongToModalWindow,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
  }
}

void THelpWindow::BelongToModalWindowBeside() {
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal == nullptr || windowHandle() == nullptr) return;
  // A window lies over the one that it belongs to: here it would hide the question.
  if (!modal->frameGeometry().intersects(frameGeometry())) BelongToModalWindow();
}

// ----------------------------------------------------------------------------- finding and searching

void THelpWindow::StartFinding() {
  findBar_->show();
  if (browser_->textCursor().hasSelection()) editFind_->setText(browser_->textCursor().selectedText());
  editFind_->setFocus();
  editFind_->selectAll();
}

void THelpWindow::EndFinding() {
  findBar_->hide();
  browser_->setFocus();
}

void THelpWindow::FindInPage(bool backward) {
  const QTextDocument::FindFlags flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (editFind_->text().isEmpty() || browser_->find(editFind_->text(), flags)) return;
  // Go on from the other end of the page.
  browser_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
  browser_->find(editFind_->text(), flags);
}

void THelpWindow::Search() {
  hits_->clear();
  for (const HelpHit& hit : SearchHelp(book_->Pages(), editSearch_->text())) {
    auto* item = new QListWidgetItem(hit.Title, hits_);
    item->setToolTip(hit.Excerpt);
    item->setData(kUrlRole, hit.Url);
  }
  if (hits_->count() == 0 && !HelpWords(editSearch_->text()).isEmpty()) {
    auto* none = new QListWidgetItem(QStringLiteral("No page has all these words."), hits_);
    none->setFlags(Qt::NoItemFlags);
  }
}

void THelpWindow::OpenHit(const QListWidgetItem* item) {
  if (item == nullptr || !item->data(kUrlRole).isValid()) return;
  OpenPage(item->data(kUrlRole).toUrl());
  editFind_->setText(HelpWords(editSearch_->text()).value(0));
  browser_->moveCursor(QTextCursor::Start);
  browser_->find(editFind_->text());
}

}  // namespace pelorin::desktop
