#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "session/list_box.h"
#include "session/qt_prompts.h"
#include "tests/support/program_fixture.h"
#include "tests/support/run_program.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

TEST(CommandLine, PassIsFoundAndMadeWithoutABox) {
  const struct {
    QString PassString, Satellite, Listed;
  } rows[] = {{u"0223075129"_s, u"NOAA 19"_s, u"0223075129"_s},
              {u"20220225235921"_s, u"METEOR 3-5"_s, {}}};  // culminates on the next day
  for (const auto& row : rows) {
    SCOPED_TRACE(row.PassString.toStdString());
    ProgramFixture program(u"\"NOAA 19\",\"METEOR 3-5\""_s);
    QFile::remove(program.Path(u"share/pelorin"_s));
    program.Start(row.PassString);
    EXPECT_EQ(program.Form->CurrentPage(), Page::GroundPath);
    EXPECT_EQ(orbit::FormatDateTime("mmddhhnn", program.Form->Shared().Pass.PassStart),
              row.PassString.right(10).first(8).toStdString());
    EXPECT_EQ(program.Text("ComboBoxSatForPic"), row.Satellite);
    EXPECT_EQ(program.Find<TListBox>("ListBoxPasses")->SelectedText().first(row.Listed.size()), row.Listed);
    EXPECT_EQ(program.Unattended->Failure(), u"the program was closed before the map was made"_s);
    EXPECT_TRUE(QTest::qWaitFor([&program] { return !program.Form->isVisible(); }, 5000));
    EXPECT_EQ(program.Unattended->Failure(), QString());
    EXPECT_TRUE(QFile::exists(program.Path(u"bin/Result.jpg"_s))) << "on black ground";
    EXPECT_FALSE(QFile::exists(program.Path(u"bin/PassList.txt"_s))) << "only the user's own lists are saved";
    EXPECT_EQ(program.Boxes.Take(), QStringList());
    EXPECT_TRUE(program.CallerTexts.contains(u"Topography will not be available"_s));
  }
}

/// The true program, as a recorder starts it.
TEST(CommandLine, StatusAtTheEndTellsWhetherTheMapWasMade) {
  const struct {
    const char *Label, *Results;
    QString PassString;
    int Status;
    QString Said;
  } rows[] = {{"made", "elsewhere/", u"202202230751"_s, 0, {}},
              {"not written", "bin/weather.2li/", u"202202230751"_s, 1, u"pelorin: Cannot write "_s},
              {"no such pass", "elsewhere/", u"202202230101"_s, 1, u"pelorin: Parameter 202202230101 "_s}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    ProgramFixture program(u"\"NOAA 19\""_s);
    program.Set(u"TwoLineDataPath"_s, program.Path(u"bin/"_s));
    program.Set(u"ResultsPath"_s, program.Path(QLatin1StringView(row.Results)));
    program.Set(u"UnattendedMinutes"_s, 0);
    ASSERT_TRUE(QFile::copy(u"" PELORIN_PROGRAM ""_s, program.ProgramPath()));
    const QString config = program.Path(u"config"_s);
    const Outcome outcome = RunProgram(program.ProgramPath(), {row.PassString}, config,
                                       {{"PELORIN_CONFIG_DIR", config},
                                        {"PELORIN_DATA_DIR", config},
                                        {"XDG_CACHE_HOME", config},
                                        {"QT_QPA_PLATFORM", u"offscreen"_s}});
    EXPECT_EQ(outcome.Status, row.Status);
    EXPECT_TRUE(outcome.Err.contains(row.Said)) << outcome.Err.toStdString();
    EXPECT_EQ(QFile::exists(program.Path(u"elsewhere/Result.jpg"_s)), row.Status == 0);
  }
}

TEST(CommandLine, RunWithoutAPassEndsUnlessSomebodyIsThere) {
  ProgramFixture program(u"\"NOAA 19\""_s);
  QFile::remove(program.Path(u"share/pelorin"_s));
  session::QtPrompts boxes(u"Pelorin"_s, {});
  program.UserBoxes = &boxes;
  const auto wait = [&program] { return program.Unattended->findChild<QTimer*>(u"TimerUntouched"_s); };
  const struct {
    const char* Label;
    QString PassString;
    std::function<void(QWidget* box)> Act;  ///< in the first of several boxes
    bool Ends;
  } rows[] = {
      {"nobody", u"0223074945"_s, [&wait](QWidget*) { wait()->setInterval(0); }, true},
      {"a key", u"0231NOON"_s, [](QWidget* box) { QTest::keyClick(box, Qt::Key_Shift); }, false},
      {"a shortcut", u"0223074945"_s,
       [](QWidget* box) { QTest::keyClick(box->windowHandle(), Qt::Key_F, Qt::AltModifier); }, false},
      {"a click in the window behind", u"0223074945"_s,
       [&program](QWidget*) { QTest::mouseClick(program.Find("StatusText"), Qt::RightButton); }, false},
      {"boxes closed by their frame", u"0231NOON"_s, [](QWidget* box) { box->close(); }, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    QTimer watch;
    QStringList shown;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      if (shown.isEmpty()) {
        EXPECT_GT(wait()->remainingTime(), 500'000) << "minutes to read";
        row.Act(box);
      } else if (!row.Ends) {
        box->close();
      }
      if (!shown.contains(box->text())) shown.append(box->text());
    });
    watch.start(1);
    program.Start(row.PassString);
    watch.stop();
    ASSERT_EQ(shown.size(), row.Ends ? 1 : 3) << "backdrop, topography, and then the reason";
    EXPECT_EQ(shown.last().contains(row.PassString), !row.Ends);
    EXPECT_EQ(program.Unattended->Failure().contains(row.PassString), row.Ends);
    EXPECT_EQ(program.Form->isVisible(), !row.Ends);
    EXPECT_FALSE(wait()->isActive());
    program.Close();
  }
}

}  // namespace
}  // namespace pelorin::tests
