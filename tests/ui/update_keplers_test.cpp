#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "app/element_address.h"
#include "desktop/map/paint_box_sats.h"
#include "files/atomic_file.h"
#include "files/read_file.h"
#include "session/qt_prompts.h"
#include "tests/support/element_server.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;

class UpdateKeplers : public testing::Test, protected ProgramFixture {
 protected:
  UpdateKeplers() : ProgramFixture(u"\"NOAA 19\""_s) {
    qputenv("PELORIN_ELEMENTS_URL", server.Base().chopped(1).toLatin1());
    files::ReplaceFile(Path(u"bin/More.TLE"_s), kMore);
    old = Elements();
    fresh = old;
    fresh.replace("22053.", "22054.");
  }
  ~UpdateKeplers() override { qunsetenv("PELORIN_ELEMENTS_URL"); }

  QByteArray Elements() const { return files::ReadFile(Path(u"bin/weather.2li"_s)); }
  /// A control of the dialog, open or not; other dialogs have some of the same name.
  template <class Control>
  Control* Inside(const char* name) const {
    return Find<QDialog>("FormUpdateKeplers")->findChild<Control*>(QString::fromLatin1(name));
  }
  QString Progress() const { return Inside<QLabel>("LabelProgress")->text(); }
  QString Ticks() const {
    const auto* list = Inside<QTreeWidget>("CheckListBoxFiles");
    QString ticks;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
      const QTreeWidgetItem* item = list->topLevelItem(row);
      ticks += (item->checkState(0) == Qt::Checked ? u"[x] "_s : u"[ ] "_s) + item->text(0) + u": "_s +
               item->text(1) + u'\n';
    }
    return ticks;
  }
  /// Opens the dialog from the menu and presses "Update"; it is closed by hand where it stays open.
  void Update(bool closesItself) {
    InDialog("OptionsUpdateKeplers", [&](QDialog& dialog) {
      EXPECT_EQ(Progress(), QString());
      Click("ButtonUpdate");
      EXPECT_EQ(dialog.isVisible(), !closesItself);
    });
  }
  /// Whether one box was shown, which begins so.
  void ExpectBox(const QString& start) {
    const QStringList said = Boxes.Take();
    EXPECT_TRUE(said.size() == 1 && said[0].startsWith(start)) << said.join(u'|').toStdString();
  }

  /// Another satellite, in a file of its own.
  const QByteArray kMore =
      "TESTER 1\r\n1 90001U 14037A   22053.50000000  .00000017  00000-0  27104-4 0  9995\r\n"
      "2 90001  98.4200  82.1000 0004100 110.0000 250.2000 14.20690000395000\r\n";
  const QString kWeather = u"gp.php?GROUP=weather&FORMAT=csv"_s,
                kMoreQuery = u"gp.php?GROUP=more&FORMAT=csv"_s;
  ElementServer server;
  QByteArray old, fresh;
};

TEST_F(UpdateKeplers, FreshFilesAreUsedAtOnce) {
  server.Answers[kWeather] = ElementServer::Reply("200 OK", fresh);
  server.Answers[kMoreQuery] = ElementServer::Reply("403 Forbidden", "not updated since your last download");
  Start();
  session::Session& session = Form->Shared();
  session.ChooseSatellite(0);
  Update(true);
  ExpectBox(u"Message: The new Keplers are in use now."_s);
  EXPECT_EQ(Ticks(), u"[x] More.TLE: already current\n[x] weather.2li: updated\n"_s);
  EXPECT_EQ(Progress(), u"1 updated, 1 already current."_s);
  EXPECT_TRUE(QFile::exists(Path(u"user/archive/2022-02.2li"_s)));
  EXPECT_EQ(session.SelectedSatellite()->Name, "NOAA 19") << "what was chosen stays so";
  EXPECT_EQ(static_cast<int>(session.SelectedSatellite()->EpochRaw), 22054);
  EXPECT_TRUE(Find<QTimer>("TimerPassDateChanging")->isActive()) << "other elements, other passes";

  // Once more, and nothing is asked for behind the user's back.
  Update(false);
  EXPECT_TRUE(Boxes.Said.value(0).contains(u"\r   More.TLE\r   weather.2li\r"_s));
  ExpectBox(u"No? Less than two hours ago"_s);
  EXPECT_EQ(server.Asked, QStringList({kMoreQuery, kWeather}));
  EXPECT_EQ(Progress(), u"2 not asked for again."_s);
  Boxes.AnswerConfirm = true;
  Update(true);
  EXPECT_EQ(server.Asked.size(), 4);
}

TEST_F(UpdateKeplers, WhatWouldGoIsAskedForAndTheAddressIsTheUsers) {
  QFile::remove(Path(u"bin/More.TLE"_s));
  server.Answers[kWeather] = ElementServer::Reply("200 OK", fresh.left(fresh.size() / 2 / 165 * 165));
  Start();
  Update(false);
  ExpectBox(u"No? The data received is outside the limits"_s);
  EXPECT_EQ(Elements(), old);

  const app::TRegistryString& remembered = Form->Shared().Settings.ElementsAddress;
  InDialog("OptionsUpdateKeplers", [&](QDialog& dialog) {
    auto* address = Find<QLineEdit>("EditBaseUrl");
    EXPECT_EQ(address->text(), server.Base());
    Click("ButtonPublicAddress");
    EXPECT_EQ(address->text(), app::PublicElementAddress());
    EXPECT_FALSE(Find("ButtonPublicAddress")->isEnabled());
    EXPECT_EQ(remembered.Value, QString());
    address->clear();
    QTest::keyClicks(address, u" mirror.example/keps "_s);
    QTest::keyClick(address, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(address->text(), u"https://mirror.example/keps/"_s);
    EXPECT_TRUE(Find("ButtonPublicAddress")->isEnabled());
  });
  EXPECT_EQ(remembered.Value, u"https://mirror.example/keps/"_s);
}

TEST_F(UpdateKeplers, RefusalEndsTheRunAndCancelLeavesTheFile) {
  server.Answers[kMoreQuery] = ElementServer::Reply("503 Busy", "come back\r\nlater\r\n");
  Start();
  Update(false);
  ExpectBox(u"Message: More.TLE has not been updated: "_s);
  EXPECT_EQ(Ticks(), u"[ ] More.TLE: failed\n[ ] weather.2li: \n"_s);
  EXPECT_EQ(Progress(), u"Stopped: 1 failed, 1 not fetched."_s);

  Boxes.AnswerConfirm = true;
  server.Answers[kMoreQuery] = ElementServer::Reply("200 OK", kMore);
  server.Answers[kWeather] = {"HTTP/1.1 200 OK\r\n\r\n" + fresh, ElementServer::Then::Wait};
  // The dialog lives while the server dawdles: it says for what it waits, and "Cancel" can be pressed.
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (Progress() != u"Getting GROUP=weather for weather.2li..."_s) return;
    watch.stop();
    EXPECT_EQ(Find<QProgressBar>("ProgressBar")->value(), 1);
    EXPECT_FALSE(Find("ButtonUpdate")->isEnabled());
    Click("ButtonCancel");
  });
  watch.start(5);
  Update(false);
  EXPECT_EQ(Progress(), u"Cancelled: 1 updated, 1 not fetched."_s);
  EXPECT_EQ(Elements(), old);
  ExpectBox(u"No? Less than two hours ago"_s);
}

TEST_F(UpdateKeplers, DroppedFilesAreArchivedAndChangedOnesReadAgain) {
  Set(u"SatelliteList"_s, u"\"NOAA 15\",\"NOAA 19\",\"TESTER 2\""_s);
  Start();
  Form->ShowPage(session::Page::WorldMap);
  auto* pictured = Find<QComboBox>("ComboBoxSatForPic");
  pictured->setCurrentText(u"NOAA 19"_s);
  session::Session& session = Form->Shared();
  session.ChooseSatellite(0);
  const orbit::TDateTime then = orbit::MakeDateTime(2019, 5, 20, 12, 0);
  const auto epochs = [&] {
    Form->SetMapTime(then);
    const auto& drawn = Find<desktop::TPaintBoxSats>("PaintBoxSats")->Plot().Satellites;
    return std::pair(static_cast<int>(session.SetNear(*session.SelectedSatellite(), then).EpochRaw),
                     static_cast<int>(drawn.front().Satellite->EpochRaw));
  };
  EXPECT_EQ(epochs(), std::pair(22053, 22053));
  files::ReplaceFile(Path(u"2019.txt"_s), QByteArray(old).replace("22053.", "19140."));
  QMimeData dragged;
  dragged.setUrls({QUrl::fromLocalFile(Path(u"2019.txt"_s)), QUrl::fromLocalFile(Path(u"received.png"_s))});
  QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
  QCoreApplication::sendEvent(Form.get(), &enter);
  ASSERT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
  QCoreApplication::sendEvent(Form.get(), &drop);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !Boxes.Said.isEmpty(); }));
  ExpectBox(u"Message: 2019.txt: 45 element sets, 45 of them new\r\r"_s);
  EXPECT_EQ(epochs(), std::pair(19140, 19140)) << "maps and the world map of that day";

  Form->ShowPage(session::Page::Flight);
  int reloads = 0;
  QObject::connect(&session, &session::Session::SatellitesReloaded, [&reloads] { ++reloads; });
  auto* settled = Find<QTimer>("TimerElementsSettled");
  for (const bool isChanged : {true, false}) {
    files::ReplaceFile(Path(isChanged ? u"bin/weather.2li"_s : u"bin/unread.doc"_s), fresh);
    ASSERT_TRUE(QTest::qWaitFor([settled] { return settled->isActive(); })) << isChanged;
    Fire("TimerElementsSettled");
    settled->stop();
    EXPECT_EQ(reloads, 1) << isChanged;
  }
  EXPECT_EQ(pictured->currentText(), u"NOAA 19"_s) << "what was chosen stays so";
  EXPECT_EQ(Text("ButtonRunFlight"), u"Fly"_s) << "and nothing begins by itself";
  EXPECT_EQ(static_cast<int>(session.SelectedSatellite()->EpochRaw), 22054);
  EXPECT_TRUE(Form->Status().startsWith(u"The element files have changed"_s));
}

TEST_F(UpdateKeplers, OldElementsOfActiveSatellitesAreRenewedAsTheUserWishes) {
  const struct {
    const char* Label;
    int Renewal, Days;
    QString LastDay, Line;  ///< the status bar's, as it begins; null if nothing is said
    QString Then;           ///< what the line says after "Renew", or in the end
  } rows[] = {
      {"when told", 0, 7, {}, {}, {}},
      {"not old enough", 2, 11, {}, {}, {}},
      {"once a day", 2, 7, u"2022-03-05"_s, {}, {}},
      {"asked for", 1, 9, u"2022-03-04"_s, u"weather.2li: older than 9 days."_s,
       u"Elements renewed: 1 updated"_s},
      {"the service is busy", 2, 7, {}, u"Renewing"_s, u"Elements not renewed: 1 failed"_s},
      {"by itself", 2, 7, u"2022-03-06"_s, u"Renewing"_s, u"Elements renewed: 1 updated"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const bool isBusy = row.Then.contains(u"failed"_s);
    QFile::remove(Path(u"user/element-requests.txt"_s));
    files::ReplaceFile(Path(u"bin/weather.2li"_s), old);
    Set(u"ElementRenewal"_s, row.Renewal);
    Set(u"RenewalDays"_s, row.Days);
    Set(u"LastRenewal"_s, row.LastDay);
    Now = orbit::MakeDateTime(2022, 3, 5, 6, 0);
    server.Asked.clear();
    server.Answers[kWeather] = ElementServer::Reply(isBusy ? "503 Busy" : "200 OK", fresh);
    Start();
    Fire("TimerRenewal");
    auto* line = Find<QLabel>("StatusRenewal");
    EXPECT_EQ(line->isVisible(), !row.Line.isNull());
    EXPECT_TRUE(line->text().startsWith(row.Line)) << line->text().toStdString();
    if (row.Renewal == 1) Q_EMIT line->linkActivated(u"renew"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return line->text() == row.Then; })) << line->text().toStdString();
    EXPECT_EQ(server.Asked, row.Line.isNull() ? QStringList() : QStringList(kWeather));
    EXPECT_EQ(line->toolTip().contains(u"answered 503 Busy"_s), isBusy);
    EXPECT_EQ(Elements() != old, row.Then.contains(u" updated"_s));
    EXPECT_EQ(Boxes.Take(), QStringList());
    Close();
    EXPECT_EQ(SavedText(u"LastRenewal"_s), row.Line.isNull() ? row.LastDay : u"2022-03-05"_s);
  }

  // Asked, and done by somebody else meanwhile.
  Set(u"ElementRenewal"_s, 1);
  Set(u"LastRenewal"_s, QString());
  files::ReplaceFile(Path(u"bin/weather.2li"_s), old);
  Start();
  Fire("TimerRenewal");
  EXPECT_TRUE(Find("StatusRenewal")->isVisible());
  files::ReplaceFile(Path(u"bin/weather.2li"_s), QByteArray(old).replace("22053.", "22064."));
  Form->Shared().ReloadSatellites();
  EXPECT_FALSE(Find("StatusRenewal")->isVisible());
}

TEST_F(UpdateKeplers, ASatelliteOfAnotherNameStaysActive) {
  Set(u"PrimarySatellite"_s, u"NOAA 19"_s);
  Start();
  Close();
  EXPECT_EQ(SavedText(u"SatelliteNumbers"_s), u"\"33591 NOAA 19\""_s);
  // It is called otherwise now, and another one has its name.
  files::ReplaceFile(Path(u"bin/weather.2li"_s), QByteArray(old).replace("NOAA 19 ", "N PRIME "));
  files::ReplaceFile(Path(u"bin/More.TLE"_s), QByteArray(kMore).replace("TESTER 1", "NOAA 19"));
  const struct {
    const char* Label;
    QString Saved, Numbers, Now, Told;
  } rows[] = {
      {"told by its number", u"\"NOAA 19\""_s, u"\"33591 NOAA 19\""_s, u"\"N PRIME\""_s, {}},
      {"by its plain name", u"\"N-Prime (NOAA 19)\""_s, {}, u"\"N PRIME\""_s, {}},
      {"not by its name alone", u"\"NOAA 19\""_s, u"\"7 NOAA 19\""_s, u"\"NOAA 19\""_s, u"No elements: 1"_s}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    Set(u"SatelliteList"_s, row.Saved);
    Set(u"SatelliteNumbers"_s, row.Numbers);
    Set(u"PrimarySatellite"_s, QString(row.Saved).remove(u'"'));
    Start();
    const orbit::TSatellite* selected = Form->Shared().SelectedSatellite();
    EXPECT_EQ(selected == nullptr ? "none" : selected->CatalogueNumber,
              row.Told.isEmpty() ? "33591" : "none");
    EXPECT_TRUE(Text("StatusElements").contains(row.Told));
    Close();
    EXPECT_EQ(SavedText(u"SatelliteList"_s), row.Now);
  }
}

TEST(Questions, EnterGivesThePreselectedAnswer) {
  session::QtPrompts boxes(u"Pelorin"_s, {});
  for (const session::Answer answer : {session::Answer::Yes, session::Answer::No}) {
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    EXPECT_EQ(boxes.Confirm(u"Sure?"_s, 0, answer), answer == session::Answer::Yes);
  }
}

}  // namespace
}  // namespace pelorin::tests
