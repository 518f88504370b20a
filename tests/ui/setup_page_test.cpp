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

void Select(TListBox* list, const QString& text) {
  const QList<QListWidgetItem*> found = list->findItems(text, Qt::MatchExactly);
  ASSERT_EQ(found.size(), 1) << text.toStdString();
  list->scrollToItem(found.first());
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(found.first()).center());
}

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

TEST(SetupPage, SatellitesMoveByMouseAndKeyboard) {
  ProgramFixture program(u"\"NOAA 19\""_s);
  program.Set(u"PrimarySatellite"_s, u"NOAA 19"_s);
  program.StartOn(session::Page::Setup);
  auto* available = program.Find<TListBox>("ListBoxAvailable");
  auto* active = program.Find<TListBox>("ListBoxActive");
  const app::Settings& settings = program.Form->Shared().Settings;

  Select(available, u"NOAA 15"_s);
  EXPECT_FALSE(Drag(available, available)) << "within a list nothing moves";
  EXPECT_TRUE(Drag(available, active));
  EXPECT_EQ(active->Items(), QStringList({u"NOAA 15"_s, u"NOAA 19"_s}));
  EXPECT_EQ(settings.SatelliteList.Value, u"\"NOAA 15\",\"NOAA 19\""_s);
  EXPECT_EQ(program.Form->Shared().SelectedSatellite()->Name, "NOAA 19") << "the primary one stays chosen";
  for (const char* chooser : {"ComboBoxSatForPic", "ComboBoxSatForMap", "ComboBoxSatForFlight"}) {
    EXPECT_EQ(program.Find<QComboBox>(chooser)->count(), 2) << chooser;
  }

  Select(available, u"NOAA 18"_s);
  QTest::keyClick(available, Qt::Key_Return);
  Select(available, u"METOP-B"_s);
  program.Click("ButtonActivate");
  EXPECT_EQ(active->Items(), QStringList({u"METOP-B"_s, u"NOAA 15"_s, u"NOAA 18"_s, u"NOAA 19"_s}));
  Select(active, u"NOAA 19"_s);
  QTest::mouseDClick(active->viewport(), Qt::LeftButton, {},
                     active->visualItemRect(active->currentItem()).center());
  EXPECT_EQ(active->Items(), QStringList({u"METOP-B"_s, u"NOAA 15"_s, u"NOAA 18"_s}));
  EXPECT_EQ(program.Form->Shared().SelectedSatellite(), nullptr);
  EXPECT_TRUE(Drag(active, available));
  EXPECT_EQ(active->count() + available->count(), 45);
}

TEST(SetupPage, SatellitesWaitForTheirFile) {
  ProgramFixture program(u"\"NOAA 99\",\"NOAA 19\",\"NOAA 99\",GONE"_s);
  program.Set(u"PrimarySatellite"_s, u"NOAA 19"_s);
  const QString file = program.Path(u"bin/weather.2li"_s), away = program.Path(u"elsewhere/weather.2li"_s);
  ASSERT_TRUE(QFile::rename(file, away));
  program.Start();
  auto* active = program.Find<TListBox>("ListBoxActive");
  EXPECT_EQ(active->Items(), QStringList({u"GONE"_s, u"NOAA 19"_s, u"NOAA 99"_s}));
  EXPECT_EQ(program.Find<QComboBox>("ComboBoxSatForMap")->count(), 0) << "nobody computes with them";
  program.Close();
  EXPECT_EQ(program.SavedText(u"SatelliteList"_s), u"GONE,\"NOAA 19\",\"NOAA 99\""_s);

  ASSERT_TRUE(QFile::rename(away, file));
  program.StartOn(session::Page::Setup);
  active = program.Find<TListBox>("ListBoxActive");
  auto* available = program.Find<TListBox>("ListBoxAvailable");
  EXPECT_EQ(active->Items(), QStringList({u"GONE"_s, u"NOAA 19"_s, u"NOAA 99"_s}));
  EXPECT_EQ(program.Find<QComboBox>("ComboBoxSatForMap")->currentText(), u"NOAA 19"_s);
  for (const QString& entry : program.Find<TListBox>("ListBoxPasses")->Items()) {
    EXPECT_TRUE(entry.endsWith(u"NOAA 19"_s)) << entry.toStdString();
  }
  Select(active, u"NOAA 99"_s);
  EXPECT_FALSE(Drag(active, available)) << "it would not arrive";
  Select(active, u"NOAA 99"_s);
  QTest::keyClick(active, Qt::Key_Delete);
  EXPECT_EQ(active->Items(), QStringList({u"GONE"_s, u"NOAA 19"_s}));
  EXPECT_EQ(available->count(), 44);
  program.Close();
  EXPECT_EQ(program.SavedText(u"SatelliteList"_s), u"GONE,\"NOAA 19\""_s);
  EXPECT_EQ(program.SavedText(u"PrimarySatellite"_s), u"NOAA 19"_s);
}

TEST(SetupPage, StationAndFoldersAreKept) {
  ProgramFixture program(u"\"NOAA 19\""_s);
  program.StartOn(session::Page::Setup);
  // What is typed is understood when a box is left.
  const struct {
    const char* Box;
    QString Typed, Shown;
  } rows[] = {{"EditLatitude", u"abc"_s, u"55.905"_s},
              {"EditLongitude", u"-24.75"_s, u"-24.75"_s},
              {"EditMinPassElev", u"12"_s, u"10"_s},
              {"EditHeight", u"1e999"_s, u"150"_s}};
  for (const auto& row : rows) {
    auto* box = program.Find<QLineEdit>(row.Box);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, row.Typed);
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_EQ(box->text(), row.Shown);
  }
  const app::Station& station = program.Form->Shared().Station;
  EXPECT_NEAR(orbit::Degrees(station.Place.Longitude), 335.25, 1e-9);
  EXPECT_EQ(station.MinElevationDeg, 10);
  program.Click("ButtonBrowseResultsPath");
  EXPECT_EQ(program.Text("EditResultsPath"), program.Path(u"bin/"_s)) << "cancelled";
  program.Boxes.ChosenFolder = program.Path(u"elsewhere"_s);
  for (const char* button : {"ButtonBrowseResultsPath", "ButtonBrowseSatDataPath", "ButtonAddPath"}) {
    program.Click(button);
  }
  Select(program.Find<TListBox>("ListBoxImagePath"), program.Path(u"pictures"_s));
  program.Click("ButtonRemovePath");

  // A box's own menu is no reason to read what is half typed; nor is the window's end.
  auto* latitude = program.Find<QLineEdit>("EditLatitude");
  latitude->setFocus();
  latitude->setText(u"-"_s);
  QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
  QCoreApplication::sendEvent(latitude, &menu);
  EXPECT_EQ(latitude->text(), u"-"_s);
  program.Close();
  EXPECT_EQ(program.SavedText(u"ObserverLatitude"_s), u"-"_s) << "as typed";
  EXPECT_EQ(program.SavedText(u"ObserverLongitude"_s), u"-24.75"_s);
  EXPECT_EQ(program.SavedText(u"ResultsPath"_s), program.Path(u"elsewhere/"_s));
  EXPECT_EQ(program.SavedText(u"TwoLineDataPath"_s), program.Path(u"elsewhere/"_s));
  EXPECT_EQ(program.SavedText(u"ImagePathList"_s), program.Path(u"elsewhere"_s)) << "as it was chosen";
}

}  // namespace
}  // namespace pelorin::tests
