#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include "session/list_box.h"
#include "session/qt_prompts.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

TEST(CommandLine, PassOfTheStringIsFoundOrToldToBeMissing) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\",\"METEOR 3-5\""_s);
  const struct {
    const char* Label;
    QString Parameter, Said;
    bool IsListed = true;
  } rows[] = {
      {"of the day's list", u"0223075129"_s, QString()},
      {"rises today, culminates tomorrow", u"20220225235921"_s, QString(), false},
      {"a minute too early", u"0223074945"_s,
       u"Message: Parameter 0223074945 specified but pass string 02230749 not found.  Note that the pass "
       u"string may "
       "have been truncated in an effort to find a matching pass"_s},
      {"no time at all", u"0231NOON"_s,
       u"Error: The pass string 0231NOON is no time: 'ON' is not a valid integer value"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    program.Start(row.Parameter);
    const QString said = program.Boxes.Take().join(u'\n');
    EXPECT_TRUE(row.Said.isEmpty() ? said.isEmpty() : said.startsWith(row.Said)) << said.toStdString();
    const session::Session& session = program.Form->Shared();
    EXPECT_EQ(session.MakesMapUnattended(), row.Said.isEmpty());
    EXPECT_EQ(program.Form->CurrentPage(), row.Said.isEmpty() ? Page::GroundPath : Page::WorldMap);
    if (row.Said.isEmpty()) {
      const QString stamp = row.Parameter.right(10);
      EXPECT_EQ(orbit::FormatDateTime("mmddhhnn", session.Pass.PassStart), stamp.left(8).toStdString());
      EXPECT_EQ(program.Find<QComboBox>("ComboBoxSatForPic")->currentText(),
                row.IsListed ? u"NOAA 19"_s : u"METEOR 3-5"_s);
      EXPECT_EQ(program.Find<TListBox>("ListBoxPasses")->SelectedText().left(10),
                row.IsListed ? stamp : QString());
    }
    EXPECT_EQ(session.Map.Mode,
              row.Said.isEmpty() ? session::Timeframe::Manual : session::Timeframe::RealTime);
    EXPECT_FALSE(QFile::exists(program.Path(u"bin/PassList.txt"_s))) << "only the user's own lists are saved";
    program.Close();
  }
}

TEST(CommandLine, NoBoxWaitsWhileAPassIsMade) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  QFile::remove(program.Path(u"share/pelorin"_s));
  program.Start(u"202202230751"_s);
  EXPECT_EQ(program.Unattended->Failure(), u"the program was closed before the map was made"_s);
  EXPECT_TRUE(QTest::qWaitFor([&program] { return !program.Form->isVisible(); }, 5000));
  EXPECT_EQ(program.Unattended->Failure(), QString());
  EXPECT_TRUE(QFile::exists(program.Path(u"bin/Result.jpg"_s))) << "on black ground";
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  EXPECT_TRUE(program.CallerTexts.contains(u"Topography will not be available"_s));
  program.Close();

  // With no pass to make, somebody has to read it all.
  program.Start(u"202202230101"_s);
  const QStringList said = program.Boxes.Take();
  EXPECT_TRUE(said.contains(u"Message: Topography will not be available"_s));
  EXPECT_TRUE(said.last().startsWith(u"Message: Parameter 202202230101 specified"_s));
  EXPECT_EQ(program.Unattended->Failure(), QString());
  program.Close();
}

/// The true program, as a recorder starts it.
TEST(CommandLine, StatusAtTheEndTellsWhetherTheMapWasMade) {
  const struct {
    const char *Label, *Results;
    QString PassString;
    int Status;
    QByteArray Said;
  } rows[] = {{"made", "elsewhere/", u"202202230751"_s, 0, ""},
              {"not written", "bin/weather.2li/", u"202202230751"_s, 1, "pelorin: Cannot write "},
              {"no such pass", "elsewhere/", u"202202230101"_s, 1, "pelorin: Parameter 202202230101 "}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    ProgramFixture program;
    program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
    program.Set(u"TwoLineDataPath"_s, program.Path(u"bin/"_s));
    program.Set(u"ResultsPath"_s, program.Path(QLatin1StringView(row.Results)));
    program.Set(u"UnattendedMinutes"_s, 0);
    ASSERT_TRUE(QFile::copy(u"" PELORIN_PROGRAM ""_s, program.ProgramPath()));
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* folder : {"PELORIN_CONFIG_DIR", "PELORIN_DATA_DIR", "XDG_CACHE_HOME"}) {
      environment.insert(QLatin1StringView(folder), program.Path(u"config"_s));
    }
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    process.setProcessEnvironment(environment);
    process.start(program.ProgramPath(), {row.PassString});
    ASSERT_TRUE(process.waitForFinished(30000)) << "it waits for a user";
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), row.Status);
    const QByteArray said = process.readAllStandardError();
    EXPECT_TRUE(row.Said.isEmpty() || said.contains(row.Said)) << said.toStdString();
    EXPECT_EQ(QFile::exists(program.Path(u"elsewhere/Result.jpg"_s)), row.Status == 0);
  }
}

TEST(CommandLine, RunWithoutAPassEndsUnlessSomebodyIsThere) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  QFile::remove(program.Path(u"share/pelorin"_s));  // of which there is a box to read before
  session::QtPrompts boxes(u"Pelorin"_s, {});
  program.UserBoxes = &boxes;
  const auto wait = [&program] { return program.Unattended->findChild<QTimer*>(u"TimerUntouched"_s); };
  const struct {
    const char* Label;
    std::function<void(QWidget* box)> Act;
    bool Ends;
  } rows[] = {
      {"nobody", [&wait](QWidget*) { wait()->setInterval(0); }, true},
      {"a key", [](QWidget* box) { QTest::keyClick(box, Qt::Key_Shift); }, false},
      {"a shortcut", [](QWidget* box) { QTest::keyClick(box->windowHandle(), Qt::Key_F, Qt::AltModifier); },
       false},
      {"a click in the window behind",
       [&program](QWidget*) { QTest::mouseClick(program.Find("StatusText"), Qt::RightButton); }, false},
      {"a box closed by its frame", [](QWidget* box) { box->close(); }, false},
  };
  for (const QString& passString : {u"202202230101"_s, u"0231NOON"_s}) {
    for (const auto& row : rows) {
      SCOPED_TRACE(row.Label);
      QTimer act;
      bool hasActed = false;
      QObject::connect(&act, &QTimer::timeout, &act, [&] {
        QWidget* box = QApplication::activeModalWidget();
        if (box == nullptr) return;
        if (std::exchange(hasActed, true)) {
          if (!row.Ends) box->close();
          return;
        }
        EXPECT_EQ(wait()->remainingTime() > 500'000, true) << "minutes to read";
        row.Act(box);
      });
      act.start(1);
      program.Start(passString);
      act.stop();
      EXPECT_TRUE(hasActed);
      EXPECT_EQ(program.Form->isVisible(), !row.Ends);
      EXPECT_FALSE(wait()->isActive());
      EXPECT_EQ(program.Unattended->Failure().contains(passString), row.Ends)
          << program.Unattended->Failure().toStdString();
      program.Close();
    }
  }
}

}  // namespace
}  // namespace pelorin::tests
