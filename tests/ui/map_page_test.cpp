#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QActionGroup>
#include <QDateTimeEdit>
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

class MapPage : public testing::Test, protected ProgramFixture {
 protected:
  MapPage() : ProgramFixture(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s) {}

  QDateTimeEdit* Date() const { return Find<QDateTimeEdit>("DateTimePickerMapDate"); }
  QDateTimeEdit* Time() const { return Find<QDateTimeEdit>("DateTimePickerMapTime"); }
  QTimer* Step() const { return Find<QTimer>("TimerStep"); }
  desktop::TPaintBoxSats* Sats() const { return Find<desktop::TPaintBoxSats>("PaintBoxSats"); }
  /// Pickers and timeframe.
  std::string State() const {
    QString state = Date()->text() + u' ' + Time()->text();
    for (const char* item : {"RadioGroupTimeframe0", "RadioGroupTimeframe1", "RadioGroupTimeframe2"}) {
      if (Find<QAbstractButton>(item)->isChecked()) state += u' ' + Text(item);
    }
    return state.toStdString();
  }
  const map::SatelliteDrawing* Drawing(const std::string& name) const {
    for (const auto& drawing : Sats()->Plot().Satellites) {
      if (drawing.Satellite->Name == name) return &drawing;
    }
    return nullptr;
  }
};

TEST_F(MapPage, TimeComesFromClockPickersOrFile) {
  Set(u"UpdateInterval"_s, 7);
  TimeZone = app::TimeZone(QTimeZone("Europe/Berlin"));
  Start();
  Now = orbit::MakeDateTime(2022, 12, 31, 23, 59, 40);
  Fire("TimerStep");
  EXPECT_EQ(State(), "2022 Dec 31 23:59:40 Real-time");
  EXPECT_EQ(Time()->toolTip(), u"2023 January 01  00:59:40  CET"_s);
  EXPECT_EQ(Date()->toolTip(), Time()->toolTip());
  EXPECT_EQ(Step()->interval(), 7000);
  EXPECT_EQ(Find<QAction>("MenuInterval5")->actionGroup()->checkedAction(), nullptr);
  Find<QAction>("MenuInterval60")->trigger();
  EXPECT_EQ(Step()->interval(), 60000);
  QTest::keyClick(Sats(), Qt::Key_5);
  EXPECT_EQ(State(), "2022 Dec 31 23:59:40 Real-time") << "only a picker takes digits for a time";
  EXPECT_TRUE(Step()->isActive());

  const auto press = [this](QDateTimeEdit* picker, QDateTimeEdit::Section section, Qt::Key key) {
    picker->setSelectedSection(section);
    QTest::keyClick(picker, key);
    return State();
  };
  EXPECT_EQ(press(Time(), QDateTimeEdit::MinuteSection, Qt::Key_Up), "2023 Jan 01 00:00:00 Manual");
  EXPECT_FALSE(Step()->isActive());
  EXPECT_EQ(press(Time(), QDateTimeEdit::MinuteSection, Qt::Key_Down), "2022 Dec 31 23:59:00 Manual");
  EXPECT_EQ(press(Time(), QDateTimeEdit::HourSection, Qt::Key_Up), "2022 Dec 31 00:59:00 Manual");
  EXPECT_EQ(press(Date(), QDateTimeEdit::YearSection, Qt::Key_Down), "2021 Dec 31 00:59:00 Manual");

  Click("RadioGroupTimeframe0");
  Fire("TimerStep");
  ClickAndType(Time(), 1, u"1459"_s);
  EXPECT_EQ(State(), "2022 Dec 31 14:59:00 Manual") << "typed over a running clock";
  ClickAndType(Time(), 4, u"00"_s);
  EXPECT_EQ(State(), "2022 Dec 31 14:00:00 Manual") << "no step";
  // Of 14:59 and 15:00 neither is a step of the other when a pass is chosen.
  Form->SetMapTime(orbit::MakeDateTime(2022, 2, 23, 14, 59, 30));
  Form->SetMapTime(orbit::MakeDateTime(2022, 2, 23, 14, 0));
  EXPECT_EQ(State(), "2022 Feb 23 14:00:00 Manual");

  const struct {
    std::optional<QString> Chosen;
    const char* State;
  } files[] = {
      {std::nullopt, "2022 Feb 23 14:00:00 From file"},
      {GivePicture(u"moon.jpg"_s), "2022 Feb 23 14:00:00 From file"},
      {GivePicture(u"12311759.jpg"_s, Qt::gray, QDate(2001, 11, 15)), "2001 Dec 31 17:59:00 From file"}};
  for (const auto& file : files) {
    Boxes.ChosenFile = file.Chosen;
    Click("RadioGroupTimeframe1");
    EXPECT_EQ(State(), file.State);
  }
  EXPECT_TRUE(Boxes.Take().value(0).startsWith(u"Error: The name of moon.jpg"_s));
  Click("ButtonMapToPicture");
  EXPECT_EQ(Form->CurrentPage(), Page::GroundPath);
  EXPECT_EQ(Form->Shared().Map.Mode, Timeframe::Manual);
  Form->ShowPage(Page::WorldMap);
  EXPECT_EQ(State(), "2001 Dec 31 17:59:00 From file");
  EXPECT_EQ(Boxes.Asked.size(), 3) << "nobody is asked again";

  Click("RadioGroupTimeframe0");
  QTest::mouseClick(Date()->findChild<QLineEdit*>(), Qt::LeftButton);
  EXPECT_FALSE(Step()->isActive()) << "the date stands still under the user's hand";
  Find("ComboBoxSatForMap")->setFocus();
  EXPECT_TRUE(Step()->isActive());
}

TEST_F(MapPage, SatellitesAreDrawnChosenAndLeftOut) {
  Set(u"PrimarySatellite"_s, u"NOAA 18"_s);
  Start();
  Fire("TimerStep");
  const auto colourOfMark = [this](const std::string& name) {
    const QPoint corner = Drawing(name)->Mark + Sats()->pos() + QPoint(2, 2);
    return Sats()->parentWidget()->grab().toImage().pixel(corner);
  };
  EXPECT_EQ(colourOfMark("NOAA 18"), qRgb(0, 0, 255));
  EXPECT_EQ(colourOfMark("NOAA 15"), qRgb(0, 0, 0));
  const QString status = Form->Status();
  EXPECT_TRUE(status.startsWith(u"Lat: "_s)) << status.toStdString();

  QTest::mouseClick(Sats(), Qt::RightButton, {}, Drawing("NOAA 15")->Mark + QPoint(2, 1));
  EXPECT_EQ(Text("ComboBoxSatForMap"), u"NOAA 15"_s);
  session::Session& session = Form->Shared();
  EXPECT_EQ(session.Settings.PrimarySatellite.Value, u"NOAA 15"_s);
  EXPECT_EQ(colourOfMark("NOAA 15"), qRgb(0, 0, 255));
  EXPECT_NE(Form->Status(), status);
  QTest::keyClick(Find("ComboBoxSatForMap"), Qt::Key_End);
  EXPECT_EQ(session.SelectedSatellite()->Name, "NOAA 19");
  EXPECT_FALSE(Drawing("NOAA 19")->Footprint.empty());
  Find<QAction>("MenuFootprint0")->trigger();
  EXPECT_TRUE(Drawing("NOAA 19")->Footprint.empty());

  // The program never changes a loaded set; this one becomes one of those that come down while it runs.
  auto* spoilt = const_cast<orbit::TSatellite*>(session.Active().back().Satellite);
  spoilt->MeanMotion = std::numeric_limits<double>::quiet_NaN();
  spoilt->Propagator = {};
  session.RefreshActiveSatellites();
  EXPECT_EQ(Drawing("NOAA 19"), nullptr);
  EXPECT_EQ(Sats()->Plot().Satellites.size(), 2U);
  EXPECT_EQ(Sats()->toolTip(), u"Not drawable: NOAA 19"_s);
  EXPECT_EQ(Form->Status(), Sats()->toolTip());

  Find("PanelWorldMap")->resize(0, 0);
  Fire("TimerStep");
  for (const char* name : {"NOAA 15", "NOAA 18", "NOAA 19"}) session.Deactivate(QLatin1StringView(name));
  EXPECT_TRUE(Sats()->Plot().Satellites.empty());
  EXPECT_EQ(Sats()->toolTip(), QString());
  Form->resize(900, 600);
  Form->grab();
  Close();
  EXPECT_EQ(SavedText(u"PrimarySatellite"_s), QString());
}

}  // namespace
}  // namespace pelorin::tests
