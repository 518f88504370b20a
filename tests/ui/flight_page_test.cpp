#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QTest>
#include <QTimeEdit>
#include <QTimer>

#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;

class FlightPage : public testing::Test, protected ProgramFixture {};

TEST_F(FlightPage, FliesByTheClockOrTheTimeThatIsSet) {
  GiveOrdinarySettings(u"\"FENGYUN 1C\",\"NOAA 19\""_s);
  StartOn(Page::Flight);
  auto* timer = Find<QTimer>("TimerFlight");
  timer->setInterval(60'000);
  const auto tickAfter = [&](double seconds) {
    Now.Days += seconds / 86400;
    Fire("TimerFlight");
    return Form->Status();
  };
  const auto picture = [&] { return Find("ImageFlight")->grab().toImage(); };

  Click("ButtonRunFlight");
  EXPECT_EQ(Form->Status(), u"No satellite is chosen"_s);
  Find<QComboBox>("ComboBoxSatForFlight")->setCurrentText(u"NOAA 19"_s);
  EXPECT_EQ(tickAfter(0), u" Line: 0021 2022 Feb 23  06:00:00.00"_s);
  const QImage north = picture();
  Click("ButtonFlightDirection");
  EXPECT_EQ(Text("ButtonFlightDirection"), u"---> S"_s);
  EXPECT_EQ(picture(), north.mirrored(true, true));
  Form->Shared().Run.MakingMap = true;
  EXPECT_EQ(tickAfter(1), u" Line: 0021 2022 Feb 23  06:00:00.00"_s) << "a map goes first";
  Form->Shared().Run.MakingMap = false;
  QTest::keyClick(Find("ButtonRunFlight"), Qt::Key_Escape);
  EXPECT_EQ(tickAfter(0), u" Line: 0023 2022 Feb 23  06:00:01.00"_s);
  EXPECT_EQ(Text("ButtonRunFlight"), u"Fly"_s);
  Click("ButtonFlightDirection");
  EXPECT_TRUE(timer->isActive()) << "a turn starts a flight";

  QString shown;
  const auto setTime = [&](const QDate& day, bool isConfirmed) {
    InDialog("ButtonSetFlightTime", [&](QDialog& dialog) {
      shown = Text("FlightDate") + u' ' + Text("FlightTime");
      Find<QDateEdit>("FlightDate")->setDate(day);
      Find<QTimeEdit>("FlightTime")->setTime(QTime(10, 20));
      if (isConfirmed) Find("ButtonOK")->setFocus();
      QTest::keyClick(dialog.focusWidget(), Qt::Key_Enter);
    });
  };
  setTime(QDate(2022, 2, 24), false);
  EXPECT_TRUE(tickAfter(0).endsWith(u"2022 Feb 23  06:00:01.00"_s)) << "Enter is for Cancel";
  Find<QComboBox>("ComboBoxSatForFlight")->setCurrentText(u"FENGYUN 1C"_s);
  setTime(QDate(2022, 2, 22), true);
  EXPECT_EQ(tickAfter(0), u" Line: 0021 2022 Feb 22  10:20:00.00"_s) << "a new flight";

  // What of the overlay is seen follows the menu from the next line on.
  const auto unlike = [&](int row, int other) {
    const QImage image = picture();
    int pixels = 0;
    for (int x = 86; x < 995; ++x) {
      pixels += image.pixel(x, image.height() - row) != image.pixel(x, image.height() - other);
    }
    return pixels;
  };
  Find<QAction>("MenuShowOverlay")->trigger();
  tickAfter(0.5);
  EXPECT_LT(unlike(20, 21), 400) << "land, as it comes";
  EXPECT_GT(unlike(21, 22), 850) << "the overlay's land";

  // Two centuries on it has come down; the last flight is still seen.
  const QImage before = picture();
  setTime(QDate(2222, 2, 22), true);
  EXPECT_EQ(shown, u"2022 Feb 22 10:20"_s) << "the start that was chosen last";
  EXPECT_EQ(Boxes.Take().size(), 1);
  EXPECT_FALSE(timer->isActive());
  EXPECT_EQ(Text("ButtonRunFlight"), u"Fly"_s);
  EXPECT_EQ(picture(), before);

  setTime(QDate(2022, 2, 22), true);
  Click("ButtonRunFlight");
  EXPECT_TRUE(timer->isActive());
  Form->ShowPage(Page::GroundPath);
  EXPECT_FALSE(timer->isActive());
  EXPECT_EQ(Form->Status(), QString());
  EXPECT_EQ(Boxes.Take(), QStringList());
}

}  // namespace
}  // namespace pelorin::tests
