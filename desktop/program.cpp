#include "desktop/program.h"

#include <QApplication>
#include <QByteArrayView>
#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>
#include <utility>

#include "app/command_line.h"
#include "app/program_paths.h"
#include "desktop/end_by_signal.h"
#include "desktop/form_main.h"
#include "desktop/form_splash.h"
#include "desktop/help/help.h"
#include "desktop/icon.h"
#include "desktop/look.h"
#include "session/controls.h"
#include "session/qt_prompts.h"

namespace pelorin::desktop {
namespace {

const QString kProduct = QStringLiteral("Pelorin");

constexpr int kBadCall = 2;

void Print(std::FILE* stream, const QString& text) { std::fputs(qPrintable(text), stream); }

int RefuseOption(const QString& option) {
  Print(stderr, QStringLiteral("pelorin: unknown option %1; see pelorin --help\n").arg(option));
  return kBadCall;
}

/// Options that the toolkit takes for itself, with one dash or two, some with a value after "=".
bool IsToolkitOption(QString argument) {
  static const QStringList own{QStringLiteral("platform"),
                               QStringLiteral("platformpluginpath"),
                               QStringLiteral("platformtheme"),
                               QStringLiteral("plugin"),
                               QStringLiteral("qwindowgeometry"),
                               QStringLiteral("qwindowicon"),
                               QStringLiteral("qwindowtitle"),
                               QStringLiteral("geometry"),
                               QStringLiteral("icon"),
                               QStringLiteral("title"),
                               QStringLiteral("name"),
                               QStringLiteral("display"),
                               QStringLiteral("reverse"),
                               QStringLiteral("session"),
                               QStringLiteral("style"),
                               QStringLiteral("stylesheet"),
                               QStringLiteral("widgetcount")};
  argument.remove(0, argument.startsWith(QStringLiteral("--")) ? 2 : 1);
  return own.contains(argument.section(u'=', 0, 0));
}

/// False where the toolkit would find nothing to open a window on, and would say so in words of its own.
bool HasDisplay([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    if (!qEnvironmentVariableIsEmpty(name)) return true;
  }
  return std::any_of(argv + 1, argv + argc, [](const char* argument) {
    return QByteArrayView(argument).startsWith("-platform") ||
           QByteArrayView(argument).startsWith("--platform") ||
           QByteArrayView(argument).startsWith("-display");
  });
#else
  return true;
#endif
}

/// Calls that are answered on the console, where there may be no display: the toolkit is not asked yet.
bool AnswerOnConsole(int argc, char** argv, int& status) {
  QStringList own;
  for (int index = 1; index < argc; ++index) {
    const QString argument = QString::fromLocal8Bit(argv[index]);
    if (!argument.startsWith(u'-') || !IsToolkitOption(argument)) own.append(argument);
  }
  const app::CommandLine line = app::ReadCommandLine(own);
  status = 0;
  if (line.Help) {
    Print(stdout, app::UsageText(QStringLiteral("pelorin")));
  } else if (line.Version) {
    Print(stdout, kProduct + QStringLiteral(" " PELORIN_VERSION "\n"));
  } else if (!line.UnknownOption.isEmpty()) {
    status = RefuseOption(line.UnknownOption);
  } else {
    return false;
  }
  return true;
}

}  // namespace

int RunProgram(int argc, char** argv) {
  int status = 0;
  if (AnswerOnConsole(argc, argv, status)) return status;

  if (!HasDisplay(argc, argv)) {
    Print(stderr, QStringLiteral(
                      "pelorin: there is no display to open the window on. Start it from a desktop session; "
                      "without one, pelorin-cli does the work: pelorin-cli --help\n"));
    return EXIT_FAILURE;
  }
  QApplication application(argc, argv);
  // Numbers in files and stamps have a point, whatever the user's language.
  std::setlocale(LC_NUMERIC, "C");
  QCoreApplication::setApplicationVersion(QStringLiteral(PELORIN_VERSION));
  QGuiApplication::setApplicationDisplayName(QString());
  QGuiApplication::setDesktopFileName(QStringLiteral("org.quillfen.Pelorin"));
  const app::CommandLine line = app::ReadCommandLine(QCoreApplication::arguments().mid(1));
  const QString programPath = QCoreApplication::applicationFilePath();
  std::future<map::Backdrop> backdrop = LoadBackdropAhead(app::ProgramFolder());

  const bool desktopIsDark = SetUpStyle(application);
  QApplication::setWindowIcon(ApplicationIcon());
  TFormSplash splash;
  splash.Open();

  std::unique_ptr<Help> help;
  session::QtPrompts boxes(kProduct, [&help](int topic) { help->Show(topic); });
  help =
      std::make_unique<Help>(HelpFile(programPath), [&boxes](const QString& text) { boxes.Message(text); });
  application.installEventFilter(help.get());
  const app::RegistryStore store;
  const auto tellSplash = [&splash](const QString& text) { splash.ShowStatus(text); };
  const auto tellCaller = [](const QString& text) {
    Print(stderr, QStringLiteral("pelorin: ") + text + QLatin1Char('\n'));
  };
  const auto applyLook = [&application, desktopIsDark](Look look) {
    ApplyLook(application, look, desktopIsDark);
  };
  std::unique_ptr<session::UnattendedRun> unattended;
  if (!line.Parameters.isEmpty()) {
    unattended = std::make_unique<session::UnattendedRun>(line.Parameters.constFirst(), boxes, tellCaller);
  }
  std::unique_ptr<TFormMain> formMain;
  const bool isMade = session::Guarded(unattended ? unattended->Boxes() : boxes, [&] {
    formMain = std::make_unique<TFormMain>(Surroundings{store, programPath, boxes, unattended.get(),
                                                        [] { return orbit::NowUTC(); }, app::LocalTimeZone(),
                                                        tellSplash, applyLook, std::move(backdrop)});
    formMain->CreateForms();
  });
  if (!isMade) return EXIT_FAILURE;
  EndBySignal([&formMain] {
    formMain->close();
    QCoreApplication::quit();
  });
  formMain->show();
  splash.close();
  status = QApplication::exec();
  if (!unattended || unattended->Failure().isEmpty()) return status;
  tellCaller(unattended->Failure());
  return EXIT_FAILURE;
}

}  // namespace pelorin::desktop
