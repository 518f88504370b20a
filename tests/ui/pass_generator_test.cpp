#include <gtest/gtest.h>

#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "files/text_file.h"
#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

class PassGenerator : public testing::Test, protected ProgramFixture {
 protected:
  PassGenerator() : ProgramFixture(u"\"NOAA 19\""_s) {}

  TListBox* List() const { return Find<TListBox>("ListBoxPasses"); }
  bool AreButtonsEnabled() const { return Find("ButtonFlightFromPass")->isEnabled(); }
};

TEST_F(PassGenerator, ListOfTheDayIsShownSavedAndUsed) {
  Set(u"SatelliteList"_s, u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s);
  StartOn(Page::Setup);
  const QStringList day = List()->Items();
  ASSERT_GT(day.size(), 15);
  EXPECT_TRUE(std::is_sorted(day.begin(), day.end()));
  EXPECT_EQ(files::ReadFile(Path(u"bin/PassList.txt"_s)), day.join(u"\r\n"_s).toLatin1() + "\r\n");
  EXPECT_EQ(Text("LabelPassDate"), u"Passes for 2022 Feb 23  (UTC)"_s);
  EXPECT_FALSE(AreButtonsEnabled());
  Find<QSpinBox>("UpDownDaysAhead")->setValue(3);
  EXPECT_EQ(Text("ButtonRegenPasses"), u"Make 3 day pass list"_s);
  EXPECT_EQ(List()->count(), day.size()) << "only on demand";
  Click("ButtonRegenPasses");
  EXPECT_GT(List()->count(), 2 * day.size());

  // NOAA 19 rose over the west of Norway at 07:51, moved south, and set 891 seconds later.
  ChoosePass(u"02230751"_s, u"NOAA 19"_s);
  EXPECT_TRUE(AreButtonsEnabled());
  Click("ButtonMapFromPass");
  const session::Session& session = Form->Shared();
  EXPECT_EQ(Form->CurrentPage(), Page::WorldMap);
  EXPECT_TRUE(session.Pass.SouthBound);
  EXPECT_EQ(session.Pass.PassStart, orbit::MakeDateTime(2022, 2, 23, 7, 51));
  EXPECT_EQ(Find<QSpinBox>("SpinEditPassDuration")->value(), 15);
  EXPECT_EQ(Text("ComboBoxSatForMap"), u"NOAA 19"_s);

  Form->ShowPage(Page::Setup);
  const QPoint selected = List()->visualItemRect(List()->currentItem()).center();
  QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, selected);
  QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, selected);
  EXPECT_EQ(Form->CurrentPage(), Page::GroundPath);
  EXPECT_EQ(Text("ComboBoxSatForPic"), u"NOAA 19"_s);
  Form->ShowPage(Page::Setup);
  Click("ButtonFlightFromPass");
  EXPECT_EQ(Form->CurrentPage(), Page::Flight);
  EXPECT_NEAR(session.Pass.FlightTimeOffset, session.Pass.PassStart.Days - Now.Days, 1e-9);
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(PassGenerator, PastDaysAreOfTheElementsOfTheirTime) {
  Set(u"SavePassDetails"_s, 1);
  QDir(Path(QString())).mkpath(u"user/archive"_s);
  // The same orbit as of a month before, and with the same checksums: from it, other passes follow.
  const QString archived = Path(u"user/archive/2022-01.2li"_s);
  QByteArray earlier = files::ReadFile(Path(u"bin/weather.2li"_s));
  files::ReplaceFile(archived, earlier.replace(" 22053.", " 22026."));
  // The passes of a day in January, and where the first one's map begins.
  const auto january = [this](const QString& elements) {
    Set(u"TwoLineDataPath"_s, Path(elements));
    StartOn(Page::Setup);
    Find<QDateEdit>("DateTimePickerPasses")->setDate(QDate(2022, 1, 24));
    Fire("TimerPassDateChanging");
    const QStringList passes = List()->Items();
    List()->setCurrentRow(0);
    Click("ButtonPicFromPass");
    Click("ButtonGenTopo");
    Close();
    return passes + files::ReadLines(Path(u"bin/pass.dat"_s)).first(1);
  };
  const QStringList known = january(u"user/archive/"_s);
  EXPECT_TRUE(known.first().startsWith(u"0124"_s));
  EXPECT_EQ(january(u"bin/"_s), known) << "though others are loaded";
  QFile::remove(archived);
  EXPECT_NE(january(u"bin/"_s).last(), known.last());
}

TEST_F(PassGenerator, MissingResultsFolderIsToldOnce) {
  const QString folder = Path(u"elsewhere/gone"_s);
  Set(u"ResultsPath"_s, folder + u'/');
  Start();
  const QStringList said = Boxes.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_TRUE(said[0].startsWith(u"Error: There is no results folder "_s + folder)) << said[0].toStdString();
  Form->ShowPage(Page::Setup);
  Click("ButtonNextPass");
  EXPECT_TRUE(AreButtonsEnabled());
  Click("ButtonPicFromPass");
  Click("ButtonGenTopo");
  EXPECT_TRUE(Form->Status().startsWith(u"Not saved: "_s)) << Form->Status().toStdString();
  Close();
  Start();
  EXPECT_EQ(Boxes.Take(), QStringList()) << "nor at the next start";

  ASSERT_TRUE(QDir().mkdir(folder));
  Click("ButtonRegenPasses");
  EXPECT_TRUE(QFile::remove(folder + u"/PassList.txt"_s));
  ASSERT_TRUE(QDir().mkdir(folder + u"/PassList.txt"_s));
  Click("ButtonRegenPasses");
  EXPECT_EQ(Boxes.Take().size(), 1) << "another trouble";
  // There is no room for a map, but for a list.
  EXPECT_TRUE(QDir().rmdir(folder + u"/PassList.txt"_s) && QDir().mkdir(folder + u"/Result.jpg"_s));
  Click("ButtonRegenPasses");
  Form->ShowPage(Page::GroundPath);
  Click("ButtonGenTopo");
  EXPECT_TRUE(Form->Status().startsWith(u"Not saved: "_s)) << Form->Status().toStdString();
  EXPECT_EQ(Boxes.Take(), QStringList()) << "the same folder again";
}

TEST_F(PassGenerator, NextPassMayBeTomorrowsAndADateSettles) {
  StartOn(Page::Setup);
  auto* date = Find<QDateEdit>("DateTimePickerPasses");
  Click("ButtonNextPass");
  EXPECT_TRUE(List()->SelectedText().startsWith(u"0223"_s));
  Now = orbit::MakeDateTime(2022, 2, 23, 23, 58);
  Click("ButtonNextPass");
  EXPECT_TRUE(List()->SelectedText().startsWith(u"0224"_s));
  EXPECT_EQ(date->date(), QDate(2022, 2, 24));
  EXPECT_TRUE(AreButtonsEnabled());
  EXPECT_TRUE(Find("ButtonMapFromPass")->hasFocus());

  // Only the last of several steps through the dates makes a list.
  const QStringList before = List()->Items();
  date->setDate(QDate(2022, 2, 25));
  date->setDate(QDate(2022, 2, 26));
  EXPECT_EQ(List()->Items(), before);
  Fire("TimerPassDateChanging");
  EXPECT_FALSE(Find<QTimer>("TimerPassDateChanging")->isActive());
  EXPECT_TRUE(List()->Items().first().startsWith(u"0226"_s));
  EXPECT_FALSE(AreButtonsEnabled());
}

}  // namespace
}  // namespace pelorin::tests
