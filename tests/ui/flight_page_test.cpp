#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTimeEdit>
#include <QTimer>
#include <functional>

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
  EXPECT_FALSE(timer->isActive());
  EXPECT_EQ(program.Form->Status(), u"No satellite is chosen"_s);
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

TEST(FlightPage, StartsAgainAtTheTimeThatIsSet) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 15\",\"FENGYUN 1C\""_s);
  program.Start();
  program.Form->ShowPage(Page::Flight);
  auto* timer = program.Find<QTimer>("TimerFlight");
  timer->setInterval(60'000);
  program.Find<QComboBox>("ComboBoxSatForFlight")->setCurrentText(u"FENGYUN 1C"_s);
  const auto tick = [&] {
    program.Fire("TimerFlight");
    return program.Form->Status();
  };
  const auto picture = [&] { return program.Find("ImageFlight")->grab().toImage(); };
  // What the dialog shows when it opens; it is left with these pickers and this button or key.
  const auto setTime = [&](const QString& start, const std::function<void()>& leave) {
    QString shown;
    QTimer::singleShot(0, program.Form.get(), [&] {
      auto* date = program.Find<QDateEdit>("FlightDate");
      auto* time = program.Find<QTimeEdit>("FlightTime");
      shown = date->text() + u' ' + time->text();
      date->setDate(QDate::fromString(start.left(10), Qt::ISODate));
      time->setTime(QTime::fromString(start.mid(11), u"HH:mm"_s));
      leave();
    });
    program.Click("ButtonSetFlightTime");
    return shown;
  };
  auto* dialog = program.Find<QDialog>("FormSetFlightTime");
  const auto press = [&](const char* button) {
    return [=] { QTest::mouseClick(dialog->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton); };
  };

  tick();
  EXPECT_EQ(setTime(u"2022-02-24 11:11"_s, [&] { QTest::keyClick(dialog, Qt::Key_Enter); }),
            u"2022 Feb 23 06:00"_s);
  program.Now.Days += 0.5 / 86400;
  EXPECT_EQ(tick(), u" Line: 0022 2022 Feb 23  06:00:00.50"_s) << "Enter is for Cancel";
  setTime(u"2022-02-22 10:20"_s, press("ButtonOK"));
  EXPECT_EQ(tick(), u" Line: 0021 2022 Feb 22  10:20:00.00"_s) << "a new flight";

  // What of the overlay is seen follows the menu from the next line on.
  const auto unlike = [&](int row, int other) {
    const QImage image = picture();
    int pixels = 0;
    for (int x = 86; x < 995; ++x) {
      pixels += image.pixel(x, image.height() - row) != image.pixel(x, image.height() - other);
    }
    return pixels;
  };
  program.Find<QAction>("MenuShowOverlay")->trigger();
  program.Now.Days += 0.5 / 86400;
  tick();
  EXPECT_LT(unlike(20, 21), 400) << "land, as it comes";
  EXPECT_GT(unlike(21, 22), 850) << "the overlay's land";

  program.Now.Days += 7 / 1440.0;
  const QImage before = picture();
  EXPECT_EQ(setTime(u"2222-02-22 10:20"_s, press("ButtonOK")), u"2022 Feb 22 10:20"_s)
      << "the start that was chosen last";
  EXPECT_EQ(program.Boxes.Take().size(), 1);
  EXPECT_FALSE(timer->isActive()) << "two centuries on it has come down";
  EXPECT_EQ(program.Find<QPushButton>("ButtonRunFlight")->text(), u"Fly"_s);
  EXPECT_EQ(picture(), before);
  program.Close();
}

}  // namespace
}  // namespace pelorin::tests
