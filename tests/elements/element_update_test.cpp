#include "elements/element_update.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QTimer>
#include <thread>

#include "elements/element_archive.h"
#include "elements/element_download.h"
#include "elements/element_queries.h"
#include "files/atomic_file.h"
#include "files/folder_lock.h"
#include "files/read_file.h"
#include "tests/support/element_messages.h"
#include "tests/support/element_server.h"
#include "tests/support/folder_test.h"

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;
using tests::ElementServer;
using Then = ElementServer::Then;
constexpr auto Sets = tests::DemoSets, Csv = tests::DemoCsv, Json = tests::DemoJson;

const QString kLines = u"Weather.2LI"_s, kCsv = u"Weather.csv"_s;
const QString kWeather = u"gp.php?GROUP=weather&FORMAT=csv"_s, kNoaa = u"gp.php?GROUP=noaa&FORMAT=csv"_s;

/// The same satellites ten days later.
QByteArray Fresh(int first, int count) { return Sets(first, count).replace(" 2205", " 2206"); }

QByteArray WithCrLf(QByteArray text) { return text.replace("\n", "\r\n"); }

class ElementUpdateTest : public tests::FolderTest {
 protected:
  ElementUpdateTest() {
    update.Folder = Path("elements/");
    update.BaseAddress = server.Base();
    update.ArchiveFolder = Path("user/archive");
    update.Now = [this] { return now; };
    Restore({kLines, u"noaa.tle"_s});
  }

  /// These files alone, and no memory of earlier requests.
  void Restore(const QStringList& names) {
    for (const char* place : {"elements", "user"}) {
      QDir(Path(place)).removeRecursively();
      QDir().mkdir(Path(place));
    }
    update.Files = names;
    for (const QString& name : names) files::ReplaceFile(update.Folder + name, Sets(0, 10));
    server.Asked.clear();
    server.Answers[kNoaa] = ElementServer::Reply("200 OK", Fresh(0, 10));
  }
  void Answer(const QByteArray& body) { server.Answers[kWeather] = ElementServer::Reply("200 OK", body); }

  UpdateResult Run() {
    said.clear();
    questions.clear();
    outcomes.clear();
    texts.clear();
    return UpdateElementFiles(
        update, ElementRequests(Path("user/requests.txt")),
        {[this](const QString& address) { return Fetch(address); }, [this](int) { return !cancel; },
         [this](int, const FileResult& result) {
           outcomes.append(result.Outcome);
           texts.append(ResultText(result));
         },
         [this](const QString& text) { said.append(text); },
         [this](const QString& question) {
           questions.append(question);
           return agree;
         }});
  }

  /// A busy computer must not look like a silent server.
  ElementAnswer Fetch(const QString& address) {
    if (isOffline) return {};
    const bool isSilent = server.Answers.value(address.section(u'/', -1)).Next == Then::Wait;
    return (isSilent && givesUpSoon ? hasty : patient).Get(address);
  }

  /// Every file of the folder, by name.
  QMap<QString, QByteArray> Files() const {
    QMap<QString, QByteArray> all;
    for (const QString& name : QDir(update.Folder).entryList(QDir::Files)) {
      all[name] = files::ReadFile(update.Folder + name);
    }
    return all;
  }

  ElementServer server;
  ElementDownload patient{30000}, hasty{200};
  bool givesUpSoon = false, isOffline = false;
  ElementUpdate update;
  orbit::TDateTime now = orbit::MakeDateTime(2022, 3, 1, 6, 0);
  bool cancel = false, agree = false;
  QStringList said, questions, texts;
  QList<FileOutcome> outcomes;
};

/// An answer, and what becomes of the file that it is for.
struct Row {
  const char* Label;
  ElementServer::Answer Answer;
  FileOutcome Outcome = FileOutcome::Updated;
  QString Said = {};  ///< a part of it; "?" for a question instead, null for nothing
  QMap<QString, QByteArray> Files = {{kLines, Sets(0, 10)}};  ///< of the group, afterwards
  bool GoesOn = true;                                         ///< the second file is asked for too
};

const QString kRefusal = u"outside the limits of 80% to 120%"_s, kAsks = u"?"_s;

Row Taken(const char* label, const QByteArray& body, const QMap<QString, QByteArray>& files) {
  return {label, ElementServer::Reply("200 OK", body), FileOutcome::Updated, {}, files};
}

Row Kept(const char* label, const QByteArray& body, const QString& said = kRefusal) {
  return {label, ElementServer::Reply("200 OK", body), FileOutcome::Refused, said};
}

/// Nothing tells where the data end but the end of the connection.
Row CutOff(const char* label, const QByteArray& body) {
  return {label, {"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + body}, FileOutcome::Refused, kRefusal};
}

Row Answered(const char* label, const char* status, const QByteArray& body, FileOutcome outcome,
             const QString& said = {}) {
  Row row{label, ElementServer::Reply(status, body), outcome, said};
  row.GoesOn = outcome != FileOutcome::Failed;
  return row;
}

TEST_F(ElementUpdateTest, AnswersLeaveAPlausibleNewFileOrTheOldOne) {
  using enum FileOutcome;
  const QByteArray good = Fresh(0, 10);
  const QByteArray page =
      "<!DOCTYPE html>\n<html><head><title>no</title></head><script>if (a<b) x();</script><body>"
      "<h1>Sorry</h1>Your <b>address</b>&nbsp;is blocked &amp; logged&#46;</body></html>\n";
  const QString pageText = u"\rSorry\rYour address is blocked & logged."_s;
  QByteArray otherSatellite = good, oneDead = Csv(0, 10);
  otherSatellite.replace(good.indexOf("\n2 ") + 3, 5, "99999");
  oneDead.replace(oneDead.indexOf("14.2"), 4, "90.0");
  ElementServer::Answer broken = ElementServer::Reply("200 OK", good);
  broken.Bytes.chop(good.size() / 2);
  const QMap<QString, QByteArray> asBefore{{kLines, Sets(0, 10)}};
  const Row rows[] = {
      Taken("good with CR", QByteArray(good).replace('\n', '\r'), {{kLines, WithCrLf(good)}}),
      Taken("the same again", Sets(0, 10), {{kLines, WithCrLf(Sets(0, 10))}}),
      Kept("exactly 80% of the bytes", Fresh(0, 8), kAsks),
      Taken("80% and a byte", Fresh(0, 8).replace(23, 1, " \r"), {{kLines, WithCrLf(Fresh(0, 8))}}),
      Taken("119%", Fresh(0, 12).chopped(1), {{kLines, WithCrLf(Fresh(0, 12))}}),
      Kept("exactly 120% of the bytes", Fresh(0, 12), kAsks),
      Kept("70% of the sets in longer lines", Fresh(0, 7).replace("\n", "        \n"), kAsks),
      Kept("other satellites", Fresh(12, 10), kAsks),
      Kept("older", Sets(0, 10).replace(" 2205", " 2204"),
           u"older than those that are there, by 10.0 days"_s),
      Taken("messages of more satellites", Csv(0, 12), {{kCsv, Csv(0, 12)}}),
      Taken("messages of all but two", Csv(0, 8), {{kLines, Sets(0, 10)}, {kCsv, Csv(0, 8)}}),
      Kept("messages of three fewer", Csv(0, 7), kAsks),
      Taken("messages, one of no orbit", oneDead, {{kLines, Sets(0, 10)}, {kCsv, oneDead}}),
      CutOff("messages, cut in a row", Csv(0, 10).chopped(3)),
      CutOff("messages, cut before a column", Csv(0, 10).chopped(4) + "\r\n"),
      Taken("messages in JSON", Json(0, 10), {{u"Weather.json"_s, Json(0, 10)}}),
      CutOff("messages in JSON, cut", Json(0, 10).chopped(1)),
      Kept("nothing in it", {}),
      Kept("begins with a blank", " " + good),
      Kept("lines of two satellites", otherSatellite),
      Kept("a set without a name", Fresh(0, 9) + "\n" + Fresh(9, 1).mid(25)),
      Taken("a name at the end", good + "NOAA 15\n", {{kLines, WithCrLf(good + "NOAA 15\n")}}),
      Kept("right beginnings only", QByteArray("A\n1 b\n2 c\n").repeated(165)),
      CutOff("cut in a line 2", good.chopped(20)),
      Kept("a page", page, pageText),
      {"breaks off", broken, Failed, kRefusal},
      {"no answer", {{}, Then::Wait}, Failed, u"FORMAT=csv: the server took too long"_s, asBefore, false},
      Answered("nothing new", "403 Forbidden", "GP data has not updated since your last", AlreadyCurrent),
      Answered("forbidden", "403 Forbidden", page, Failed,
               server.Base() + kWeather + u" answered 403 Forbidden:\r"_s + pageText),
      Answered("too many", "429 Too Many Requests", {}, Failed, u"Requests:\r\r(no text)"_s),
      Answered("out of order", "503 Busy", "later", Failed, u"503 Busy:\r\rlater"_s),
      Answered("unknown there", "404 Not Found", page, UnknownThere),
      Answered("no longer there", "410 Gone", {}, UnknownThere),
      Answered("unknown there, in words", "200 OK", "Invalid query: \"GROUP=weather\" (not found)",
               UnknownThere),
  };
  givesUpSoon = true;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Label);
    Restore({kLines, u"noaa.tle"_s});
    server.Answers[kWeather] = row.Answer;
    const UpdateResult result = Run();
    EXPECT_EQ(outcomes.value(0), row.Outcome);
    QMap<QString, QByteArray> expected = row.Files;
    expected[u"noaa.tle"_s] = row.GoesOn ? WithCrLf(good) : Sets(0, 10);
    EXPECT_TRUE(Files() == expected) << Files().keys().join(u' ').toStdString();
    const bool isAsked = row.Said == kAsks;
    EXPECT_EQ(questions.size(), isAsked ? 1 : 0);
    EXPECT_EQ(said.size(), row.Said.isNull() || isAsked ? 0 : 1);
    EXPECT_TRUE(isAsked || said.value(0).contains(row.Said)) << said.value(0).toStdString();
    EXPECT_EQ(server.Asked.contains(kNoaa), row.GoesOn);
    EXPECT_EQ(result.Changed, row.GoesOn) << "the last file decides";
    EXPECT_EQ(result.EndedEarly, !row.GoesOn);
    EXPECT_TRUE(server.LastRequest.contains("User-Agent: Pelorin\r\n"));
    EXPECT_TRUE(server.LastRequest.contains("Accept-Encoding: identity\r\n"));
  }
}

TEST_F(ElementUpdateTest, WhatComesInAnotherFormTakesTheFilesPlace) {
  Restore({kLines});
  Answer(Csv(0, 9));
  Run();
  EXPECT_EQ(texts.takeLast(), u"updated as Weather.csv; still here: 1"_s);
  // Both are listed from then on; the newer file is judged by its own.
  update.Files = Files().keys();
  update.Insist = true;
  Answer(Csv(0, 10));
  Run();
  EXPECT_EQ(texts, QStringList({u"updated as Weather.csv"_s, u"updated"_s}));
  EXPECT_EQ(server.Asked.size(), 2) << "an address that two files share is asked for once";
  EXPECT_EQ(QDir(update.ArchiveFolder).entryList(QDir::Files),
            QStringList({u"2022-02.2li"_s, u"2022-03.csv"_s}));
  EXPECT_EQ(ArchiveElementFile(update.Folder + kCsv, update.ArchiveFolder), 1) << "nine are there";

  // A group that has shrunk goes when the user says so.
  update.Files = Files().keys();
  Answer(Csv(0, 5));
  Run();
  EXPECT_TRUE(questions.value(0).contains(u"Element sets in it: 10\r"_s));
  EXPECT_TRUE(questions.value(0).contains(u"would go: METEOR 3-2, NOAA 11, "_s));
  EXPECT_EQ(Files()[kCsv], Csv(0, 10));
  agree = true;
  Run();
  EXPECT_EQ(Files()[kCsv], Csv(0, 5));
  // So does a file in lines that then has the others alone.
  Restore({kLines});
  Run();
  EXPECT_EQ(Files().keys(), QStringList(kCsv));

  // A file that is not there yet can be asked for.
  update.Files = QStringList(u"25338.csv"_s);
  update.MayCreate = true;
  server.Answers[u"gp.php?CATNR=25338&FORMAT=csv"_s] = ElementServer::Reply("200 OK", Csv(0, 1));
  Run();
  EXPECT_EQ(Files()[u"25338.csv"_s], Csv(0, 1));
  EXPECT_EQ(questions.size(), 0);
}

TEST_F(ElementUpdateTest, TheWholeRefusalIsToldAndTheLastFileDecides) {
  Answer(Fresh(0, 10));
  server.Answers[kNoaa] = ElementServer::Reply("200 OK", "try\r\nlater");
  EXPECT_FALSE(Run().Changed);
  EXPECT_TRUE(said.value(0).contains(update.Folder + u"noaa.tle "_s)) << said.value(0).toStdString();
  EXPECT_TRUE(said.value(0).endsWith(u" from:  "_s + server.Base() + kNoaa +
                                     u"\r\rData received from the server was:\rtry\rlater"_s));
}

TEST_F(ElementUpdateTest, NothingIsAskedForTwiceWithinTwoHours) {
  // Two files that have one name at the service.
  Restore({kLines, u"weather.tle"_s});
  Answer(Fresh(0, 10));
  EXPECT_TRUE(Run().Changed);
  EXPECT_EQ(Files()[u"weather.tle"_s], WithCrLf(Fresh(0, 10)));
  const struct {
    const char* Label;
    int Hour, Minute;
    bool Insist, Asked;
    bool IsOffline = false;
  } rows[] = {{"soon", 7, 59, false, false},
              {"soon, but insisting", 7, 59, true, true},
              {"two hours after that", 9, 59, false, true},
              {"without a connection", 10, 30, true, false, true},
              {"which changes nothing", 11, 58, false, false},
              {"and makes none wait", 12, 0, false, true},
              {"by a clock set back", 4, 0, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    now = orbit::MakeDateTime(2022, 3, 1, row.Hour, row.Minute);
    update.Insist = row.Insist;
    isOffline = row.IsOffline;
    server.Asked.clear();
    EXPECT_EQ(Run().Changed, row.Asked);
    EXPECT_EQ(server.Asked.size(), row.Asked ? 1 : 0);
    EXPECT_EQ(outcomes.contains(FileOutcome::AskedRecently), !row.Asked && !row.IsOffline);
  }
  // Who hung up before an answer came was asked all the same,
  server.Answers[kWeather] = {{}, Then::Wait};
  now = orbit::MakeDateTime(2022, 3, 1, 12, 0);
  givesUpSoon = true;
  Run();
  Run();
  EXPECT_EQ(outcomes, QList<FileOutcome>(2, FileOutcome::AskedRecently));
  // and where nobody answered, another try is free.
  update.BaseAddress = u"http://127.0.0.1:1/NORAD/elements/"_s;
  Run();
  Run();
  EXPECT_EQ(outcomes, QList<FileOutcome>{FileOutcome::Failed});
}

TEST_F(ElementUpdateTest, CancelAndTheEndOfTheProgramEndTheRun) {
  server.Answers[kWeather] = {"HTTP/1.1 200 OK\r\n\r\n" + Fresh(0, 10), Then::Wait};
  update.Insist = true;
  for (const bool isProgramsEnd : {false, true}) {
    SCOPED_TRACE(isProgramsEnd);
    server.Asked.clear();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      if (server.Asked.isEmpty()) return;
      isProgramsEnd ? QCoreApplication::exit() : patient.Cancel();
    });
    watch.start(10);
    UpdateResult result;
    QTimer::singleShot(0, [&] {
      result = Run();
      QCoreApplication::exit();
    });
    QCoreApplication::exec();
    EXPECT_TRUE(result.EndedEarly);
    EXPECT_EQ(said + texts, QStringList());
  }
  cancel = true;
  EXPECT_TRUE(Run().EndedEarly);
  EXPECT_EQ(server.Asked.size(), 1) << "not asked for any more";
  EXPECT_EQ(Files()[kLines], Sets(0, 10));
}

TEST_F(ElementUpdateTest, WhatCannotBeReadOrKeptEndsTheRun) {
  Answer(Fresh(0, 10));
  QFile::remove(update.Folder + u"noaa.tle"_s);
  EXPECT_NE(tests::ErrorOf([this] { Run(); }), QString());
  EXPECT_EQ(outcomes, QList<FileOutcome>{FileOutcome::Updated});
  EXPECT_EQ(server.Asked, QStringList(kWeather));

  // What cannot be kept in the archive is not replaced.
  Restore({kLines});
  QDir().mkpath(update.ArchiveFolder + u"/2022-02.2li"_s);
  EXPECT_THROW(Run(), std::runtime_error);
  EXPECT_EQ(Files()[kLines], Sets(0, 10));

  // Nor is anything asked for where it is known before.
  const auto expectUnasked = [this](const QString& place) {
    const QString error = tests::ErrorOf([this] { Run(); });
    EXPECT_TRUE(error.startsWith(u"Cannot write "_s + place)) << error.toStdString();
    EXPECT_EQ(server.Asked, QStringList());
  };
  Restore({kLines});
  QDir().mkpath(Path("user/requests.txt"));
  expectUnasked(Path("user/requests.txt"));
  Restore({kLines});
  files::ReplaceFile(update.ArchiveFolder, "a file in the archive's place");
  expectUnasked(update.ArchiveFolder + u'/');
  // Nobody makes files there, not even the system's administrator.
  update.Folder = u"/proc/self/"_s;
  update.Files = QStringList(u"status"_s);
  expectUnasked(update.Folder);
}

TEST_F(ElementUpdateTest, AFolderOfFilesWillDoForAService) {
  server.Answers.clear();
  server.Answers[u"weather.txt"_s] = ElementServer::Reply("200 OK", Fresh(0, 10));
  update.PlainFilesToo = true;
  Run();
  EXPECT_EQ(outcomes, (QList{FileOutcome::Updated, FileOutcome::UnknownThere}));
  EXPECT_EQ(server.Asked, QStringList({kWeather, u"weather.txt"_s, kNoaa, u"noaa.txt"_s}));
  update.PlainFilesToo = false;
  update.Insist = true;
  server.Asked.clear();
  Run();
  EXPECT_EQ(server.Asked, QStringList({kWeather, kNoaa}))
      << "the public service is not asked for more than it has";
}

TEST_F(ElementUpdateTest, UpdatesWaitForEachOther) {
  const files::FolderLock held(Path("user"), 0);
  EXPECT_THROW(Run(), UpdateRunning);
  EXPECT_EQ(server.Asked, QStringList());

  // The archive is locked by itself: whatever is added to it at the same time is all there in the end.
  constexpr int sets = 20;
  const auto addEverySecond = [this](int first) {
    const QString source = Path(first == 0 ? "even.2li" : "odd.2li");
    for (int i = first; i < sets; i += 2) {
      files::ReplaceFile(source, Sets(i, 1));
      ArchiveElementFile(source, update.ArchiveFolder);
    }
  };
  std::thread other(addEverySecond, 1);
  addEverySecond(0);
  other.join();
  EXPECT_EQ(files::ReadFile(update.ArchiveFolder + u"/2022-02.2li"_s).count("\n1 "), sets);
}

TEST_F(ElementUpdateTest, NoFileOfAKnownNameIsMadeOnTheWay) {
  const QString victim = Path("victim");
  files::ReplaceFile(victim, "mine");
  QDir().mkpath(update.ArchiveFolder);
  for (const QString& trap : {update.Folder, update.ArchiveFolder + u'/'}) {
    ASSERT_TRUE(QFile::link(victim, trap + u"element-update.tmp"_s));
  }
  EXPECT_TRUE(Run().Changed);
  EXPECT_EQ(files::ReadFile(victim), "mine");
  EXPECT_TRUE(QFileInfo(update.Folder + u"element-update.tmp"_s).isSymLink());
}

}  // namespace
}  // namespace pelorin::elements
