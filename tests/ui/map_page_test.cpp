#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "desktop/map/paint_box_sats.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::Timeframe;

/// The map page as its user sees it.
class MapPage {
 public:
  explicit MapPage(ProgramFixture& program)
      : Date(program.Find<QDateTimeEdit>("DateTimePickerMapDate")),
        Time(program.Find<QDateTimeEdit>("DateTimePickerMapTime")),
        Step(program.Find<QTimer>("TimerStep")),
        Chooser(program.Find<QComboBox>("ComboBoxSatForMap")),
        Sats(program.Find<desktop::TPaintBoxSats>("PaintBoxSats")),
        Session(program.Form->Shared()),
        program_(program) {}

  /// Pickers and timeframe.
  std::string State() const {
    QString checked;
    for (const char* item : {"RadioGroupTimeframe0", "RadioGroupTimeframe1", "RadioGroupTimeframe2"}) {
      auto* button = program_.Find<QAbstractButton>(item);
      if (button->isChecked()) checked += button->text();
    }
    const QString text = Date->text() + u' ' + Time->text() + u' ' + checked;
    return text.trimmed().toStdString();
  }
  void Press(QDateTimeEdit* picker, QDateTimeEdit::Section section, int key) const {
    picker->setSelectedSection(section);
    QTest::keyClick(picker, static_cast<Qt::Key>(key));
  }
  const map::SatelliteDrawing* Drawing(const std::string& name) const {
    for (const auto& drawing : Sats->Plot().Satellites) {
      if (drawing.Satellite->Name == name) return &drawing;
    }
    return nullptr;
  }

  QDateTimeEdit *Date, *Time;
  QTimer* Step;
  QComboBox* Chooser;
  desktop::TPaintBoxSats* Sats;
  session::Session& Session;

 private:
  ProgramFixture& program_;
};

TEST(MapPage, TimeComesFromClockPickersOrFile) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s);
  program.Set(u"UpdateInterval"_s, 20);
  program.TimeZone = app::TimeZone(QTimeZone("Europe/Berlin"));
  program.Start();
  const MapPage map(program);
  EXPECT_EQ(map.Step->interval(), 200) << "the first step comes at once";

  program.Now = orbit::MakeDateTime(2022, 12, 31, 23, 59, 40);
  program.Fire("TimerStep");
  EXPECT_EQ(map.State(), "2022 Dec 31 23:59:40 Real-time");
  EXPECT_EQ(map.Time->toolTip(), u"2023 January 01  00:59:40  CET"_s);
  EXPECT_EQ(map.Date->toolTip(), map.Time->toolTip());
  EXPECT_EQ(map.Step->interval(), 20000);
  EXPECT_TRUE(map.Step->isActive());

  map.Press(map.Time, QDateTimeEdit::MinuteSection, Qt::Key_Up);
  EXPECT_EQ(map.State(), "2023 Jan 01 00:00:00 Manual");
  EXPECT_FALSE(map.Step->isActive());
  map.Press(map.Time, QDateTimeEdit::MinuteSection, Qt::Key_Down);
  EXPECT_EQ(map.State(), "2022 Dec 31 23:59:00 Manual");
  map.Press(map.Time, QDateTimeEdit::HourSection, Qt::Key_Up);
  EXPECT_EQ(map.State(), "2022 Dec 31 00:59:00 Manual") << "hours wrap";
  map.Press(map.Date, QDateTimeEdit::YearSection, Qt::Key_Down);
  EXPECT_EQ(map.State(), "2021 Dec 31 00:59:00 Manual");
  EXPECT_EQ(map.Time->toolTip(), u"2021 December 31  01:59:00  CET"_s);

  program.Click("RadioGroupTimeframe0");
  program.Fire("TimerStep");
  ClickAndType(map.Time, 1, u"1459"_s);
  EXPECT_EQ(map.State(), "2022 Dec 31 14:59:00 Manual") << "typed over a running clock";
  ClickAndType(map.Time, 4, u"00"_s);
  EXPECT_EQ(map.State(), "2022 Dec 31 14:00:00 Manual") << "no step";

  // Of 14:59 and 15:00 neither is a step of the other when a pass is chosen.
  program.Form->SetMapTime(orbit::MakeDateTime(2022, 2, 23, 14, 59, 30));
  program.Form->SetMapTime(orbit::MakeDateTime(2022, 2, 23, 14, 0));
  EXPECT_EQ(map.State(), "2022 Feb 23 14:00:00 Manual");

  const QString picture = program.Path(u"pictures/12311759.jpg"_s),
                other = program.Path(u"pictures/moon.jpg"_s);
  for (const QString& path : {picture, other}) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.setFileTime(QDateTime(QDate(2001, 11, 15), QTime(8, 0)), QFile::FileModificationTime);
  }
  program.Click("RadioGroupTimeframe1");
  EXPECT_EQ(map.State(), "2022 Feb 23 14:00:00 From file") << "cancelled";
  program.Boxes.ChosenFile = other;
  program.Click("RadioGroupTimeframe1");
  EXPECT_TRUE(program.Boxes.Take().value(0).startsWith(u"Error: The name of moon.jpg"_s));
  EXPECT_EQ(map.State(), "2022 Feb 23 14:00:00 From file");
  program.Boxes.ChosenFile = picture;
  program.Click("RadioGroupTimeframe1");
  EXPECT_EQ(map.State(), "2001 Dec 31 17:59:00 From file");
  EXPECT_EQ(program.Boxes.Asked.size(), 3);

  program.Click("ButtonMapToPicture");
  EXPECT_EQ(program.Form->CurrentPage(), Page::GroundPath);
  EXPECT_EQ(map.Session.Map.Mode, Timeframe::Manual);
  program.Form->ShowPage(Page::WorldMap);
  EXPECT_EQ(map.State(), "2001 Dec 31 17:59:00 From file");
  EXPECT_EQ(program.Boxes.Asked.size(), 3) << "nobody is asked again";

  program.Click("RadioGroupTimeframe0");
  QTest::mouseClick(map.Date->findChild<QLineEdit*>(), Qt::LeftButton);
  EXPECT_FALSE(map.Step->isActive()) << "the date stands still under the user's hand";
  map.Chooser->setFocus();
  program.Form->ShowPage(Page::Setup);
  program.Form->ShowPage(Page::WorldMap);
  EXPECT_TRUE(map.Step->isActive());
}

TEST(MapPage, SatellitesAreDrawnChosenAndLeftOut) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s);
  program.Set(u"PrimarySatellite"_s, u"NOAA 18"_s);
  program.Start();
  const MapPage map(program);
  program.Fire("TimerStep");
  const auto colourOfMark = [&map](const std::string& name) {
    auto* panel = map.Sats->parentWidget();
    const QPoint corner = map.Drawing(name)->Mark + map.Sats->pos() + QPoint(2, 2);
    return panel->grab().toImage().pixel(corner);
  };
  EXPECT_EQ(colourOfMark("NOAA 18"), qRgb(0, 0, 255));
  EXPECT_EQ(colourOfMark("NOAA 15"), qRgb(0, 0, 0));
  const QString status = program.Form->Status();
  EXPECT_TRUE(status.startsWith(u"Lat: "_s)) << status.toStdString();

  QTest::mouseClick(map.Sats, Qt::RightButton, {}, map.Drawing("NOAA 15")->Mark + QPoint(2, 1));
  EXPECT_EQ(map.Chooser->currentText(), u"NOAA 15"_s);
  EXPECT_EQ(program.Form->Shared().Settings.PrimarySatellite.Value, u"NOAA 15"_s);
  EXPECT_EQ(colourOfMark("NOAA 15"), qRgb(0, 0, 255));
  EXPECT_NE(program.Form->Status(), status);
  QTest::keyClick(map.Chooser, Qt::Key_End);
  EXPECT_EQ(map.Session.SelectedSatellite()->Name, "NOAA 19");
  EXPECT_FALSE(map.Drawing("NOAA 19")->Footprint.empty());
  program.Find<QAction>("MenuFootprint0")->trigger();
  EXPECT_TRUE(map.Drawing("NOAA 19")->Footprint.empty());

  // The program never changes a loaded set; this one becomes one of those that come down while it runs.
  auto* spoilt = const_cast<orbit::TSatellite*>(map.Session.ActiveSatellites().back());
  spoilt->MeanMotion = std::numeric_limits<double>::quiet_NaN();
  spoilt->Propagator = {};
  map.Session.RefreshActiveSatellites();
  EXPECT_EQ(map.Drawing("NOAA 19"), nullptr);
  EXPECT_EQ(map.Sats->Plot().Satellites.size(), 2U);
  EXPECT_EQ(map.Sats->toolTip(), u"Not drawable: NOAA 19"_s);
  EXPECT_EQ(program.Form->Status(), map.Sats->toolTip());

  program.Find("PanelWorldMap")->resize(0, 0);
  program.Fire("TimerStep");
  for (const char* name : {"NOAA 15", "NOAA 18", "NOAA 19"}) map.Session.Deactivate(QLatin1StringView(name));
  EXPECT_EQ(map.Chooser->count(), 0);
  EXPECT_TRUE(map.Sats->Plot().Satellites.empty());
  EXPECT_EQ(map.Sats->toolTip(), QString());
  program.Form->resize(900, 600);
  program.Form->grab();
  program.Close();
  EXPECT_EQ(program.SavedText(u"PrimarySatellite"_s), QString());
}

TEST(MapPage, UpdateRateIsTheMenusOrTheSettings) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  program.Set(u"UpdateInterval"_s, 7);
  program.Start();
  const MapPage page(program);
  for (const QAction* item : program.Find<QAction>("MenuInterval5")->actionGroup()->actions()) {
    EXPECT_FALSE(item->isChecked()) << item->text().toStdString();
  }
  program.Fire("TimerStep");
  EXPECT_EQ(page.Step->interval(), 7000);
  program.Find<QAction>("MenuInterval60")->trigger();
  EXPECT_EQ(page.Step->interval(), 60000);
  EXPECT_TRUE(page.Step->isActive());

  // Only a picker takes digits for a time.
  QTest::keyClick(page.Sats, Qt::Key_5);
  EXPECT_EQ(page.Session.Map.Mode, Timeframe::RealTime);
  program.Close();
  EXPECT_EQ(program.SavedNumber(u"UpdateInterval"_s), 60);
}

}  // namespace
}  // namespace pelorin::tests
