#include <gtest/gtest.h>

#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include "elements/known_sets.h"
#include "files/atomic_file.h"
#include "files/read_file.h"
#include "files/text_file.h"
#include "orbit/julian_date.h"
#include "orbit/observer.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"
#include "passes/pass_list.h"
#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

bool PassButtons(const ProgramFixture& program, bool enabled) {
  for (const char* name : {"ButtonMapFromPass", "ButtonPicFromPass", "ButtonFlightFromPass"}) {
    if (program.Find<QPushButton>(name)->isEnabled() != enabled) return false;
  }
  return true;
}

TEST(PassGenerator, ListOfTheDayIsShownSavedAndUsed) {
  ProgramFixture program(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s);
  program.StartOn(Page::Setup);
  auto* list = program.Find<TListBox>("ListBoxPasses");
  const QStringList day = list->Items();
  ASSERT_GT(day.size(), 15);
  EXPECT_TRUE(std::is_sorted(day.begin(), day.end()));
  EXPECT_EQ(files::ReadFile(program.Path(u"bin/PassList.txt"_s)), day.join(u"\r\n"_s).toLatin1() + "\r\n");
  EXPECT_EQ(program.Text("LabelPassDate"), u"Passes for 2022 Feb 23  (UTC)"_s);
  EXPECT_TRUE(PassButtons(program, false));
  program.Find<QSpinBox>("UpDownDaysAhead")->setValue(3);
  EXPECT_EQ(program.Text("ButtonRegenPasses"), u"Make 3 day pass list"_s);
  EXPECT_EQ(list->count(), day.size()) << "only on demand";
  program.Click("ButtonRegenPasses");
  EXPECT_GT(list->count(), 2 * day.size());

  // NOAA 19 rose over the west of Norway at 07:51, moved south, and set 891 seconds later.
  program.ChoosePass(u"02230751"_s, u"NOAA 19"_s);
  EXPECT_TRUE(PassButtons(program, true));
  program.Click("ButtonMapFromPass");
  const session::Session& session = program.Form->Shared();
  EXPECT_EQ(program.Form->CurrentPage(), Page::WorldMap);
  EXPECT_TRUE(session.Pass.SouthBound);
  EXPECT_EQ(session.Pass.PassStart, orbit::MakeDateTime(2022, 2, 23, 7, 51));
  EXPECT_EQ(program.Find<QSpinBox>("SpinEditPassDuration")->value(), 15);
  EXPECT_EQ(program.Text("ComboBoxSatForMap"), u"NOAA 19"_s);

  program.Form->ShowPage(Page::Setup);
  const QPoint selected = list->visualItemRect(list->currentItem()).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, selected);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, selected);
  EXPECT_EQ(program.Form->CurrentPage(), Page::GroundPath);
  EXPECT_EQ(program.Text("ComboBoxSatForPic"), u"NOAA 19"_s);
  program.Form->ShowPage(Page::Setup);
  program.Click("ButtonFlightFromPass");
  EXPECT_EQ(program.Form->CurrentPage(), Page::Flight);
  EXPECT_NEAR(session.Pass.FlightTimeOffset, session.Pass.PassStart.Days - program.Now.Days, 1e-9);
  EXPECT_EQ(program.Boxes.Take(), QStringList());
}

TEST(PassGenerator, PastDaysAreOfTheElementsOfTheirTime) {
  ProgramFixture program(u"\"NOAA 19\""_s);
  program.Set(u"SavePassDetails"_s, 1);
  QDir(program.Path(QString())).mkpath(u"user/archive"_s);
  // The same orbit as of a month before: from it, other passes follow.
  QByteArray earlier = files::ReadFile(program.Path(u"bin/weather.2li"_s));
  files::ReplaceFile(program.Path(u"user/archive/2022-01.2li"_s), earlier.replace(" 22053.", " 22023."));
  const elements::KnownSets archived(program.Path(u"user/archive"_s).toStdU16String(), {});
  const elements::KnownSets loaded(program.Path(u"bin"_s).toStdU16String(), {});
  program.StartOn(Page::Setup);
  auto* list = program.Find<TListBox>("ListBoxPasses");
  const app::Station& station = program.Form->Shared().Station;
  const struct {
    QDate Day;
    const elements::KnownSets& Expected;
  } rows[] = {{QDate(2022, 2, 23), loaded}, {QDate(2022, 1, 24), archived}};
  for (const auto& row : rows) {
    program.Find<QDateEdit>("DateTimePickerPasses")->setDate(row.Day);
    program.Fire("TimerPassDateChanging");
    const orbit::TDateTime day = orbit::MakeDateTime(row.Day.year(), row.Day.month(), row.Day.day());
    EXPECT_EQ(list->Items(), passes::PassListEntries({*row.Expected.Find("NOAA 19")}, station.Place,
                                                     {day, 1, station.MinElevationDeg}));
  }

  // The map of such a pass is made with them, too.
  list->setCurrentRow(0);
  program.Click("ButtonPicFromPass");
  program.Click("ButtonGenTopo");
  const QStringList start =
      files::ReadLines(program.Path(u"bin/pass.dat"_s)).value(0).split(u' ', Qt::SkipEmptyParts);
  ASSERT_EQ(start.size(), 3);
  const double jd = orbit::JulianDateOfDateTime(program.Form->Shared().Pass.PassStart);
  orbit::Geodetic below;
  orbit::SatLatLonAlt(orbit::SatelliteStateKm(*archived.Find("NOAA 19"), jd).Position, jd, below);
  EXPECT_NEAR(start[1].toDouble(), orbit::Degrees(below.Latitude), 0.06);
  EXPECT_NEAR(start[2].toDouble(), orbit::Degrees(below.Longitude), 0.06);
}

TEST(PassGenerator, MissingResultsFolderIsToldOnce) {
  ProgramFixture program(u"\"NOAA 19\""_s);
  const QString folder = program.Path(u"elsewhere/gone"_s);
  program.Set(u"ResultsPath"_s, folder + u'/');
  program.Start();
  const QStringList said = program.Boxes.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_TRUE(said[0].startsWith(u"Error: There is no results folder "_s + folder)) << said[0].toStdString();
  program.Form->ShowPage(Page::Setup);
  program.Click("ButtonNextPass");
  EXPECT_TRUE(PassButtons(program, true));
  program.Click("ButtonPicFromPass");
  program.Click("ButtonGenTopo");
  EXPECT_TRUE(program.Form->Status().startsWith(u"Not saved: "_s)) << program.Form->Status().toStdString();
  program.Close();
  program.Start();
  EXPECT_EQ(program.Boxes.Take(), QStringList()) << "nor at the next start";

  ASSERT_TRUE(QDir().mkdir(folder));
  program.Click("ButtonRegenPasses");
  EXPECT_TRUE(QFile::remove(folder + u"/PassList.txt"_s));
  ASSERT_TRUE(QDir().mkdir(folder + u"/PassList.txt"_s));
  program.Click("ButtonRegenPasses");
  EXPECT_EQ(program.Boxes.Take().size(), 1) << "another trouble";
}

TEST(PassGenerator, NextPassMayBeTomorrowsAndADateSettles) {
  ProgramFixture program(u"\"NOAA 19\""_s);
  program.StartOn(Page::Setup);
  auto* list = program.Find<TListBox>("ListBoxPasses");
  auto* date = program.Find<QDateEdit>("DateTimePickerPasses");
  program.Click("ButtonNextPass");
  EXPECT_TRUE(list->SelectedText().startsWith(u"0223"_s));
  program.Now = orbit::MakeDateTime(2022, 2, 23, 23, 58);
  program.Click("ButtonNextPass");
  EXPECT_TRUE(list->SelectedText().startsWith(u"0224"_s));
  EXPECT_EQ(date->date(), QDate(2022, 2, 24));
  EXPECT_TRUE(PassButtons(program, true));
  EXPECT_TRUE(program.Find("ButtonMapFromPass")->hasFocus());

  // Only the last of several steps through the dates makes a list.
  const QStringList before = list->Items();
  date->setDate(QDate(2022, 2, 25));
  date->setDate(QDate(2022, 2, 26));
  EXPECT_EQ(list->Items(), before);
  program.Fire("TimerPassDateChanging");
  EXPECT_FALSE(program.Find<QTimer>("TimerPassDateChanging")->isActive());
  EXPECT_TRUE(list->Items().first().startsWith(u"0226"_s));
  EXPECT_TRUE(PassButtons(program, false));
}

}  // namespace
}  // namespace pelorin::tests
