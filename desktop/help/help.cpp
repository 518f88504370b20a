#include "desktop/help/help.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <utility>

#include "desktop/help/help_book.h"
#include "desktop/help/help_window.h"

namespace pelorin::desktop {
namespace {

struct TopicOfForm {
  const char* ObjectName;
  int Context;
};

constexpr TopicOfForm kTopicsOfForms[] = {
    {"TabSheetSetup", 20},      {"TabSheetMap", 30},        {"TabSheetGroundPath", 40},
    {"TabSheetFlight", 50},     {"FormEphemeris", 60},      {"FormUpdateKeplers", 70},
    {"FormSatKepsSummary", 80}, {"FormAlignments", 85},     {"FormOverlayTextOptions", 90},
    {"FormSetFlightTime", 51},  {"FormPictureDetails", 41}, {"AboutBoxQuillfen", kHelpIntroduction},
};

/// The topic of the dialog, or of the window that it lies over; in the main window, of the page in front.
int TopicOfDialog(const QDialog& dialog) {
  for (const QWidget* window = &dialog; window != nullptr; window = window->parentWidget()) {
    if (const int context = HelpTopicOf(window->objectName()); context != 0) return context;
    for (const TopicOfForm& form : kTopicsOfForms) {
      const auto* page = window->findChild<const QWidget*>(QLatin1StringView(form.ObjectName));
      if (page != nullptr && page->isVisible()) return form.Context;
    }
  }
  return 0;
}

}  // namespace

int HelpTopicOf(const QString& objectName) {
  for (const TopicOfForm& form : kTopicsOfForms) {
    if (objectName == QLatin1StringView(form.ObjectName)) return form.Context;
  }
  return 0;
}

QString HelpFile(const QString& programPath) {
  const QFileInfo program(programPath);
  for (const char* place : {"../Help/Pelorin.qhc", "../share/pelorin/help/Pelorin.qhc"}) {
    const QString file = QDir::cleanPath(program.dir().filePath(QString::fromLatin1(place)));
    if (QFileInfo(file).isFile()) return file;
  }
  return program.dir().filePath(program.completeBaseName() + QStringLiteral(".qhc"));
}

QString NoHelpText(const QString& helpFile) {
  return QStringLiteral("The help is not installed: there is no file\n\n   %1")
      .arg(QDir::toNativeSeparators(helpFile));
}

QString BadHelpText(const QString& helpFile, const QString& reason) {
  const QString text =
      QStringLiteral(
          "The help cannot be read from the file\n\n   %1\n\nIt, or Pelorin.qch beside it, is "
          "missing or damaged. Please install Pelorin again.")
          .arg(QDir::toNativeSeparators(helpFile));
  return reason.isEmpty() ? text : text + QStringLiteral("\n\n(%1)").arg(reason);
}

Help::Help(const QString& helpFile, std::function<void(const QString& text)> say)
    : helpFile_(helpFile), say_(std::move(say)) {}

Help::~Help() = default;

void Help::Show(int context) {
  if (!window_) {
    QString problem;
    std::unique_ptr<HelpBook> book = HelpBook::Open(helpFile_, problem);
    if (!book) {
      say_(problem);
      return;
    }
    window_ = std::make_unique<THelpWindow>(std::move(book));
  }
  window_->ShowTopic(context);
}

bool Help::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) return false;
  const auto* dialog = qobject_cast<const QDialog*>(QApplication::activeWindow());
  if (dialog == nullptr) return false;
  const auto* box = qobject_cast<const QMessageBox*>(dialog);
  if (QAbstractButton* button = box != nullptr ? box->button(QMessageBox::Help) : nullptr;
      button != nullptr) {
    button->click();
    return true;
  }
  const int context = box != nullptr ? kHelpMessages : TopicOfDialog(*dialog);
  if (context != 0) Show(context);
  return context != 0;
}

}  // namespace pelorin::desktop
