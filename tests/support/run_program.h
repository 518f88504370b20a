#pragma once

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QProcess>
#include <QStringList>
#include <QTimer>
#include <initializer_list>
#include <utility>

namespace pelorin::tests {

/// How a program ended, and what it wrote.
struct Outcome {
  int Status;
  QString Out, Err;
  QStringList Lines() const { return Out.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
};

/// Runs a program to its end in a folder, with these environment variables besides the test's own. A server
/// of the test answers meanwhile.
inline Outcome RunProgram(const QString& program, const QStringList& arguments, const QString& folder,
                          std::initializer_list<std::pair<const char*, QString>> variables) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const auto& [name, value] : variables) environment.insert(QLatin1StringView(name), value);
  process.setProcessEnvironment(environment);
  process.setWorkingDirectory(folder);
  QEventLoop end;
  QObject::connect(&process, &QProcess::finished, &end, &QEventLoop::quit);
  QTimer::singleShot(60000, &process, &QProcess::kill);
  process.start(program, arguments);
  if (process.waitForStarted()) end.exec();
  EXPECT_TRUE(process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit)
      << arguments.join(QLatin1Char(' ')).toStdString();
  return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
          QString::fromUtf8(process.readAllStandardError())};
}

}  // namespace pelorin::tests
