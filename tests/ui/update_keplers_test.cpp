#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
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

/// Calls `step` every few milliseconds while the modal dialog is open, until it answers true.
void WhileOpen(std::function<bool(QDialog&)> step) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, step = std::move(step)] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !step(*dialog)) return;
    timer->stop();
    timer->deleteLater();
  });
  timer->start(5);
}

class UpdateKeplers : public testing::Test {
 protected:
  UpdateKeplers() {
    qputenv("PELORIN_ELEMENTS_URL", server.Base().chopped(1).toLatin1());
    program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
    files::ReplaceFile(program.Path(u"bin/More.TLE"_s), kMore);
    old = Elements();
    fresh = old;
    fresh.replace("22053.", "22054.");
  }
  ~UpdateKeplers() override { qunsetenv("PELORIN_ELEMENTS_URL"); }

  QByteArray Elements() const { return files::ReadFile(program.Path(u"bin/weather.2li"_s)); }
  /// A control of the dialog; other dialogs have some of the same name.
  template <class Control>
  Control* Find(const char* name) const {
    return program.Find<QDialog>("FormUpdateKeplers")->findChild<Control*>(QString::fromLatin1(name));
  }
  QString Progress() const { return Find<QLabel>("LabelProgress")->text(); }
  QString Ticks() const {
    const auto* list = Find<QTreeWidget>("CheckListBoxFiles");
    QString ticks;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
      const QTreeWidgetItem* item = list->topLevelItem(row);
      ticks += (item->checkState(0) == Qt::Checked ? u"[x] "_s : u"[ ] "_s) + item->text(0) + u": "_s +
               item->text(1) + u'\n';
    }
    return ticks;
  }
  /// Opens the dialog from the menu, presses "Update", and Escape if it is open after that.
  void Update(bool closesItself) {
    bool isUpdated = false;
    WhileOpen([&](QDialog& dialog) {
      EXPECT_EQ(dialog.objectName(), u"FormUpdateKeplers"_s);
      EXPECT_EQ(Progress(), QString());
      QTest::mouseClick(Find<QPushButton>("ButtonUpdate"), Qt::LeftButton);
      isUpdated = true;
      EXPECT_EQ(dialog.isVisible(), !closesItself);
      if (!closesItself) QTest::keyClick(&dialog, Qt::Key_Escape);
      return true;
    });
    program.Find<QAction>("OptionsUpdateKeplers")->trigger();
    EXPECT_TRUE(isUpdated);
  }

  /// Another satellite, in a file of its own.
  const QByteArray kMore =
      "TESTER 1\r\n1 90001U 14037A   22053.50000000  .00000017  00000-0  27104-4 0  9995\r\n"
      "2 90001  98.4200  82.1000 0004100 110.0000 250.2000 14.20690000395000\r\n";
  const QString kWeather = u"gp.php?GROUP=weather&FORMAT=csv"_s,
                kMoreQuery = u"gp.php?GROUP=more&FORMAT=csv"_s;
  ElementServer server;
  ProgramFixture program;
  QByteArray old, fresh;
};

TEST_F(UpdateKeplers, FreshFilesAreUsedAtOnce) {
  server.Answers[kWeather] = ElementServer::Reply("200 OK", fresh);
  server.Answers[kMoreQuery] = ElementServer::Reply("403 Forbidden", "not updated since your last download");
  program.Start();
  const session::Session& session = program.Form->Shared();
  const auto epoch = [&session] {
    const elements::TSatelliteList& list = session.Satellites();
    return list.Satellite(list.IndexOf("NOAA 6")).EpochRaw;
  };
  EXPECT_EQ(static_cast<int>(epoch()), 22053);
  program.Form->Shared().ChooseSatellite(0);
  Update(true);
  EXPECT_EQ(Find<QLineEdit>("EditBaseUrl")->text(), server.Base());
  EXPECT_EQ(program.Boxes.Take(), QStringList(u"Message: The new Keplers are in use now."_s));
  EXPECT_EQ(Ticks(), u"[x] More.TLE: already current\n[x] weather.2li: updated\n"_s);
  EXPECT_EQ(Progress(), u"1 updated, 1 already current."_s);
  EXPECT_EQ(Elements(), fresh.replace("\n", "\r\n"));
  EXPECT_TRUE(files::ReadFile(program.Path(u"user/archive/2022-02.2li"_s)).contains("22053.60136707"));
  EXPECT_EQ(static_cast<int>(epoch()), 22054);
  EXPECT_EQ(session.SelectedSatellite()->Name, "NOAA 19") << "what was chosen stays so";
  EXPECT_TRUE(program.Find<QTimer>("TimerPassDateChanging")->isActive()) << "other elements, other passes";

  // Once more, and nothing is asked for behind the user's back.
  Update(false);
  ASSERT_EQ(program.Boxes.Said.size(), 1);
  const QString question = program.Boxes.Take().first();
  EXPECT_TRUE(question.startsWith(u"No? Less than two hours ago"_s)) << question.toStdString();
  EXPECT_TRUE(question.contains(u"\r   More.TLE\r   weather.2li\r"_s));
  EXPECT_EQ(server.Asked, QStringList({kMoreQuery, kWeather}));
  EXPECT_EQ(Progress(), u"2 not asked for again."_s);
  program.Boxes.AnswerConfirm = true;
  Update(true);
  EXPECT_EQ(server.Asked.size(), 4);
  program.Boxes.Take();
  program.Close();
}

TEST_F(UpdateKeplers, WhatWouldGoIsAskedForAndTheAddressIsTheUsers) {
  QFile::remove(program.Path(u"bin/More.TLE"_s));
  server.Answers[kWeather] = ElementServer::Reply("200 OK", fresh.left(fresh.size() / 2 / 165 * 165));
  program.Start();
  Update(false);
  const QStringList said = program.Boxes.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_TRUE(said[0].startsWith(u"No? The data received is outside the limits"_s)) << said[0].toStdString();
  EXPECT_EQ(Elements(), old);
  EXPECT_EQ(Progress(), u"1 not updated."_s);

  auto* address = Find<QLineEdit>("EditBaseUrl");
  auto* publicAddress = Find<QPushButton>("ButtonPublicAddress");
  const app::Settings& settings = program.Form->Shared().Settings;
  WhileOpen([&](QDialog& dialog) {
    EXPECT_TRUE(publicAddress->isEnabled());
    publicAddress->click();
    EXPECT_EQ(address->text(), app::PublicElementAddress());
    EXPECT_FALSE(publicAddress->isEnabled());
    EXPECT_EQ(settings.ElementsAddress.Value, QString());
    address->setFocus();
    address->clear();
    QTest::keyClicks(address, u" mirror.example/keps "_s);
    QTest::keyClick(address, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(address->text(), u"https://mirror.example/keps/"_s);
    EXPECT_TRUE(publicAddress->isEnabled());
    dialog.reject();
    return true;
  });
  program.Find<QAction>("OptionsUpdateKeplers")->trigger();
  EXPECT_EQ(settings.ElementsAddress.Value, u"https://mirror.example/keps/"_s) << "and is remembered";
  program.Close();
}

TEST_F(UpdateKeplers, RefusalEndsTheRunAndCancelLeavesTheFile) {
  server.Answers[kMoreQuery] = ElementServer::Reply("503 Busy", "come back\r\nlater\r\n");
  program.Start();
  Update(false);
  EXPECT_EQ(program.Boxes.Take(), QStringList(u"Message: More.TLE has not been updated: "_s + server.Base() +
                                              kMoreQuery + u" answered 503 Busy:\r\rcome back\rlater"_s));
  EXPECT_EQ(server.Asked, QStringList(kMoreQuery));
  EXPECT_EQ(Ticks(), u"[ ] More.TLE: failed\n[ ] weather.2li: \n"_s);
  EXPECT_EQ(Progress(), u"Stopped: 1 failed, 1 not fetched."_s);

  program.Boxes.AnswerConfirm = true;
  server.Answers[kMoreQuery] = ElementServer::Reply("200 OK", kMore);
  server.Answers[kWeather] = {"HTTP/1.1 200 OK\r\n\r\n" + fresh, ElementServer::Then::Wait};
  // The dialog lives while the server dawdles: it says for what it waits, and "Cancel" can be pressed.
  bool isSeen = false;
  WhileOpen([&](QDialog&) {
    if (Progress() != u"Getting GROUP=weather for weather.2li..."_s) return false;
    isSeen = Find<QProgressBar>("ProgressBar")->isVisible() &&
             Find<QProgressBar>("ProgressBar")->value() == 1 &&
             !Find<QPushButton>("ButtonUpdate")->isEnabled();
    QTest::mouseClick(Find<QPushButton>("ButtonCancel"), Qt::LeftButton);
    return true;
  });
  Update(false);
  EXPECT_TRUE(isSeen);
  EXPECT_EQ(Progress(), u"Cancelled: 1 updated, 1 not fetched."_s);
  EXPECT_EQ(Elements(), old);
  EXPECT_EQ(program.Boxes.Take().size(), 1) << "the question only";
  program.Close();
}

TEST_F(UpdateKeplers, DroppedFilesAreArchivedAndChangedOnesReadAgain) {
  program.Set(u"SatelliteList"_s, u"\"NOAA 15\",\"NOAA 19\",\"TESTER 2\""_s);
  program.Start();
  program.Form->ShowPage(session::Page::WorldMap);
  auto* pictured = program.Find<QComboBox>("ComboBoxSatForPic");
  pictured->setCurrentText(u"NOAA 19"_s);
  session::Session& session = program.Form->Shared();
  session.ChooseSatellite(0);
  const orbit::TDateTime then = orbit::MakeDateTime(2019, 5, 20, 12, 0);
  const auto epochs = [&] {
    program.Form->SetMapTime(then);
    const auto& drawn = program.Find<desktop::TPaintBoxSats>("PaintBoxSats")->Plot().Satellites;
    return std::pair(static_cast<int>(session.SetNear(*session.SelectedSatellite(), then).EpochRaw),
                     static_cast<int>(drawn.front().Satellite->EpochRaw));
  };
  EXPECT_EQ(epochs(), std::pair(22053, 22053));
  const QString dropped = program.Path(u"2019.txt"_s);
  files::ReplaceFile(dropped, QByteArray(old).replace("22053.", "19140."));
  QMimeData dragged;
  dragged.setUrls({QUrl::fromLocalFile(dropped), QUrl::fromLocalFile(program.Path(u"received.png"_s))});
  QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
  QCoreApplication::sendEvent(program.Form.get(), &enter);
  ASSERT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
  QCoreApplication::sendEvent(program.Form.get(), &drop);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !program.Boxes.Said.isEmpty(); }));
  const QStringList said = program.Boxes.Take();
  EXPECT_TRUE(said[0].startsWith(u"Message: 2019.txt: 45 element sets, 45 of them new\r\r"_s))
      << said[0].toStdString();
  EXPECT_EQ(epochs(), std::pair(19140, 19140)) << "maps and the world map of that day";

  program.Form->ShowPage(session::Page::Flight);
  int reloads = 0;
  QObject::connect(&session, &session::Session::SatellitesReloaded, [&reloads] { ++reloads; });
  auto* settled = program.Find<QTimer>("TimerElementsSettled");
  for (const bool isChanged : {true, false}) {
    files::ReplaceFile(program.Path(isChanged ? u"bin/weather.2li"_s : u"bin/unread.doc"_s), fresh);
    ASSERT_TRUE(QTest::qWaitFor([settled] { return settled->isActive(); })) << isChanged;
    program.Fire("TimerElementsSettled");
    settled->stop();
    EXPECT_EQ(reloads, 1) << isChanged;
  }
  EXPECT_EQ(pictured->currentText(), u"NOAA 19"_s) << "what was chosen stays so";
  EXPECT_EQ(program.Text("ButtonRunFlight"), u"Fly"_s) << "and nothing begins by itself";
  EXPECT_EQ(static_cast<int>(session.SelectedSatellite()->EpochRaw), 22054);
  EXPECT_EQ(program.Form->Status(), u"The element files have changed and are in use: 46 satellites"_s);
  program.Close();
}

TEST_F(UpdateKeplers, OldElementsOfActiveSatellitesAreRenewedAsTheUserWishes) {
  const struct {
    const char* Label;
    int Renewal, Days;
    QString LastDay, Line;  ///< the status bar's, as it begins; null if nothing is said
    bool IsBusy;            ///< of the service
    QString Then;           ///< what the line says after "Renew", or in the end
  } rows[] = {
      {"when told", 0, 7, {}, {}, false, {}},
      {"not old enough", 2, 11, {}, {}, false, {}},
      {"once a day", 2, 7, u"2022-03-05"_s, {}, false, {}},
      {"asked for", 1, 9, u"2022-03-04"_s, u"weather.2li: older than 9 days."_s, false,
       u"Elements renewed: 1 updated"_s},
      {"the service is busy", 2, 7, {}, u"Renewing"_s, true, u"Elements not renewed: 1 failed"_s},
      {"by itself", 2, 7, u"2022-03-06"_s, u"Renewing"_s, false, u"Elements renewed: 1 updated"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    QFile::remove(program.Path(u"user/element-requests.txt"_s));
    files::ReplaceFile(program.Path(u"bin/weather.2li"_s), old);
    program.Set(u"ElementRenewal"_s, row.Renewal);
    program.Set(u"RenewalDays"_s, row.Days);
    program.Set(u"LastRenewal"_s, row.LastDay);
    program.Now = orbit::MakeDateTime(2022, 3, 5, 6, 0);
    server.Asked.clear();
    server.Answers[kWeather] = ElementServer::Reply(row.IsBusy ? "503 Busy" : "200 OK", fresh);
    program.Start();
    program.Fire("TimerRenewal");
    auto* line = program.Find<QLabel>("StatusRenewal");
    EXPECT_EQ(line->isVisible(), !row.Line.isNull());
    EXPECT_TRUE(line->text().startsWith(row.Line)) << line->text().toStdString();
    if (row.Renewal == 1) Q_EMIT line->linkActivated(u"renew"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return line->text() == row.Then; })) << line->text().toStdString();
    EXPECT_EQ(server.Asked, row.Line.isNull() ? QStringList() : QStringList(kWeather));
    EXPECT_EQ(line->toolTip().contains(u"answered 503 Busy"_s), row.IsBusy);
    EXPECT_EQ(Elements(), row.Then.contains(u" updated"_s) ? QByteArray(fresh).replace("\n", "\r\n") : old);
    EXPECT_EQ(program.Boxes.Take(), QStringList());
    program.Close();
    EXPECT_EQ(program.SavedText(u"LastRenewal"_s), row.Line.isNull() ? row.LastDay : u"2022-03-05"_s);
  }
}

TEST_F(UpdateKeplers, ASatelliteOfAnotherNameStaysActive) {
  program.Set(u"PrimarySatellite"_s, u"NOAA 19"_s);
  program.Start();
  program.Close();
  EXPECT_EQ(program.SavedText(u"SatelliteNumbers"_s), u"\"33591 NOAA 19\""_s);
  // It is called otherwise now, and another one has its name.
  files::ReplaceFile(program.Path(u"bin/weather.2li"_s), QByteArray(old).replace("NOAA 19 ", "N PRIME "));
  files::ReplaceFile(program.Path(u"bin/More.TLE"_s), QByteArray(kMore).replace("TESTER 1", "NOAA 19"));
  const struct {
    const char* Label;
    QString Saved, Numbers, Now, Told;
  } rows[] = {
      {"told by its number", u"\"NOAA 19\""_s, u"\"33591 NOAA 19\""_s, u"\"N PRIME\""_s, {}},
      {"by its plain name", u"\"N-Prime (NOAA 19)\""_s, {}, u"\"N PRIME\""_s, {}},
      {"not by its name alone", u"\"NOAA 19\""_s, u"\"7 NOAA 19\""_s, u"\"NOAA 19\""_s, u"No elements: 1"_s}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    program.Set(u"SatelliteList"_s, row.Saved);
    program.Set(u"SatelliteNumbers"_s, row.Numbers);
    program.Set(u"PrimarySatellite"_s, QString(row.Saved).remove(u'"'));
    program.Start();
    const orbit::TSatellite* selected = program.Form->Shared().SelectedSatellite();
    EXPECT_EQ(selected == nullptr ? "none" : selected->CatalogueNumber,
              row.Told.isEmpty() ? "33591" : "none");
    EXPECT_TRUE(program.Text("StatusElements").contains(row.Told))
        << program.Text("StatusElements").toStdString();
    program.Close();
    EXPECT_EQ(program.SavedText(u"SatelliteList"_s), row.Now);
    program.Boxes.Take();
  }
}

TEST(Questions, EnterGivesThePreselectedAnswer) {
  session::QtPrompts boxes(u"Pelorin"_s, {});
  for (const session::Answer answer : {session::Answer::Yes, session::Answer::No}) {
    WhileOpen([](QDialog& box) {
      QTest::keyClick(&box, Qt::Key_Return);
      return true;
    });
    EXPECT_EQ(boxes.Confirm(u"Sure?"_s, 0, answer), answer == session::Answer::Yes);
  }
}

}  // namespace
}  // namespace pelorin::tests
