#include <gtest/gtest.h>

#include <QAction>
#include <QDateTime>
#include <QFile>
#include <QImage>
#include <QProcess>

#include "files/read_file.h"
#include "picture/picture_file.h"
#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::TListBox;

/// The console program's status over the window's settings.
int RunCli(const ProgramFixture& program, const QStringList& arguments) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"PELORIN_CONFIG_DIR"_s, program.Path(u"config"_s));
  environment.insert(u"PELORIN_DATA_DIR"_s, QStringLiteral(PELORIN_BUILT_DATA));
  process.setProcessEnvironment(environment);
  process.start(QStringLiteral(PELORIN_CLI), arguments);
  EXPECT_TRUE(process.waitForFinished(60000));
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.exitCode();
}

TEST(SameMap, ConsoleMakesTheWindows) {
  const struct {
    const char* Label;
    int LinesOnly, ShowOverlay;
    QString Picture;
    QStringList Named;  ///< the same pass for the console program
  } rows[] = {
      {"the pass and a picture with the second",
       1,
       0,
       u"0223075142V.png"_s,
       {u"--pass"_s, u"202202230751"_s}},
      {"the recording's start", 1, 1, u"0223075142V.png"_s, {u"--start"_s, u"20220223075142"_s}},
      {"a picture that tells no second", 0, 1, u"02230751V.png"_s, {u"--pass"_s, u"202202230751"_s}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    ProgramFixture program;
    program.GiveOrdinarySettings(u"\"NOAA 15\",\"NOAA 19\""_s);
    program.Set(u"OverlayLinesOnly"_s, row.LinesOnly);
    program.Set(u"ShowOverlay"_s, row.ShowOverlay);
    program.Set(u"ClockCorrections"_s, u"NOAA 19=2.5"_s);
    QImage received(909, 300, QImage::Format_RGB32);
    received.fill(Qt::gray);
    const QString picture = program.Path(u"pictures/"_s + row.Picture);
    picture::SavePicture(received, picture);
    QFile file(picture);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDate(2022, 2, 23).startOfDay(), QFileDevice::FileModificationTime);
    file.close();
    program.Start();
    program.Form->ShowPage(session::Page::Setup);
    auto* list = program.Find<TListBox>("ListBoxPasses");
    const QStringList found = list->Items().filter(u"02230751"_s);
    ASSERT_EQ(found.size(), 1);
    list->setCurrentRow(static_cast<int>(list->Items().indexOf(found.first())));
    program.Click("ButtonPicFromPass");
    program.Boxes.ChosenFile = picture;
    program.Find<QAction>("Open1")->trigger();
    program.Click("ButtonGenTopo");
    program.Close();
    EXPECT_EQ(program.Boxes.Take(), QStringList());

    ASSERT_EQ(RunCli(program, QStringList{u"overlay"_s, u"--satellite"_s, u"noaa 19"_s, u"--picture"_s,
                                          picture, u"--master"_s, program.Path(u"bin/Overlay.bmp"_s),
                                          u"--results"_s, program.Path(u"elsewhere"_s)} +
                                  row.Named),
              0);
    for (const QString& name : {u"/Result.jpg"_s, u"/ovl.bmp"_s}) {
      EXPECT_TRUE(files::ReadFile(program.Path(u"bin"_s + name)) ==
                  files::ReadFile(program.Path(u"elsewhere"_s + name)))
          << name.toStdString();
    }
  }
}

}  // namespace
}  // namespace pelorin::tests
