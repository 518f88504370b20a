#include "desktop/passes/form_update_keplers.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "app/element_address.h"
#include "app/program_paths.h"
#include "elements/element_queries.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using elements::FileOutcome;
using session::Named;

enum UpdateColumn { kUpdateFileColumn, kUpdateOutcomeColumn };

constexpr int kWidthCharacters = 72;
constexpr int kListRows = 8;

QString InsistText(const QStringList& names) {
  return QStringLiteral("Less than two hours ago the element service was already asked for:\r\r   ") +
         names.join(QStringLiteral("\r   ")) +
         QStringLiteral(
             "\r\rIt has new data every two hours at most, and locks out those who ask more often. Ask for "
             "the "
             "same again all the same?");
}

}  // namespace

TFormUpdateKeplers::TFormUpdateKeplers(session::Session& session, QWidget* parent)
    : TForm(session, "FormUpdateKeplers", QStringLiteral("Pelorin - Update Keplers from the Internet"),
            parent),
      baseAddress_(app::ElementAddress(session.Settings)),
      labelIntro_(Named(new QLabel(this), "LabelIntro")),
      checkListBoxFiles_(Named(new QTreeWidget(this), "CheckListBoxFiles")),
      editBaseUrl_(Named(new QLineEdit(this), "EditBaseUrl")),
      labelProgress_(Named(new QLabel(this), "LabelProgress")),
      progressBar_(Named(new QProgressBar(this), "ProgressBar")),
      buttonPublicAddress_(
          Named(new QPushButton(QStringLiteral("Built-in address"), this), "ButtonPublicAddress")),
      buttonUpdate_(Named(new QPushButton(QStringLiteral("Update"), this), "ButtonUpdate")),
      buttonCancel_(Named(new QPushButton(QStringLiteral("Cancel"), this), "ButtonCancel")) {
  Build();
  session::Handle(buttonUpdate_, &QPushButton::clicked, this, &TFormUpdateKeplers::ButtonUpdateClick);
  session::Handle(buttonPublicAddress_, &QPushButton::clicked, this,
                  &TFormUpdateKeplers::ButtonPublicAddressClick);
  session::Handle(editBaseUrl_, &QLineEdit::editingFinished, this, &TFormUpdateKeplers::EditBaseUrlExit);
  // There the Enter key ends the typing, and not the dialog.
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    session::OnKey(editBaseUrl_, key, Boxes(), [this] { EditBaseUrlExit(); });
  }
  session::Handle(buttonCancel_, &QPushButton::clicked, this, &TFormUpdateKeplers::ButtonCancelClick);
}

void TFormUpdateKeplers::Build() {
  for (QLabel* label : {labelIntro_, labelProgress_}) {
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
  }
  // The marks tell what came of each file; none of them can be left out.
  checkListBoxFiles_->setHeaderLabels({QStringLiteral("File"), QStringLiteral("Result")});
  checkListBoxFiles_->header()->setStretchLastSection(false);
  checkListBoxFiles_->header()->setSectionResizeMode(kUpdateFileColumn, QHeaderView::Stretch);
  checkListBoxFiles_->header()->setSectionResizeMode(kUpdateOutcomeColumn, QHeaderView::ResizeToContents);
  checkListBoxFiles_->header()->setSectionsMovable(false);
  checkListBoxFiles_->setRootIsDecorated(false);
  checkListBoxFiles_->setUniformRowHeights(true);
  checkListBoxFiles_->setAllColumnsShowFocus(true);
  session::Hinted(
      checkListBoxFiles_,
      QStringLiteral("All files are updated. Afterwards a tick marks those that are up to date."));
  checkListBoxFiles_->setMinimumHeight(kListRows * fontMetrics().height() * 3 / 2);
  session::Hinted(editBaseUrl_, QStringLiteral("Address of an element service, or of a mirror of one"));
  session::Hinted(buttonPublicAddress_, QStringLiteral("Ask the public element service again"));
  buttonPublicAddress_->setAutoDefault(false);
  QSizePolicy kept = progressBar_->sizePolicy();
  kept.setRetainSizeWhenHidden(true);
  progressBar_->setSizePolicy(kept);
  progressBar_->setFormat(QStringLiteral("%v of %m"));
  progressBar_->hide();
  buttonCancel_->setDefault(true);

  setMinimumWidth(fontMetrics().averageCharWidth() * kWidthCharacters);
  auto* source = new QHBoxLayout;
  source->addWidget(session::LabelFor(QStringLiteral("From: "), editBaseUrl_, this));
  source->addWidget(editBaseUrl_, 1);
  source->addWidget(buttonPublicAddress_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(buttonUpdate_);
  buttons->addWidget(buttonCancel_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(labelIntro_);
  layout->addWidget(session::LabelFor(QStringLiteral("Select files to update"), checkListBoxFiles_, this));
  layout->addWidget(checkListBoxFiles_, 1);
  layout->addLayout(source);
  layout->addWidget(labelProgress_);
  layout->addWidget(progressBar_);
  layout->addLayout(buttons);
}

void TFormUpdateKeplers::FormCreate() {
  SetAddress(baseAddress_);
  const bool isAvailable = download_.IsAvailable();
  buttonUpdate_->setEnabled(isAvailable);
  checkListBoxFiles_->setEnabled(isAvailable);
  editBaseUrl_->setEnabled(isAvailable);
  if (!isAvailable) buttonPublicAddress_->setEnabled(false);
  labelIntro_->setText(
      isAvailable
          ? QStringLiteral(
                "Click Update to get the current Keplers via the Internet from the Celestrak Web site.")
          : QStringLiteral("This function requires WinInet.dll (from Microsoft Internet Explorer) to be "
                           "installed."));
  labelProgress_->setText(isAvailable ? QString() : QStringLiteral("MS Internet Explorer required"));
}

void TFormUpdateKeplers::FormShow() {
  session_.Window.SetTitle(windowTitle());
  FillFiles(Qt::Checked);
  if (!download_.IsAvailable()) return;
  buttonUpdate_->setEnabled(!files_.isEmpty());
  labelProgress_->setText(files_.isEmpty()
                              ? QStringLiteral("No element files are loaded, so there are none to update.")
                              : QString());
}

void TFormUpdateKeplers::FillFiles(Qt::CheckState state) {
  files_ = elements::UpdatableFiles(session_.Satellites());
  checkListBoxFiles_->clear();
  for (const QString& name : files_) {
    auto* item = new QTreeWidgetItem(checkListBoxFiles_, {name, QString()});
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setCheckState(kUpdateFileColumn, state);
  }
}

void TFormUpdateKeplers::ButtonUpdateClick() {
  if (isRunning_) return;
  EditBaseUrlExit();
  // The run before may have left other files.
  FillFiles(Qt::Unchecked);
  const elements::ElementRequests requests(app::ElementRequestsFile());
  const bool insist = AskWhetherToInsist(requests);
  isCancelled_ = false;
  outcomes_ = QList<FileOutcome>(files_.size(), FileOutcome::NotFetched);
  const elements::UpdateResult result = Run(requests, insist);
  if (!result.Changed || result.EndedEarly) return;
  Boxes().Message(QStringLiteral("The new Keplers are in use now."));
  accept();
}

bool TFormUpdateKeplers::AskWhetherToInsist(const elements::ElementRequests& requests) {
  QStringList recent;
  for (const QString& name : files_) {
    if (requests.AskedRecently(elements::QueryAddress(baseAddress_, name), session_.Now())) {
      recent.append(name);
    }
  }
  return !recent.isEmpty() && Boxes().Confirm(InsistText(recent), 0, session::Answer::No);
}

elements::UpdateResult TFormUpdateKeplers::Run(const elements::ElementRequests& requests, bool insist) {
  SetRunning(true);
  QString ending = QStringLiteral("Stopped: ");
  const auto stopped = qScopeGuard([this, &ending] {
    SetRunning(false);
    labelProgress_->setText(ending + elements::OutcomeSummary(outcomes_) + u'.');
    // Also when an error or the user has put an end to the run.
    if (outcomes_.contains(FileOutcome::Updated)) {
      session::Guarded(Boxes(), [this] { session_.ReloadSatellites(); });
    }
  });
  elements::ElementUpdate update = session_.UpdateOf(files_, baseAddress_);
  update.Insist = insist;
  const elements::UpdateResult result = elements::UpdateElementFiles(
      update, requests,
      {[this](const QString& address) { return download_.Get(address); },
       [this](int file) { return BeforeFile(file); },
       [this](int file, const elements::FileResult& ofFile) { AfterFile(file, ofFile); },
       [this](const QString& text) { Boxes().Message(text); },
       [this](const QString& question) { return Boxes().Confirm(question, 0, session::Answer::No); }});
  if (isCancelled_) {
    ending = QStringLiteral("Cancelled: ");
  } else if (!result.EndedEarly) {
    ending.clear();
  }
  return result;
}

void TFormUpdateKeplers::SetAddress(const QString& address) {
  baseAddress_ = address;
  editBaseUrl_->setText(address);
  buttonPublicAddress_->setEnabled(address != app::PublicElementAddress());
}

void TFormUpdateKeplers::EditBaseUrlExit() {
  const QString address = app::ElementAddressOf(editBaseUrl_->text());
  if (address == baseAddress_) return;
  SetAddress(address);
  session_.Settings.ElementsAddress.Value = address == app::PublicElementAddress() ? QString() : address;
}

void TFormUpdateKeplers::ButtonPublicAddressClick() {
  editBaseUrl_->clear();
  EditBaseUrlExit();
}

void TFormUpdateKeplers::SetRunning(bool running) {
  isRunning_ = running;
  buttonUpdate_->setEnabled(!running);
  editBaseUrl_->setReadOnly(running);
  buttonPublicAddress_->setEnabled(!running && baseAddress_ != app::PublicElementAddress());
  progressBar_->setVisible(running);
  if (!running) {
    unsetCursor();
    return;
  }
  progressBar_->setRange(0, static_cast<int>(files_.size()));
  progressBar_->setValue(0);
  buttonCancel_->setFocus();
  // "Cancel" can be clicked meanwhile, hence not the bare hourglass.
  setCursor(Qt::BusyCursor);
}

bool TFormUpdateKeplers::BeforeFile(int file) {
  if (isCancelled_ || session_.Run.Closing) return false;
  checkListBoxFiles_->scrollToItem(checkListBoxFiles_->topLevelItem(file));
  labelProgress_->setText(
      QStringLiteral("Getting %1 for %2...").arg(elements::QueryOf(files_[file]), files_[file]));
  return true;
}

void TFormUpdateKeplers::AfterFile(int file, const elements::FileResult& result) {
  const FileOutcome outcome = outcomes_[file] = result.Outcome;
  QTreeWidgetItem* item = checkListBoxFiles_->topLevelItem(file);
  item->setText(kUpdateOutcomeColumn, elements::ResultText(result));
  if (outcome == FileOutcome::Updated || outcome == FileOutcome::AlreadyCurrent) {
    item->setCheckState(kUpdateFileColumn, Qt::Checked);
  }
  progressBar_->setValue(file + 1);
}

void TFormUpdateKeplers::ButtonCancelClick() { reject(); }

void TFormUpdateKeplers::reject() {
  if (!isRunning_) {
    TForm::reject();
    return;
  }
  isCancelled_ = true;
  download_.Cancel();
}

QWidget* TFormUpdateKeplers::FirstControl() const { return checkListBoxFiles_; }

}  // namespace pelorin::desktop
