#include "session/qt_prompts.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

namespace pelorin::session {
namespace {

/// A bare CR parts lines in the texts; boxes want LF.
QString Lines(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

constexpr qsizetype kMostRowsShown = 25;
constexpr qsizetype kRowsOfLongText = 12;
constexpr qsizetype kLettersOfRow = 80;  ///< about as many as a box is wide

/// A text that no screen has room for, such as a server's answer: its beginning is shown, and all of it on
/// demand.
void FitToScreen(QMessageBox& box) {
  const QString text = box.text();
  QStringList rows;
  for (QString rest : text.split(u'\n')) {
    // Without a blank it would make the box as wide as itself.
    while (rest.size() > kLettersOfRow && rows.size() <= kMostRowsShown) {
      const qsizetype blank = rest.lastIndexOf(u' ', kLettersOfRow);
      const qsizetype end = blank > 0 ? blank + 1 : kLettersOfRow;
      rows.append(rest.first(end));
      rest.remove(0, end);
    }
    rows.append(rest);
  }
  if (rows.size() <= kMostRowsShown) return;
  box.setText(rows.first(kRowsOfLongText).join(u'\n') + QStringLiteral("\n..."));
  box.setDetailedText(text);
}

/// Whatever is in front: a dialog, the main window, or the start-up window. A window that has just been shown
/// may not have the keyboard yet.
QWidget* Front() {
  for (QWidget* candidate : {QApplication::activeModalWidget(), QApplication::activeWindow()}) {
    if (candidate != nullptr) return candidate;
  }
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool isPlain = window->windowType() == Qt::Window || window->windowType() == Qt::Dialog;
    if (isPlain && window->isVisible()) return window;
  }
  return nullptr;
}

/// "txt" of "Text files (*.txt)"; empty for a filter of several extensions or of all files.
QString SuffixOf(const QString& filter) {
  const QString pattern = filter.section(u'(', 1, 1).section(u')', 0, 0);
  return pattern.startsWith(QStringLiteral("*.")) && !pattern.contains(u' ') ? pattern.sliced(2) : QString();
}

}  // namespace

QtPrompts::QtPrompts(const QString& title, std::function<void(int)> showHelp)
    : title_(title), showHelp_(std::move(showHelp)) {}

int QtPrompts::Ask(QMessageBox& box, int helpContext) {
  box.setWindowTitle(title_);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  FitToScreen(box);
  if (helpContext > 0) {
    QAbstractButton* help = box.addButton(QMessageBox::Help);
    help->disconnect();
    QObject::connect(help, &QAbstractButton::clicked, &box, [this, helpContext] { Help(helpContext); });
  }
  return box.exec();
}

void QtPrompts::Message(const QString& text) {
  QMessageBox box(QMessageBox::Information, QString(), Lines(text), QMessageBox::Ok, Front());
  Ask(box, 0);
}

void QtPrompts::Error(const QString& text) {
  QMessageBox box(QMessageBox::Critical, QString(), Lines(text), QMessageBox::Ok, Front());
  Ask(box, 0);
}

void QtPrompts::Warning(const QString& text, int helpContext) {
  QMessageBox box(QMessageBox::Warning, QString(), Lines(text), QMessageBox::Ok, Front());
  box.setEscapeButton(QMessageBox::Ok);
  Ask(box, helpContext);
}

bool QtPrompts::RetryOrIgnore(const QString& text, int helpContext) {
  QMessageBox box(QMessageBox::Warning, QString(), Lines(text), QMessageBox::Retry | QMessageBox::Ignore,
                  Front());
  box.setDefaultButton(QMessageBox::Retry);
  box.setEscapeButton(QMessageBox::Ignore);
  return Ask(box, helpContext) == QMessageBox::Retry;
}

bool QtPrompts::OkOrCancel(const QString& text, int helpContext) {
  QMessageBox box(QMessageBox::Warning, QString(), Lines(text), QMessageBox::Ok | QMessageBox::Cancel,
                  Front());
  box.setDefaultButton(QMessageBox::Ok);
  box.setEscapeButton(QMessageBox::Cancel);
  return Ask(box, helpContext) == QMessageBox::Ok;
}

bool QtPrompts::Confirm(const QString& text, int helpContext, Answer preselected) {
  QMessageBox box(QMessageBox::Question, QString(), Lines(text), QMessageBox::Yes | QMessageBox::No, Front());
  box.setDefaultButton(preselected == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return Ask(box, helpContext) == QMessageBox::Yes;
}

std::optional<QString> QtPrompts::ChooseFolder(const QString& title, const QString& startFolder) {
  const QString chosen = QFileDialog::getExistingDirectory(Front(), title, startFolder);
  if (chosen.isEmpty()) return std::nullopt;
  return QDir::toNativeSeparators(chosen);
}

std::optional<QString> QtPrompts::OpenFile(const QString& title, const QString& startFolder,
                                           const QStringList& filters, int filter) {
  QString selected = filters.value(filter);
  const QString chosen = QFileDialog::getOpenFileName(Front(), title, startFolder,
                                                      filters.join(QStringLiteral(";;")), &selected);
  if (chosen.isEmpty()) return std::nullopt;
  return chosen;
}

std::optional<QString> QtPrompts::SaveFile(const QString& title, const QString& startPath,
                                           const QStringList& filters) {
  const QFileInfo start(startPath);
  // For the dialog "*.*" is an extension "*", and hides names without one.
  const QStringList kinds =
      QStringList(filters).replaceInStrings(QStringLiteral("(*.*)"), QStringLiteral("(*)"));
  QFileDialog dialog(Front(), title, start.path());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilters(kinds);
  dialog.setDefaultSuffix(SuffixOf(kinds.value(0)));
  dialog.selectFile(start.fileName());
  // The dialog exchanges an extension itself when another kind of file is chosen, but gives none to a name
  // without.
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
    if (const QString suffix = SuffixOf(filter); !suffix.isEmpty()) dialog.setDefaultSuffix(suffix);
  });
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.selectedFiles().value(0);
}

void QtPrompts::Help(int context) { showHelp_(context); }

}  // namespace pelorin::session
