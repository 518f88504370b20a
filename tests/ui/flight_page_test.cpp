#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;

TEST(FlightPage, FliesByTheClockAndStopsWhenLeft) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 15\",\"NOAA 19\""_s);
  program.Start();
  program.Form->ShowPage(Page::Flight);
  auto* run = program.Find<QPushButton>("ButtonRunFlight");
  auto* timer = program.Find<QTimer>("TimerFlight");
  timer->setInterval(60'000);
  const auto tickAfter = [&](double seconds) {
    program.Now.Days += seconds / 86400;
    program.Fire("TimerFlight");
    return program.Form->Status();
  };

  program.Click("ButtonRunFlight");
  EXPECT_FALSE(timer->isActive()) << "no satellite is chosen";
  auto* satellite = program.Find<QComboBox>("ComboBoxSatForFlight");
  satellite->setCurrentText(u"NOAA 19"_s);
  EXPECT_EQ(run->text(), u"Stop"_s);
  EXPECT_TRUE(run->hasFocus());
  EXPECT_EQ(tickAfter(0), u" Line: 0021 2022 Feb 23  06:00:00.00"_s);
  EXPECT_EQ(tickAfter(5.25), u" Line: 0031 2022 Feb 23  06:00:05.25"_s);

  const auto picture = [&] { return program.Find("ImageFlight")->grab().toImage(); };
  const QImage north = picture();
  program.Click("ButtonFlightDirection");
  EXPECT_EQ(program.Find<QPushButton>("ButtonFlightDirection")->text(), u"---> S"_s);
  EXPECT_EQ(picture(), north.mirrored(true, true));
  EXPECT_TRUE(timer->isActive()) << "it flies on";

  program.Form->Shared().Run.MakingMap = true;
  EXPECT_EQ(tickAfter(1), u" Line: 0031 2022 Feb 23  06:00:05.25"_s) << "a map goes first";
  program.Form->Shared().Run.MakingMap = false;
  EXPECT_EQ(tickAfter(0), u" Line: 0033 2022 Feb 23  06:00:06.25"_s);

  QTest::keyClick(run, Qt::Key_Escape);
  EXPECT_EQ(run->text(), u"Stop"_s);
  tickAfter(0.1);
  EXPECT_EQ(run->text(), u"Fly"_s);
  EXPECT_FALSE(timer->isActive());

  // A change of direction starts a flight; leaving the page ends it.
  program.Click("ButtonFlightDirection");
  EXPECT_TRUE(timer->isActive());
  tickAfter(0);
  program.Form->ShowPage(Page::GroundPath);
  EXPECT_FALSE(timer->isActive());
  EXPECT_EQ(program.Form->Status(), QString());
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  program.Close();
}

}  // namespace
}  // namespace pelorin::tests
