#include <gtest/gtest.h>

#include <QComboBox>
#include <QDrag>
#include <QDropEvent>
#include <QFile>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTabWidget>
#include <QTest>

#include "orbit/scalar_math.h"
#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::TListBox;

class SetupPage : public testing::Test, protected ProgramFixture {
 protected:
  SetupPage() : ProgramFixture(u"\"NOAA 19\""_s) { Set(u"PrimarySatellite"_s, u"NOAA 19"_s); }

  TListBox* Active() const { return Find<TListBox>("ListBoxActive"); }
  TListBox* Available() const { return Find<TListBox>("ListBoxAvailable"); }
  static void Select(TListBox* list, const QString& text) {
    const QList<QListWidgetItem*> found = list->findItems(text, Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << text.toStdString();
    list->scrollToItem(found.first());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(found.first()).center());
  }
};

/// Pulls the selected entry with the mouse and drops it on the target; whether that took it. This platform
/// gives every drag up at once, so that the drop is ours.
bool Drag(const TListBox* from, const TListBox* to) {
  const QPoint start = from->visualItemRect(from->currentItem()).center();
  QTest::mousePress(from->viewport(), Qt::LeftButton, {}, start);
  QTest::mouseMove(from->viewport(), start + QPoint(8, 8));
  QTest::mouseMove(from->viewport(), start + QPoint(30, 30));
  const std::unique_ptr<QDrag> drag(from->findChild<QDrag*>());
  if (drag == nullptr) return false;
  const QPoint middle = to->viewport()->rect().center();
  QDragEnterEvent enter(middle, Qt::MoveAction, drag->mimeData(), Qt::LeftButton, Qt::NoModifier);
  QDragMoveEvent move(middle, Qt::MoveAction, drag->mimeData(), Qt::LeftButton, Qt::NoModifier);
  QDropEvent drop(middle, Qt::MoveAction, drag->mimeData(), Qt::LeftButton, Qt::NoModifier);
  for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &drop}) {
    QCoreApplication::sendEvent(to->viewport(), event);
    if (!event->isAccepted()) return false;
  }
  return true;
}

TEST_F(SetupPage, SatellitesMoveByMouseAndKeyboard) {
  StartOn(session::Page::Setup);
  const session::Session& session = Form->Shared();
  Select(Available(), u"NOAA 15"_s);
  EXPECT_FALSE(Drag(Available(), Available())) << "within a list nothing moves";
  EXPECT_TRUE(Drag(Available(), Active()));
  EXPECT_EQ(Active()->Items(), QStringList({u"NOAA 15"_s, u"NOAA 19"_s}));
  EXPECT_EQ(session.Settings.SatelliteList.Value, u"\"NOAA 15\",\"NOAA 19\""_s);
  EXPECT_EQ(session.SelectedSatellite()->Name, "NOAA 19") << "the primary one stays chosen";
  for (const char* chooser : {"ComboBoxSatForPic", "ComboBoxSatForMap", "ComboBoxSatForFlight"}) {
    EXPECT_EQ(Find<QComboBox>(chooser)->count(), 2) << chooser;
  }

  Select(Available(), u"NOAA 18"_s);
  QTest::keyClick(Available(), Qt::Key_Return);
  Select(Available(), u"METOP-B"_s);
  Click("ButtonActivate");
  EXPECT_EQ(Active()->Items(), QStringList({u"METOP-B"_s, u"NOAA 15"_s, u"NOAA 18"_s, u"NOAA 19"_s}));
  Select(Active(), u"NOAA 19"_s);
  const QPoint selected = Active()->visualItemRect(Active()->currentItem()).center();
  QTest::mouseDClick(Active()->viewport(), Qt::LeftButton, {}, selected);
  EXPECT_EQ(Active()->Items(), QStringList({u"METOP-B"_s, u"NOAA 15"_s, u"NOAA 18"_s}));
  EXPECT_EQ(session.SelectedSatellite(), nullptr);
  EXPECT_TRUE(Drag(Active(), Available()));
  EXPECT_EQ(Active()->count() + Available()->count(), 45);
}

TEST_F(SetupPage, SatellitesWaitForTheirFile) {
  Set(u"SatelliteList"_s, u"\"NOAA 99\",\"NOAA 19\",\"NOAA 99\",GONE"_s);
  const QStringList known{u"GONE"_s, u"NOAA 19"_s, u"NOAA 99"_s};
  const QString file = Path(u"bin/weather.2li"_s), away = Path(u"elsewhere/weather.2li"_s);
  ASSERT_TRUE(QFile::rename(file, away));
  Start();
  EXPECT_EQ(Active()->Items(), known);
  EXPECT_EQ(Find<QComboBox>("ComboBoxSatForMap")->count(), 0) << "nobody computes with them";
  Close();
  EXPECT_EQ(SavedText(u"SatelliteList"_s), u"GONE,\"NOAA 19\",\"NOAA 99\""_s);

  ASSERT_TRUE(QFile::rename(away, file));
  StartOn(session::Page::Setup);
  EXPECT_EQ(Active()->Items(), known);
  EXPECT_EQ(Text("ComboBoxSatForMap"), u"NOAA 19"_s);
  const QStringList passes = Find<TListBox>("ListBoxPasses")->Items();
  EXPECT_EQ(passes.filter(u" NOAA 19"_s), passes);
  Select(Active(), u"NOAA 99"_s);
  EXPECT_FALSE(Drag(Active(), Available())) << "it would not arrive";
  Select(Active(), u"NOAA 99"_s);
  QTest::keyClick(Active(), Qt::Key_Delete);
  EXPECT_EQ(Available()->count(), 44);
  Close();
  EXPECT_EQ(SavedText(u"SatelliteList"_s), u"GONE,\"NOAA 19\""_s);
  EXPECT_EQ(SavedText(u"PrimarySatellite"_s), u"NOAA 19"_s);
}

TEST_F(SetupPage, StationAndFoldersAreKept) {
  StartOn(session::Page::Setup);
  // What is typed is understood when a box is left.
  const struct {
    const char* Box;
    QString Typed, Shown;
  } rows[] = {{"EditLatitude", u"abc"_s, u"55.905"_s},
              {"EditLongitude", u"-24.75"_s, u"-24.75"_s},
              {"EditMinPassElev", u"12"_s, u"10"_s},
              {"EditHeight", u"1e999"_s, u"150"_s}};
  for (const auto& row : rows) {
    auto* box = Find<QLineEdit>(row.Box);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, row.Typed);
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_EQ(box->text(), row.Shown);
  }
  const app::Station& station = Form->Shared().Station;
  EXPECT_NEAR(orbit::Degrees(station.Place.Longitude), 335.25, 1e-9);
  EXPECT_EQ(station.MinElevationDeg, 10);
  Click("ButtonBrowseResultsPath");
  EXPECT_EQ(Text("EditResultsPath"), Path(u"bin/"_s)) << "cancelled";
  Boxes.ChosenFolder = Path(u"elsewhere"_s);
  for (const char* button : {"ButtonBrowseResultsPath", "ButtonBrowseSatDataPath", "ButtonAddPath"}) {
    Click(button);
  }
  Select(Find<TListBox>("ListBoxImagePath"), Path(u"pictures"_s));
  Click("ButtonRemovePath");

  // A box's own menu is no reason to read what is half typed; nor is the window's end.
  auto* latitude = Find<QLineEdit>("EditLatitude");
  latitude->setFocus();
  latitude->setText(u"-"_s);
  QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
  QCoreApplication::sendEvent(latitude, &menu);
  EXPECT_EQ(latitude->text(), u"-"_s);
  Close();
  EXPECT_EQ(SavedText(u"ObserverLatitude"_s), u"-"_s) << "as typed";
  EXPECT_EQ(SavedText(u"ObserverLongitude"_s), u"-24.75"_s);
  EXPECT_EQ(SavedText(u"ResultsPath"_s), Path(u"elsewhere/"_s));
  EXPECT_EQ(SavedText(u"TwoLineDataPath"_s), Path(u"elsewhere/"_s));
  EXPECT_EQ(SavedText(u"ImagePathList"_s), Path(u"elsewhere"_s)) << "as it was chosen";
}

}  // namespace
}  // namespace pelorin::tests
