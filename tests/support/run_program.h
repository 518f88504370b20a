#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>
#include <initializer_list>
#include <utility>

namespace pelorin::tests {

/// How a program ended, and what it wrote.
struct Outcome {
  int Status;
  QString Out, Err;
  QStringList Lines() const { return Out.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
};

/// Runs a program to its end in a folder, with these environment variables besides the test's own.
inline Outcome RunProgram(const QString& program, const QStringList& arguments, const QString& folder,
                          std::initializer_list<std::pair<const char*, QString>> variables) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const auto& [name, value] : variables) environment.insert(QLatin1StringView(name), value);
  process.setProcessEnvironment(environment);
  process.setWorkingDirectory(folder);
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
      << arguments.join(QLatin1Char(' ')).toStdString();
  return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
          QString::fromUtf8(process.readAllStandardError())};
}

}  // namespace pelorin::tests
