#include "elements/element_update.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include "elements/element_download.h"
#include "files/atomic_file.h"
#include "files/file_error.h"
#include "files/read_file.h"
#include "tests/support/element_server.h"

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;
using tests::ElementServer;
using Then = ElementServer::Then;

/// Sets of 165 bytes each, a line ending in LF.
QByteArray Sets(int first, int count) {
  const QList<QByteArray> lines =
      SplitLines(files::ReadFile(QStringLiteral(PELORIN_DEMO_ELEMENTS "/weather-2022-02-22.2li")));
  return lines.mid(3 * first, 3 * count).join('\n') + '\n';
}

QByteArray WithCrLf(QByteArray text) { return text.replace("\n", "\r\n"); }

class ElementUpdateTest : public testing::Test {
 protected:
  ElementUpdateTest() {
    update.Files = QStringList{u"Weather.2LI"_s, u"noaa.tle"_s};
    update.Folder = folder.filePath(u"elements/"_s);
    update.BaseAddress = server.Base();
    update.ArchiveFolder = folder.filePath(u"user/archive"_s);
    update.Now = [this] { return now; };
    QDir(folder.path()).mkdir(u"elements"_s);
    Restore();
  }

  void Restore() {
    for (const QString& name : update.Files) files::ReplaceFile(update.Folder + name, Sets(0, 10));
    QFile::remove(folder.filePath(u"user/requests.txt"_s));
    server.Asked.clear();
    server.Answers[u"noaa.txt"_s] = ElementServer::Reply("200 OK", Sets(12, 10));
  }

  UpdateResult Run() {
    said.clear();
    outcomes.clear();
    const ElementRequests requests(folder.filePath(u"user/requests.txt"_s));
    return UpdateElementFiles(
        update, requests,
        {[this](const QString& address) { return For(address).Get(address); },
         [this](int) { return !cancel; }, [this](int, FileOutcome outcome) { outcomes.append(outcome); },
         [this](const QString& text) { said.append(text); }});
  }

  /// A busy computer must not look like a silent server.
  ElementDownload& For(const QString& address) {
    const bool isSilent = server.Answers.value(address.section(u'/', -1)).Next == Then::Wait;
    return isSilent && givesUpSoon ? hasty : patient;
  }

  QByteArray File(int index) { return files::ReadFile(update.Folder + update.Files[index]); }

  QTemporaryDir folder;
  ElementServer server;
  ElementDownload patient{30000}, hasty{200};
  bool givesUpSoon = false;
  ElementUpdate update;
  orbit::TDateTime now = orbit::MakeDateTime(2022, 3, 1, 6, 0);
  bool cancel = false;
  QStringList said;
  QList<FileOutcome> outcomes;
};

TEST_F(ElementUpdateTest, AnswersLeaveAPlausibleNewFileOrTheOldOne) {
  using enum FileOutcome;
  const QByteArray good = Sets(12, 10);
  const auto whole = [](const QByteArray& body) { return ElementServer::Reply("200 OK", body); };
  const auto half = [](const QByteArray& body, Then next) {
    ElementServer::Answer answer = ElementServer::Reply("200 OK", body);
    answer.Bytes.chop(body.size() / 2);
    answer.Next = next;
    return answer;
  };
  const QByteArray unmeasured = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
  const QByteArray page = "<!DOCTYPE html>\n<html>" + QByteArray(1600, 'x') + "</html>\n";
  const QByteArray notNew =
      "GP data has not updated since your last successful\r\ndownload of GROUP=weather at 2022-03-01 "
      "05:00.\r\n";
  QByteArray otherSatellite = good, starred = good;
  otherSatellite.replace(good.indexOf("\n2 ") + 3, 5, "99999");
  starred.replace(good.indexOf("\n1 ") + 1, 2, "1X");
  const QString refusal = u"outside the limits of 80% to 120%"_s;
  const struct {
    const char* Label;
    ElementServer::Answer Answer;
    FileOutcome Outcome;
    QString Said;    ///< a part of it; null for nothing
    bool GoesOn;     ///< the second file is asked for too
    QByteArray New;  ///< content expected when updated
  } rows[] = {
      {"good", whole(good), Updated, {}, true, good},
      {"good with CR LF", whole(WithCrLf(good)), Updated, {}, true, good},
      {"good with CR", whole(QByteArray(good).replace('\n', '\r')), Updated, {}, true, good},
      {"exactly 80%", whole(Sets(12, 8)), Refused, refusal, true, {}},
      {"80% and a byte", whole(Sets(12, 8).replace(23, 1, " \r")), Updated, {}, true, Sets(12, 8)},
      {"119%", whole(Sets(12, 12).chopped(1)), Updated, {}, true, Sets(12, 12)},
      {"exactly 120%", whole(Sets(12, 12)), Refused, refusal, true, {}},
      {"nothing in it", whole({}), Refused, refusal, true, {}},
      {"begins with a blank", whole(" " + good), Refused, refusal, true, {}},
      {"no line 1", whole(starred), Refused, refusal, true, {}},
      {"lines of two satellites", whole(otherSatellite), Refused, refusal, true, {}},
      {"right beginnings only", whole(QByteArray("A\n1 b\n2 c\n").repeated(165)), Refused, refusal, true, {}},
      {"a page", whole(page), Refused, u"<!DOCTYPE html>"_s, true, {}},
      {"end unknown, cut in a line 2", {unmeasured + good.chopped(20)}, Refused, refusal, true, {}},
      {"end unknown, cut after a line 1", {unmeasured + good.chopped(70)}, Refused, refusal, true, {}},
      {"end unknown, whole", {unmeasured + good}, Updated, {}, true, good},
      {"breaks off", half(good, Then::Close), Refused, refusal, true, {}},
      {"stops in the middle",
       half(good, Then::Wait),
       Refused,
       u"(the server took too long to answer)"_s,
       true,
       {}},
      {"no answer", {{}, Then::Wait}, Refused, u"(the server took too long to answer)"_s, false, {}},
      {"speaks no HTTP", {"elements? which?\r\n\r\n"}, Refused, refusal, false, {}},
      {"moved",
       ElementServer::Reply("301 Moved Permanently", {}, "Location: /gp/moved.txt\r\n"),
       Updated,
       {},
       true,
       good},
      {"moved in a circle",
       ElementServer::Reply("302 Found", {}, "Location: weather.txt\r\n"),
       Refused,
       u"\r(Too many redirects)"_s,
       false,
       {}},
      {"moved to a port that is closed",
       ElementServer::Reply("301 Moved Permanently", {}, "Location: http://127.0.0.1:1/e.txt\r\n"),
       Refused,
       u"\r(moved to http://127.0.0.1:1/e.txt: Connection refused)"_s,
       false,
       {}},
      {"moved without a place",
       ElementServer::Reply("304 Not Modified", {}),
       Refused,
       u" answered 304 Not Modified: (no text)"_s,
       false,
       {}},
      {"nothing new", ElementServer::Reply("403 Forbidden", notNew), AlreadyCurrent, {}, true, {}},
      {"forbidden",
       ElementServer::Reply("403 Forbidden", "\r\nYou are locked out\r\nfor a day"),
       Refused,
       u"Weather.2LI has not been updated: "_s + server.Base() +
           u"weather.txt answered 403 Forbidden: You are locked out"_s,
       false,
       {}},
      {"unknown there",
       ElementServer::Reply("404 Not Found", page),
       Refused,
       u"answered 404 Not Found: <!DOCTYPE html>"_s,
       false,
       {}},
      {"good, but not for us",
       ElementServer::Reply("203 Changed", good),
       Refused,
       u"answered 203 Changed: "_s,
       false,
       {}},
  };
  server.Answers[u"moved.txt"_s] = whole(good);
  givesUpSoon = true;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    Restore();
    server.Answers[u"weather.txt"_s] = row.Answer;
    const UpdateResult result = Run();
    EXPECT_EQ(outcomes.value(0), row.Outcome);
    EXPECT_EQ(File(0), row.New.isEmpty() ? Sets(0, 10) : WithCrLf(row.New));
    EXPECT_EQ(said.size(), row.Said.isNull() ? 0 : 1) << said.join(u'\n').toStdString();
    EXPECT_TRUE(said.value(0).contains(row.Said)) << said.value(0).toStdString();
    EXPECT_EQ(server.Asked.contains(u"noaa.txt"_s), row.GoesOn);
    EXPECT_EQ(File(1), row.GoesOn ? WithCrLf(good) : Sets(0, 10));
    EXPECT_EQ(result.Changed, row.GoesOn) << "the last file decides";
    EXPECT_EQ(result.EndedEarly, !row.GoesOn);
    // The library below asks again when a connection's end is all that it sees, and a circle leads back.
    if (row.Answer.Bytes.contains("Content-Length") && !row.Answer.Bytes.contains("Location: weather")) {
      EXPECT_EQ(server.Asked.count(u"weather.txt"_s), 1);
    }
    EXPECT_TRUE(server.LastRequest.contains("User-Agent: Pelorin\r\n"));
    EXPECT_EQ(QDir(update.Folder).entryList(QDir::Files).size(), 2) << "nothing half-written is left";
  }
}

TEST_F(ElementUpdateTest, TheWholeRefusalIsToldAndTheLastFileDecides) {
  server.Answers[u"weather.txt"_s] = ElementServer::Reply("200 OK", Sets(12, 10));
  server.Answers[u"noaa.txt"_s] = ElementServer::Reply("200 OK", "try\r\nlater");
  EXPECT_FALSE(Run().Changed);
  EXPECT_EQ(said, QStringList(u"The data received does not appear to be valid Kepler data or is outside the "
                              "limits of 80% to 120% of the present file size.  The file:  "_s +
                              update.Folder + u"noaa.tle  has not been updated from:  "_s + server.Base() +
                              u"noaa.txt\r\rData received from the server was:\rtry\r\nlater"_s));
  EXPECT_EQ(OutcomeSummary(outcomes), u"1 updated, 1 not updated"_s);
}

TEST_F(ElementUpdateTest, NothingIsAskedForTwiceWithinTwoHours) {
  server.Answers[u"weather.txt"_s] = ElementServer::Reply("200 OK", Sets(12, 10));
  // Two files that have one name at the service.
  update.Files = QStringList{u"Weather.2LI"_s, u"weather.tle"_s};
  Restore();
  EXPECT_TRUE(Run().Changed);
  EXPECT_EQ(File(1), WithCrLf(Sets(12, 10)));
  const struct {
    const char* Label;
    int Hour, Minute;
    bool Insist, Asked;
  } rows[] = {{"soon", 7, 59, false, false},
              {"soon, but insisting", 7, 59, true, true},
              {"two hours after that", 9, 59, false, true},
              {"by a clock set back", 4, 0, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    now = orbit::MakeDateTime(2022, 3, 1, row.Hour, row.Minute);
    update.Insist = row.Insist;
    server.Asked.clear();
    EXPECT_EQ(Run().Changed, row.Asked);
    EXPECT_EQ(server.Asked.size(), row.Asked ? 1 : 0);
    EXPECT_EQ(outcomes, QList<FileOutcome>(2, row.Asked ? FileOutcome::Updated : FileOutcome::AskedRecently));
  }
  // Who hung up before an answer came was asked all the same.
  server.Answers[u"weather.txt"_s] = {{}, Then::Wait};
  now = orbit::MakeDateTime(2022, 3, 1, 12, 0);
  givesUpSoon = true;
  Run();
  EXPECT_EQ(outcomes, QList<FileOutcome>{FileOutcome::Refused});
  Run();
  EXPECT_EQ(outcomes, QList<FileOutcome>(2, FileOutcome::AskedRecently));
  // An attempt without a connection changes nothing about that,
  update.Insist = true;
  const ElementRequests requests(folder.filePath(u"user/requests.txt"_s));
  const QString address = RemoteAddress(server.Base(), u"weather.txt"_s);
  UpdateElementFiles(update, requests,
                     {[](const QString&) { return ElementAnswer{}; }, [](int) { return true; },
                      [](int, FileOutcome) {}, [](const QString&) {}});
  EXPECT_TRUE(requests.AskedRecently(address, orbit::MakeDateTime(2022, 3, 1, 13, 59)));
  EXPECT_FALSE(requests.AskedRecently(address, orbit::MakeDateTime(2022, 3, 1, 14, 0)));
  update.Insist = false;
  // and where nobody answered, another try is free.
  update.BaseAddress = u"http://127.0.0.1:1/NORAD/elements/"_s;
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_FALSE(Run().Changed);
    EXPECT_EQ(outcomes, QList<FileOutcome>{FileOutcome::Refused});
  }
}

TEST_F(ElementUpdateTest, CancelAndMissingFileEndTheRun) {
  server.Answers[u"weather.txt"_s] = {"HTTP/1.1 200 OK\r\n\r\n" + Sets(12, 9), Then::Wait};
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [this] {
    if (!server.Asked.isEmpty()) patient.Cancel();
  });
  watch.start(10);
  EXPECT_TRUE(Run().EndedEarly);
  watch.stop();
  cancel = true;
  EXPECT_TRUE(Run().EndedEarly);
  EXPECT_EQ(outcomes, QList<FileOutcome>());
  EXPECT_EQ(said, QStringList());
  EXPECT_EQ(File(0), Sets(0, 10));
  EXPECT_EQ(server.Asked.size(), 1);

  cancel = false;
  Restore();
  server.Answers[u"weather.txt"_s] = ElementServer::Reply("200 OK", Sets(12, 10));
  QFile::remove(update.Folder + update.Files[1]);
  EXPECT_THROW(Run(), files::FileError);
  EXPECT_EQ(outcomes, QList<FileOutcome>{FileOutcome::Updated});
  EXPECT_EQ(server.Asked, QStringList(u"weather.txt"_s));

  // What cannot be kept in the archive is not replaced.
  Restore();
  QDir(update.ArchiveFolder).removeRecursively();
  QDir(update.ArchiveFolder).mkpath(u"2022-02.2li"_s);
  EXPECT_THROW(Run(), std::runtime_error);
  EXPECT_EQ(File(0), Sets(0, 10));
}

TEST_F(ElementUpdateTest, NothingIsAskedForThatCouldNotBeKept) {
  const struct {
    const char* Label;
    std::function<void()> Spoil;
    QString Said;  ///< begins like this
  } rows[] = {
      {"record of requests", [this] { QDir(folder.path()).mkpath(u"user/requests.txt"_s); },
       u"Cannot write "_s + folder.filePath(u"user/requests.txt"_s)},
      {"archive", [this] { files::ReplaceFile(update.ArchiveFolder, "a file in the archive's place"); },
       u"Cannot write "_s + update.ArchiveFolder + u"/"_s},
      // Nobody makes files there, not even the system's administrator.
      {"element folder",
       [this] {
         update.Folder = u"/proc/self/"_s;
         update.Files = QStringList(u"status"_s);
       },
       u"Cannot write /proc/self/"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    QDir(folder.filePath(u"user"_s)).removeRecursively();
    QDir(folder.path()).mkdir(u"user"_s);
    row.Spoil();
    try {
      Run();
      ADD_FAILURE();
    } catch (const files::FileError& error) {
      EXPECT_TRUE(error.Text().startsWith(row.Said)) << error.what();
    }
    EXPECT_EQ(server.Asked, QStringList());
    EXPECT_EQ(outcomes, QList<FileOutcome>());
  }
}

TEST_F(ElementUpdateTest, TheEndOfTheProgramCancels) {
  server.Answers[u"weather.txt"_s] = {"HTTP/1.1 200 OK\r\n\r\n" + Sets(12, 10), Then::Wait};
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [this] {
    if (!server.Asked.isEmpty()) QCoreApplication::exit();
  });
  watch.start(10);
  UpdateResult result;
  QTimer::singleShot(0, [&] { result = Run(); });
  QCoreApplication::exec();
  EXPECT_TRUE(result.EndedEarly);
  EXPECT_EQ(said, QStringList());
  EXPECT_EQ(File(0), Sets(0, 10));
}

TEST(ElementNames, AtTheService) {
  const struct {
    QString Local, Remote;
  } rows[] = {{u"Weather.2LI"_s, u"weather.txt"_s},
              {u"amateur.radio.tle"_s, u"amateur.radio.txt"_s},
              {u"My Sats #1.TLE"_s, u"my%20sats%20%231.txt"_s}};
  for (const auto& row : rows)
    EXPECT_EQ(RemoteAddress(u"http://h/"_s, row.Local), u"http://h/"_s + row.Remote);
}

TEST(ElementData, LinesGoInThrees) {
  const struct {
    const char* Label;
    QByteArray Text;
    bool Valid, Whole;
  } rows[] = {{"two lines", "1 a\n2 b\n", false, false},
              {"one set", Sets(0, 1), true, true},
              {"a name at the end", Sets(0, 2) + "NOAA 15\n", true, true},
              {"an empty line at the end", Sets(0, 2) + "\n", true, true},
              {"half a set at the end", Sets(0, 2) + "NOAA 15\n1 ", true, false},
              {"a set without a name", Sets(0, 1) + "\n" + Sets(0, 1).mid(25), false, true},
              {"a missing line", Sets(0, 2).remove(0, 25) + "NOAA 15\n", false, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    EXPECT_EQ(IsValidElementData(SplitLines(row.Text)), row.Valid);
    EXPECT_EQ(HasWholeSets(SplitLines(row.Text)), row.Whole);
  }
}

}  // namespace
}  // namespace pelorin::elements
