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

class CommandLine : public testing::Test, protected ProgramFixture {
 protected:
  CommandLine() : ProgramFixture(u"\"NOAA 19\",\"METEOR 3-5\""_s) {}
  ~CommandLine() override { Form.reset(); }

  session::QtPrompts trueBoxes{u"Pelorin"_s, {}};
};

TEST_F(CommandLine, PassIsFoundAndMadeWithoutABox) {
  QFile::remove(Path(u"share/pelorin"_s));
  const struct {
    QString PassString, Satellite, Listed;
  } rows[] = {{u"0223075129"_s, u"NOAA 19"_s, u"0223075129"_s},
              {u"20220225235921"_s, u"METEOR 3-5"_s, {}}};  // culminates on the next day
  for (const auto& row : rows) {
    SCOPED_TRACE(row.PassString.toStdString());
    Start(row.PassString);
    EXPECT_EQ(Form->CurrentPage(), Page::GroundPath);
    EXPECT_EQ(orbit::FormatDateTime("mmddhhnn", Form->Shared().Pass.PassStart),
              row.PassString.right(10).first(8).toStdString());
    EXPECT_EQ(Text("ComboBoxSatForPic"), row.Satellite);
    EXPECT_EQ(Find<TListBox>("ListBoxPasses")->SelectedText().first(row.Listed.size()), row.Listed);
    EXPECT_EQ(Unattended->Failure(), u"the program was closed before the map was made"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Form->isVisible(); }, 5000));
    EXPECT_EQ(Unattended->Failure(), QString());
    EXPECT_TRUE(QFile::remove(Path(u"bin/Result.jpg"_s))) << "on black ground";
    EXPECT_FALSE(QFile::exists(Path(u"bin/PassList.txt"_s))) << "only the user's own lists are saved";
    EXPECT_EQ(Boxes.Take(), QStringList());
    EXPECT_TRUE(CallerTexts.contains(u"Topography will not be available"_s));
    Close();
  }
}

/// The true program, as a recorder starts it.
TEST_F(CommandLine, StatusAtTheEndTellsWhetherTheMapWasMade) {
  ASSERT_TRUE(QFile::copy(u"" PELORIN_PROGRAM ""_s, ProgramPath()));
  Set(u"TwoLineDataPath"_s, Path(u"bin/"_s));
  Set(u"UnattendedMinutes"_s, 0);
  const QString config = Path(u"config"_s);
  const struct {
    const char* Label;
    QString Results, PassString;
    int Status;
    QString Said;
  } rows[] = {{"not written", u"bin/weather.2li/"_s, u"202202230751"_s, 1, u"pelorin: Cannot write "_s},
              {"no such pass", u"elsewhere/"_s, u"202202230101"_s, 1, u"pelorin: Parameter 202202230101 "_s},
              {"made", u"elsewhere/"_s, u"202202230751"_s, 0, QString()}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    Set(u"ResultsPath"_s, Path(row.Results));
    const Outcome outcome = RunProgram(ProgramPath(), {row.PassString}, config,
                                       {{"PELORIN_CONFIG_DIR", config},
                                        {"PELORIN_DATA_DIR", config},
                                        {"XDG_CACHE_HOME", config},
                                        {"QT_QPA_PLATFORM", u"offscreen"_s}});
    EXPECT_EQ(outcome.Status, row.Status);
    EXPECT_TRUE(outcome.Err.contains(row.Said)) << outcome.Err.toStdString();
    EXPECT_EQ(QFile::exists(Path(u"elsewhere/Result.jpg"_s)), row.Status == 0);
  }
}

TEST_F(CommandLine, RunWithoutAPassEndsUnlessSomebodyIsThere) {
  QFile::remove(Path(u"share/pelorin"_s));
  UserBoxes = &trueBoxes;
  const auto wait = [this] { return Unattended->findChild<QTimer*>(u"TimerUntouched"_s); };
  const struct {
    const char* Label;
    QString PassString;
    std::function<void(QWidget* box)> Act;  ///< in the first of several boxes
    bool Waits, Ends;
  } rows[] = {
      {"nobody", u"0223074945"_s, [&wait](QWidget*) { wait()->setInterval(0); }, true, true},
      {"a key", u"0231NOON"_s, [](QWidget* box) { QTest::keyClick(box, Qt::Key_Shift); }, false, false},
      {"a click in the window behind", u"0223074945"_s,
       [this](QWidget*) { QTest::mouseClick(Find("StatusText"), Qt::RightButton); }, false, false},
      {"boxes closed by their frame", u"0231NOON"_s, [](QWidget* box) { box->close(); }, true, false},
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
        EXPECT_EQ(wait()->isActive(), row.Waits);
      } else if (!row.Ends) {
        box->close();
      }
      if (!shown.contains(box->text())) shown.append(box->text());
    });
    watch.start(1);
    Start(row.PassString);
    watch.stop();
    ASSERT_EQ(shown.size(), row.Ends ? 1 : 3) << "backdrop, topography, and then the reason";
    EXPECT_EQ(shown.last().contains(row.PassString), !row.Ends);
    EXPECT_EQ(Unattended->Failure().contains(row.PassString), row.Ends);
    EXPECT_EQ(Form->isVisible(), !row.Ends);
    EXPECT_FALSE(wait()->isActive());
    Close();
  }
}

}  // namespace
}  // namespace pelorin::tests
