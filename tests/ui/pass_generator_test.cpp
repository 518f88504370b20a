#include <gtest/gtest.h>

#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QLabel>
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
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s);
  program.Start();
  program.Form->ShowPage(Page::Setup);
  auto* list = program.Find<TListBox>("ListBoxPasses");
  const QStringList day = list->Items();
  ASSERT_GT(day.size(), 15);
  EXPECT_TRUE(std::is_sorted(day.begin(), day.end()));
  EXPECT_EQ(files::ReadFile(program.Path(u"bin/PassList.txt"_s)), day.join(u"\r\n"_s).toLatin1() + "\r\n");
  EXPECT_EQ(program.Find<QLabel>("LabelPassDate")->text(), u"Passes for 2022 Feb 23  (UTC)"_s);
  EXPECT_TRUE(PassButtons(program, false));

  auto* days = program.Find<QSpinBox>("UpDownDaysAhead");
  auto* make = program.Find<QPushButton>("ButtonRegenPasses");
  days->setValue(3);
  EXPECT_EQ(make->text(), u"Make 3 day pass list"_s);
  EXPECT_EQ(list->count(), day.size()) << "only on demand";
  program.Click("ButtonRegenPasses");
  EXPECT_GT(list->count(), 2 * day.size());
  days->setValue(1);
  EXPECT_EQ(make->text(), u"Make pass list"_s);

  // NOAA 19 rose over the west of Norway at 07:5x and moved south.
  const QStringList found = list->Items().filter(u"0223075"_s).filter(u"NOAA 19"_s);
  ASSERT_EQ(found.size(), 1);
  list->setCurrentRow(static_cast<int>(list->Items().indexOf(found.first())));
  EXPECT_TRUE(PassButtons(program, true));
  program.Click("ButtonMapFromPass");
  const session::Session& session = program.Form->Shared();
  EXPECT_EQ(program.Form->CurrentPage(), Page::WorldMap);
  EXPECT_TRUE(session.Pass.SouthBound);
  const orbit::DateTimeFields start = TakeApart(session.Pass.PassStart);
  EXPECT_EQ(start.Minute, found.first().mid(6, 2).toInt());
  EXPECT_EQ(start.Second, 0);
  EXPECT_EQ(session.Pass.PassDurationMinutes, (found.first().section(u' ', 3, 3).toInt() + 59) / 60);
  EXPECT_EQ(program.Find<QSpinBox>("SpinEditPassDuration")->value(), session.Pass.PassDurationMinutes);
  EXPECT_EQ(session.SelectedSatellite()->Name, "NOAA 19");
  EXPECT_EQ(program.Find<QComboBox>("ComboBoxSatForMap")->currentText(), u"NOAA 19"_s);

  program.Form->ShowPage(Page::Setup);
  const QPoint selected = list->visualItemRect(list->currentItem()).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, selected);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, selected);
  EXPECT_EQ(program.Form->CurrentPage(), Page::GroundPath);
  EXPECT_EQ(program.Find<QComboBox>("ComboBoxSatForPic")->currentText(), u"NOAA 19"_s);
  program.Form->ShowPage(Page::Setup);
  program.Click("ButtonFlightFromPass");
  EXPECT_EQ(program.Form->CurrentPage(), Page::Flight);
  EXPECT_NEAR(session.Pass.FlightTimeOffset, session.Pass.PassStart.Days - program.Now.Days, 1e-9);
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  program.Close();
}

TEST(PassGenerator, PastDaysAreOfTheElementsOfTheirTime) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  program.Set(u"SavePassDetails"_s, 1);
  QDir(program.Path(QString())).mkpath(u"user/archive"_s);
  // The same orbit as of a month before: from it, other passes follow.
  QByteArray earlier = files::ReadFile(program.Path(u"bin/weather.2li"_s));
  files::ReplaceFile(program.Path(u"user/archive/2022-01.2li"_s), earlier.replace(" 22053.", " 22023."));
  const elements::KnownSets archived(program.Path(u"user/archive"_s).toStdU16String(), {});
  const elements::KnownSets loaded(program.Path(u"bin"_s).toStdU16String(), {});
  program.Start();
  program.Form->ShowPage(Page::Setup);
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
  program.Close();
}

TEST(PassGenerator, MissingResultsFolderIsToldOnce) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
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
  program.Close();
}

TEST(PassGenerator, NextPassMayBeTomorrows) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  program.Start();
  program.Form->ShowPage(Page::Setup);
  auto* list = program.Find<TListBox>("ListBoxPasses");
  const struct {
    const char* Label;
    int Hour, Minute;
    QString Day;  ///< of the pass that is found
  } rows[] = {{"today", 6, 0, u"0223"_s}, {"tomorrow", 23, 58, u"0224"_s}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    program.Now = orbit::MakeDateTime(2022, 2, 23, row.Hour, row.Minute);
    program.Click("ButtonNextPass");
    EXPECT_TRUE(list->SelectedText().startsWith(row.Day)) << list->SelectedText().toStdString();
    EXPECT_TRUE(PassButtons(program, true));
    EXPECT_TRUE(program.Find<QPushButton>("ButtonMapFromPass")->hasFocus());
    EXPECT_EQ(program.Find<QDateEdit>("DateTimePickerPasses")->date().toString(u"MMdd"_s), row.Day);
  }

  // Only the last of several steps through the dates makes a list.
  auto* timer = program.Find<QTimer>("TimerPassDateChanging");
  auto* date = program.Find<QDateEdit>("DateTimePickerPasses");
  const QStringList before = list->Items();
  date->setDate(QDate(2022, 2, 25));
  date->setDate(QDate(2022, 2, 26));
  EXPECT_EQ(timer->interval(), 500);
  EXPECT_EQ(list->Items(), before);
  program.Fire("TimerPassDateChanging");
  EXPECT_FALSE(timer->isActive());
  EXPECT_TRUE(list->Items().first().startsWith(u"0226"_s));
  EXPECT_TRUE(PassButtons(program, false));
  program.Close();
}

}  // namespace
}  // namespace pelorin::tests
