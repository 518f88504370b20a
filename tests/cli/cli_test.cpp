#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "app/registry_store.h"
#include "app/settings.h"
#include "files/atomic_file.h"
#include "files/text_file.h"
#include "tests/support/decoded_pass.h"
#include "tests/support/element_messages.h"
#include "tests/support/element_server.h"
#include "tests/support/folder_test.h"
#include "tests/support/minute_marks.h"
#include "tests/support/painted_pass.h"
#include "tests/support/run_program.h"
#include "tests/support/tables.h"

namespace pelorin {
namespace {

using namespace Qt::StringLiterals;
using tests::kDemoFile;
using tests::Outcome;

/// Runs the program in a folder of its own, with settings of its own.
class Cli : public tests::FolderTest {
 protected:
  /// Words separated by blanks; "_" stands for a blank within one.
  Outcome Run(const std::string& words) const {
    const QString whole =
        QString::fromStdString(words).replace(u"OVERLAY"_s, u"overlay --elements DEMO --satellite NOAA_19"_s);
    QStringList arguments = whole.split(u' ', Qt::SkipEmptyParts);
    for (QString& argument : arguments) argument.replace(u'_', u' ');
    arguments.replaceInStrings(u"DEMO"_s, kDemoFile);
    arguments.replaceInStrings(u"HERE"_s, Folder());
    return tests::RunProgram(QStringLiteral(PELORIN_CLI), arguments, Folder(),
                             {{"PELORIN_CONFIG_DIR", Path("config")},
                              {"PELORIN_DATA_DIR", dataFolder_},
                              {"LC_ALL", u"de_DE.UTF-8"_s},
                              {"TZ", u"Europe/Berlin"_s}});
  }
  void MakeFolder(const char* name) const { QDir().mkpath(Path(name)); }

  QString dataFolder_ = QStringLiteral(PELORIN_BUILT_DATA);
};

TEST_F(Cli, WrongUseAndFailuresHaveTheirOwnStatus) {
  const struct {
    const char* words;
    int status;
    const char* says;
  } rows[] = {{"", 2, "Usage"},
              {"fly", 2, "no command"},
              {"passes --elements DEMO --station 91,0,0", 2, "--station"},
              {"passes --elements DEMO --from 2022-02-30", 2, "no such date"},
              {"passes --elements DEMO --days 0", 2, "--days wants a number from 1 to 366, not \"0\""},
              {"passes --elements DEMO --days 1.5", 2, "--days wants a whole number"},
              {"passes --elements DEMO --min-elevation nan", 2, "--min-elevation"},
              {"passes --elements DEMO --min-elevation 20", 2, "--min-elevation wants a number from 0 to 10"},
              {"passes --elements DEMO --format xml", 2, "--format"},
              {"passes --elements DEMO --bogus", 2, "bogus"},
              {"passes --elements DEMO --satellite NOAA_99 --from 2022-02-23", 1, "NOAA 99"},
              {"passes --elements HERE/missing", 1, "missing"},
              {"elements --elements DEMO --near 2022", 2, "not a start"},
              {"passes --elements HERE", 1, "no usable element sets"},
              {"track --elements DEMO --satellite NOAA_19", 2, "--from"},
              {"track --elements DEMO --satellite NOAA_19 --from 2022-02-23", 2, "not a time"},
              {"track --elements DEMO --satellite NOAA_19 --from 2022-02-23T25:00:00", 2, "no such time"},
              {"track --elements DEMO --satellite NOAA_19 --from 2022-02-23T00:00:00 --step 0", 2, "--step"},
              {"scan --satellite NOAA_19", 2, "--height"},
              {"alignments --satellite NOAA_19", 1, "No picture of NOAA 19 was aligned yet"},
              {"scanners --satellite ISS", 1, "No scanner of ISS is known"},
              {"OVERLAY", 2, "either --start or --pass"},
              {"OVERLAY --start 2022 --results HERE", 2, "not a start"},
              {"OVERLAY --start 20220223093200 --minutes 99", 2, "--minutes"},
              {"OVERLAY --start 20220223093200 --results HERE/missing", 1, "missing"},
              {"OVERLAY --start 20220223093200 --results HERE --picture HERE/no.png", 1, "no.png"},
              {"OVERLAY --pass 0223x932 --results HERE", 2, "--pass"},
              {"OVERLAY --pass 20220223030059 --results HERE", 1, "pass string 02230300 not found."},
              {"align", 2, "--picture is missing"},
              {"align --picture HERE/no.png --range 9", 1, "no.png"},
              {"OVERLAY --start 20220223093200 --align", 2, "--align goes with --picture"},
              {"OVERLAY --picture HERE/no.png --remember", 2, "--remember goes with --align"},
              {"identify --picture HERE/no.png --stored upright", 2, "--stored is one of"},
              {"picture --find 12x41200 --folders HERE", 2, "--find"},
              {"picture --find 12241200 --folders HERE", 1, "no picture"},
              {"master --countries HERE/none.dat --output HERE/o.bmp", 1, "none.dat"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.words);
    const Outcome outcome = Run(row.words);
    EXPECT_EQ(outcome.Status, row.status);
    EXPECT_TRUE(outcome.Err.contains(QLatin1StringView(row.says))) << outcome.Err.toStdString();
    EXPECT_EQ(outcome.Out, QString());
  }
  for (const char* command : {"passes", "track", "overlay", "align", "identify", "picture", "elements",
                              "update", "scan", "line", "master"}) {
    const Outcome help = Run(std::string(command) + " --help");
    EXPECT_TRUE(help.Status == 0 && help.Out.contains(QLatin1StringView(command))) << command;
  }
}

TEST_F(Cli, PassesComeInThreeFormats) {
  const std::string call =
      "passes --elements DEMO --station 55.905,-3.2,150 --from 2021-12-31 --days 2 --satellite NOAA_19 "
      "--satellite noaa_15 --min-elevation 5 --format ";
  const QStringList text = Run(call + "text").Lines();
  ASSERT_GT(text.size(), 8);
  EXPECT_TRUE(text.first().startsWith(u"1231"_s) && text.last().startsWith(u"0101"_s))
      << "in the order of the rise";
  const QStringList csv = Run(call + "csv").Lines();
  const QJsonArray json = QJsonDocument::fromJson(Run(call + "json").Out.toUtf8()).array();
  ASSERT_EQ(csv.size(), text.size() + 1);
  ASSERT_EQ(json.size(), text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QJsonObject pass = json[i].toObject();
    const QString rise = pass.value(u"rise_utc"_s).toString();
    // 0223T093220 of the record is the csv's and the json's time without its year.
    EXPECT_EQ(QString(rise).remove(u'-').remove(u':').mid(4, 11).remove(u'T'), text[i].left(10));
    EXPECT_TRUE(csv[i + 1].contains(rise));
    EXPECT_GE(pass.value(u"max_elevation_deg"_s).toDouble() + 0.6, text[i].section(u' ', 3, 3).toDouble());
    EXPECT_EQ(pass.value(u"duration_s"_s).toInt(), text[i].section(u' ', 4, 4).toInt());
  }
}

TEST_F(Cli, TracksAgreeWithPublishedStates) {
  const auto rows = tests::ReadTable("lookangles.csv");
  const auto& row = rows.front();
  const Outcome outcome =
      Run("track --elements " PELORIN_TEST_DATA "/elements.2li --satellite NOAA_12 --station " +
          row.Text("lat_deg") + ',' + row.Text("lon_deg") + ',' + row.Text("height_m") + " --from " +
          row.Text("utc") + " --seconds 20 --format json");
  const QJsonArray steps = QJsonDocument::fromJson(outcome.Out.toUtf8()).array();
  ASSERT_EQ(steps.size(), 3) << outcome.Err.toStdString();
  const QJsonObject first = steps[0].toObject();
  EXPECT_NEAR(first.value(u"x_km"_s).toDouble(), row.Number("x_km"), 0.002);
  EXPECT_NEAR(first.value(u"elevation_deg"_s).toDouble(), row.Number("el_deg"), 1e-4);
  EXPECT_NEAR(first.value(u"latitude_deg"_s).toDouble(), row.Number("sat_lat_deg"), 1e-4);
  EXPECT_EQ(first.value(u"visible"_s).toBool(), row.Text("visible") == "1");
  EXPECT_TRUE(outcome.Err.contains(u"days"_s));
}

TEST_F(Cli, APassBecomesItsOverlay) {
  MakeFolder("results");
  // A recording that began some seconds after the predicted rise: the key is shortened until it matches, and
  // its name tells when.
  ASSERT_TRUE(QImage(909, 300, QImage::Format_RGB32).save(Path("0223093442V.png")));
  const Outcome outcome =
      Run("OVERLAY --pass 20220223093258 --topography none --picture HERE/0223093442V.png --results "
          "HERE/results");
  ASSERT_EQ(outcome.Status, 0) << outcome.Err.toStdString();
  EXPECT_TRUE(outcome.Err.contains(u"0223093220 S"_s));
  EXPECT_EQ(outcome.Lines().size(), 4);
  EXPECT_EQ(QImage(Path("results/Result.jpg")).size(), QSize(1040, 300));
  EXPECT_TRUE(files::ReadLines(Path("results/pass.dat")).value(0).startsWith(u"2022-02-23T09:34:42.000 "_s));

  // Of two satellites of one name the one whose number is given.
  files::ReplaceFile(Path("twins.tle"), tests::DemoSets(0, 45).replace("NOAA 18", "NOAA 19"));
  for (const std::string way : {"--start 20220223093200", "--pass 202202230950"}) {
    const Outcome twin =
        Run("overlay --elements HERE/twins.tle --satellite 28654 --lines 300 --results HERE/results " + way);
    EXPECT_TRUE(twin.Err.contains(QStringLiteral("NOAA 19, number 28654"))) << twin.Err.toStdString();
  }
  // The picture's rows decide the map's; the earlier results stay when the new ones cannot be made.
  ASSERT_TRUE(QImage(909, 77, QImage::Format_RGB32).save(Path("picture.png")));
  const Outcome second =
      Run("OVERLAY --start 20220223093200 --direction north --picture HERE/picture.png --master none "
          "--results HERE/results");
  ASSERT_EQ(second.Status, 0) << second.Err.toStdString();
  EXPECT_EQ(QImage(Path("results/Result.jpg")).size(), QSize(1040, 77));
  EXPECT_EQ(QImage(Path("results/ovl.bmp")).size(), QSize(1040, 300));
}

TEST_F(Cli, APictureTellsItsMapByItself) {
  MakeFolder("results");
  tests::LeaveDecodedPass(Path("pass"), orbit::MakeDateTime(2022, 2, 23, 17, 33, 12), 400);
  tests::LeaveDecodedPass(Path("cut"), orbit::MakeDateTime(2022, 2, 23, 17, 33, 12), 8);
  files::ReplaceFile(Path("cut/product.cbor"), files::ReadFile(Path("cut/product.cbor")).chopped(9));
  ASSERT_TRUE(QImage(2048, 64, QImage::Format_Grayscale8).save(Path("NOAA-19-20220223-093442Z.png")));
  ASSERT_TRUE(QImage(1500, 64, QImage::Format_Grayscale8).save(Path("NOAA-18-20220223-093442Z.png")));
  ASSERT_TRUE(QImage(909, 64, QImage::Format_Grayscale8).save(Path("party.png")));
  ASSERT_TRUE(tests::WithMinuteMarks(86, 1040).save(Path("marks.png")));
  const std::string marked =
      "--picture HERE/marks.png --stored received --satellite NOAA_19 --start 20220223093200";
  const struct {
    std::string Options;
    QSize Map;  ///< empty when there is none
    const char* ErrHas;
  } rows[] = {
      {"--picture HERE/pass", {1568, 400}, "1568 columns of 110.6 degrees, by the product file; roll 2.3"},
      {"--pass 20220223173104 --satellite METEOR_M2 --picture HERE/pass",
       {1568, 400},
       "Begin: 2022 Feb 23, 17:33:12 UTC, by the stamps of its lines"},
      {"--picture HERE/pass --satellite NOAA_19", QSize(0, 0), "fits no scanner of NOAA 19"},
      {"--picture HERE/pass --roll 0", {1568, 400}, "roll 0, pitch 0, yaw 2.4, by the options"},
      {"--picture HERE/NOAA-19-20220223-093442Z.png", {2048, 64}, "Scanner: AVHRR HRPT, 2048 columns"},
      {"--picture HERE/NOAA-19-20220223-093442Z.png --stored turned-mirrored",
       {2048, 64},
       "stored turned by 180 degrees, left and right exchanged, by the options"},
      {"--picture HERE/NOAA-18-20220223-093442Z.png", QSize(0, 0), "fits no scanner of NOAA 18"},
      {"--picture HERE/cut", QSize(0, 0), "product.cbor"},
      {"--picture HERE/party.png --satellite NOAA_19", QSize(0, 0), "does not tell when it was received"},
      {"--picture HERE/party.png --start 20220223093200", QSize(0, 0), "does not tell its satellite"},
      {"--picture HERE", QSize(0, 0), "no product.cbor and no dataset.json in"},
      {"--picture HERE/party.png --satellite NOAA_19 --start 20220223053200", {1040, 64}, "out of sight"},
      {marked, {1040, 300}, "Minute marks: begin 16.7 s earlier; --minute-marks does that"},
      {marked + " --minute-marks", {1040, 300}, "from 2022 Feb 23, 09:31:43 UTC"},
      {marked + " --minute-marks --time-correction 1", QSize(0, 0), "exclude each other"},
  };
  for (const auto& row : rows) {
    QFile::remove(Path("results/Result.jpg"));
    const Outcome outcome =
        Run("overlay --elements DEMO --topography none --results HERE/results " + row.Options);
    EXPECT_EQ(outcome.Status == 0, !row.Map.isEmpty()) << row.Options << outcome.Err.toStdString();
    EXPECT_TRUE(outcome.Err.contains(QLatin1StringView(row.ErrHas)))
        << row.Options << outcome.Err.toStdString();
    EXPECT_EQ(QImage(Path("results/Result.jpg")).size(), row.Map) << row.Options;
  }
}

/// Europe from 2022-02-23 17:42:00.5 on, as received.
QImage SeenByNoaa19() {
  swath::Recording truth;
  truth.Elements = std::make_shared<const orbit::TSatellite>(tests::DemonstrationSatellite("NOAA 19"));
  truth.SeenBy = {"", {909, 110.74, swath::ScanLaw::Zones}, 2, false};
  truth.Start = orbit::MakeDateTime(2022, 2, 23, 17, 42, 0, 500);
  truth.Rows = 1200;
  truth.Columns = 909;
  return tests::PaintedPass(truth, tests::PaintedEarth(), {0.3, 6});
}

TEST_F(Cli, APictureFindsItsMapByItsCoasts) {
  dataFolder_ = Path("user");
  MakeFolder("user");
  MakeFolder("results");
  const QImage seen = SeenByNoaa19();
  ASSERT_TRUE(seen.save(Path("NOAA-19-20220223-174241Z.png")));
  ASSERT_TRUE(seen.mirrored(true, false).save(Path("NOAA-19-20220223-174242Z.png")));
  QFile::copy(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"), Path("Coastlines.dat"));
  const std::string picture = "--picture HERE/NOAA-19-20220223-174241Z.png",
                    mirrored = "--picture HERE/NOAA-19-20220223-174242Z.png",
                    map = "overlay --lines-only --topography none --results HERE/results --align ";
  const struct {
    std::string Words;
    int Status;
    QString Result;  ///< of "align"
    const char* ErrHas;
    bool IsMap = false;
    bool HasDamagedCoasts = false;
  } rows[] = {
      {map + mirrored + " --require-align", 4, {}, "pelorin-cli overlay: Not found: "},
      {map + mirrored, 0, {}, "Alignment: Not found: ", true},
      {"align " + picture + " --range 20 --remember --require-align", 4, u"not found"_s, "Not found"},
      {"align " + picture, 0, u"roughly"_s, "Scanner: ", false, true},
      {map + picture, 0, {}, "from 2022 Feb 23, 17:42:00 UTC", true},
      {"align " + picture + " --remember", 0, u"found"_s, "Remembered in "},
      {"overlay --topography none --results HERE/results " + picture,
       0,
       {},
       "Aligned before: \u221240.",
       true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Words);
    QFile::remove(Path("results/Result.jpg"));
    QFile coasts(Path("Coastlines.dat"));
    ASSERT_TRUE(coasts.open(QIODevice::ReadWrite));
    // The tag, which is told of at once.
    const char first = 'P', other = 'Q';
    coasts.write(row.HasDamagedCoasts ? &other : &first, 1);
    coasts.close();
    const Outcome outcome =
        Run(QString::fromStdString(row.Words).section(u' ', 0, 0).toStdString() + " --elements DEMO " +
            QString::fromStdString(row.Words).section(u' ', 1).toStdString());
    EXPECT_EQ(outcome.Status, row.Status) << outcome.Err.toStdString();
    EXPECT_TRUE(outcome.Err.contains(QString::fromUtf8(row.ErrHas))) << outcome.Err.toStdString();
    EXPECT_EQ(QFile::exists(Path("results/Result.jpg")), row.IsMap);
    const QJsonObject told = QJsonDocument::fromJson(outcome.Out.toUtf8()).object();
    EXPECT_EQ(told[u"result"_s].toString(), row.Result) << outcome.Out.toStdString();
    if (row.Result.isEmpty()) continue;
    EXPECT_EQ(told[u"catalogue_number"_s].toString(), u"33591"_s);
    EXPECT_EQ(told[u"reason"_s].toString().isEmpty(), row.Result == u"found"_s);
    EXPECT_EQ(told[u"reason"_s].toString().contains(u"Coastlines.dat"_s), row.HasDamagedCoasts);
    EXPECT_EQ(told[u"windows"_s].toArray().size() > 20, row.Result == u"found"_s);
    const bool isPlaced = row.Result != u"not found"_s;
    EXPECT_NEAR(told[u"changes"_s][u"time_s"_s].toDouble(), isPlaced ? -40.5 : 0,
                row.Result == u"found"_s ? 0.4 : 2);
  }
}

TEST_F(Cli, APictureFindsItsPass) {
  const QImage seen = SeenByNoaa19();
  ASSERT_TRUE(seen.save(Path("party.png")));
  ASSERT_TRUE(seen.mirrored(true, false).save(Path("NOAA-19-20220223-120000Z.png")));
  const struct {
    const char* Words;
    int Status;
    QString Stored;  ///< of the winner; empty for none
    int Passes;
    const char* ErrHas;
  } rows[] = {
      {"--picture HERE/NOAA-19-20220223-120000Z.png --satellite NOAA_19 --satellite NOAA_15", 0,
       u"mirrored"_s, 14, "--satellite 33591 --start 202202231742"},
      {"--picture HERE/NOAA-19-20220223-120000Z.png --from 2022-02-24 --stored received", 0, {}, 6, ""},
      {"--picture HERE/party.png --satellite NOAA_18 --from 2022-02-23 --days 0", 2, {}, 0, "--days"},
      {"--picture HERE/party.png --satellite METEOR_M2 --from 2022-02-23",
       1,
       {},
       0,
       "No satellite that sends pictures of 909 columns"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Words);
    const Outcome outcome = Run(std::string("identify --elements DEMO --station 48,12,300 ") + row.Words);
    EXPECT_EQ(outcome.Status, row.Status) << outcome.Err.toStdString();
    EXPECT_TRUE(outcome.Err.contains(QLatin1StringView(row.ErrHas))) << outcome.Err.toStdString();
    const QJsonObject told = QJsonDocument::fromJson(outcome.Out.toUtf8()).object();
    EXPECT_EQ(told[u"passes"_s].toInt(), row.Passes);
    EXPECT_EQ(told[u"winner"_s][u"stored"_s].toString(), row.Stored) << outcome.Out.left(999).toStdString();
    if (row.Stored.isEmpty()) continue;
    EXPECT_EQ(told[u"winner"_s][u"satellite"_s].toString(), u"NOAA 19"_s);
    EXPECT_EQ(told[u"winner"_s][u"result"_s].toString(), u"found"_s);
    EXPECT_TRUE(told[u"winner"_s][u"start_utc"_s].toString().startsWith(u"2022-02-23T17:42:00."_s));
    EXPECT_EQ(told[u"places"_s].toArray().size(), 4 * row.Passes);
    EXPECT_GT(told[u"margin"_s].toDouble(), 1.6);
  }
}

TEST_F(Cli, DefaultsAreTheUsersSettings) {
  app::Settings settings(app::RegistryStore(Path("config")), u"Pelorin"_s, {});
  MakeFolder("my elements");
  QFile::copy(kDemoFile, Path("my elements/a.2LI"));
  settings.TwoLineDataPath.Value = Path("my elements");
  settings.ObserverLatitude.Value = u"-33.9"_s;
  settings.ObserverLongitude.Value = u"18.4"_s;
  settings.ImagePathList.Value = app::ToCommaText({Path("my elements")});
  settings.Save();
  const QStringList before = files::ReadLines(Path("config/registry.reg"));
  const QStringList fromSettings = Run("passes --from 2022-02-23 --satellite NOAA_18").Lines();
  const QStringList given = Run("passes --from 2022-02-23 --satellite NOAA_18 --elements DEMO --station "
                                "-33.9,18.4,150 --min-elevation 1.5")
                                .Lines();
  EXPECT_FALSE(given.isEmpty());
  EXPECT_EQ(fromSettings, given);
  files::ReplaceFile(Path("my elements/02231015V.png"), "x");
  const Outcome found = Run("picture --find 02231017");
  EXPECT_EQ(found.Lines().value(0), Path("my elements/02231015V.png"));
  EXPECT_EQ(found.Err, Path("my elements/02231015V.png") + u": Error Reading File!\n"_s);
  EXPECT_EQ(files::ReadLines(Path("config/registry.reg")), before) << "it only looks";
}

TEST_F(Cli, SetsOfEveryFormAreListedAndBadOnesNamed) {
  MakeFolder("keps");
  QFile::copy(kDemoFile, Path("keps/a.2li"));
  files::ReplaceFile(Path("keps/passes.csv"), Run("passes --elements DEMO --from 2022-02-23").Out.toUtf8());
  orbit::OmmRecord message = tests::DemoMessages(0, 1)[0];
  message[orbit::kOmmName] = R"(New, \"1\")";
  message[orbit::kOmmCatalogueNumber] = "799500123";
  files::ReplaceFile(Path("keps/new.json"), tests::JsonOf({message}));
  const Outcome good = Run("elements --elements HERE/keps");
  EXPECT_EQ(good.Err, QString());
  ASSERT_EQ(good.Lines().size(), 47);
  EXPECT_TRUE(good.Lines()[46].startsWith(u"\"NEW, \"\"1\"\"\",799500123,000,2022-03-04T12:00:00Z,"_s));

  files::ReplaceFile(Path("keps/bad.tle"),
                     "BROKEN\r\n1 00001U\r\n2 00001\r\nHYPER\r\n1 00002U 22032A   22053.20978316\r\n"
                     "2 00002  98.5313  39.9325 9999999   4.9627 355.1680  0.00000000\r\n");
  const Outcome mixed = Run("elements --elements HERE/keps");
  EXPECT_EQ(mixed.Out, good.Out);
  EXPECT_TRUE(mixed.Err.contains(u"BROKEN"_s) && mixed.Err.contains(u"HYPER"_s));
  // What would be used, and how old it would be.
  files::ReplaceFile(Path("keps/old.2li"), tests::DemoSets(0, 1).replace("22053.", "22008."));
  const QStringList near = Run("elements --elements HERE/keps --near 20220107").Lines();
  EXPECT_EQ(near.filter(u"old.2li"_s), QStringList(u"NOAA 6,11416,999,2022-01-08T14:25:58Z,-1.1,old.2li"_s));
}

TEST_F(Cli, AnUpdateTellsByItsStatusWhatCame) {
  using tests::ElementServer;
  ElementServer server;
  qputenv("PELORIN_ELEMENTS_URL", server.Base().toLatin1());
  dataFolder_ = Path("user");
  MakeFolder("keps");
  QFile::copy(kDemoFile, Path("keps/weather.2li"));
  const auto sets = [](int count) { return ElementServer::Reply("200 OK", tests::DemoCsv(0, count)); };
  const auto no = [](const char* why) { return ElementServer::Reply("403 Forbidden", why); };
  const QString weather = u"gp.php?GROUP=weather&FORMAT=csv"_s, quiet;
  const struct {
    const char *Label, *Words;
    int Status;
    QString Row;  ///< the last of the table ends so
    QString Says;
    ElementServer::Answer Answer = {};
    bool IsSoon = false;  ///< after the row before, so that nothing may be asked for
  } rows[] = {
      {"a satellite that nobody knows", "--satellite NOAA_99", 2, quiet, u"catalogue number"_s},
      {"all and a group", "--all --group weather", 2, quiet, u"--all goes without"_s},
      {"messages for lines", "", 0, u"weather.2li,GROUP=weather,updated,weather.csv,0"_s, quiet, sets(45)},
      {"soon again", "--all", 0, u"weather.csv,GROUP=weather,not asked for again,,0"_s, quiet, no(""), true},
      {"nothing new", "--group Weather", 0, u",already current,,0"_s, quiet,
       no("GP data has not updated since")},
      {"blocked", "", 1, u",failed,,0"_s, u"You are blocked\n"_s, no("<html><p>You are blocked</p></html>")},
      {"far fewer", "", 3, u",not updated,,0"_s, u"Element sets in it: 45"_s, sets(10)},
      {"far fewer, accepted", "--accept", 0, u"weather.csv,GROUP=weather,updated,,0"_s, quiet, sets(10)},
      {"a satellite that is known", "--satellite NOAA_9", 1,
       u"15427.csv,CATNR=15427,unknown to the service,,0"_s, u"1 unknown to the service"_s}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    if (!row.IsSoon) QFile::remove(Path("user/element-requests.txt"));
    server.Answers[weather] = row.Answer;
    server.Asked.clear();
    const Outcome outcome = Run(std::string("update --to HERE/keps ") + row.Words);
    EXPECT_EQ(outcome.Status, row.Status) << outcome.Err.toStdString();
    EXPECT_TRUE(outcome.Out.trimmed().endsWith(row.Row)) << outcome.Out.toStdString();
    EXPECT_EQ(outcome.Out.isEmpty(), row.Row.isEmpty());
    EXPECT_EQ(outcome.Err.isEmpty(), row.Says.isEmpty());
    EXPECT_TRUE(outcome.Err.contains(row.Says)) << outcome.Err.toStdString();
    EXPECT_EQ(server.Asked.isEmpty(), row.IsSoon || row.Status == 2);
  }
  server.Answers[u"gp.php?CATNR=28654&FORMAT=csv"_s] = sets(1);
  const std::string single = "update --to HERE/new --satellite 28654 --format json";
  EXPECT_EQ(Run(single).Status, 1) << "folders that are named are not made";
  MakeFolder("new");
  const QJsonArray told = QJsonDocument::fromJson(Run(single).Out.toUtf8()).array();
  EXPECT_EQ(told[0][u"outcome"_s].toString(), u"updated"_s);
  EXPECT_TRUE(QFile::exists(Path("new/28654.csv")));
  qunsetenv("PELORIN_ELEMENTS_URL");
}

TEST_F(Cli, AlignmentsAreListedWithTheirMedians) {
  dataFolder_ = Folder();
  files::ReplaceFile(Path("alignments.csv"),
                     "satellite,start_utc,columns,rows,clock_correction_s,chance_peaks\n"
                     "NOAA 19,2022-02-23T07:51:42Z,1040,1200,1.5,\n"
                     "\"METEOR-M2, 4\",2022-02-24T07:51:42Z,1040,1200,-2,1e-7\ncut\n");
  const Outcome csv = Run("alignments");
  EXPECT_EQ(csv.Lines().value(1).section(u',', 1, 4), u"\"METEOR-M2, 4\",,2022-02-24T07:51:42.000Z"_s);
  EXPECT_TRUE(csv.Err.contains(u"Station's clock: \u22120.3 s, by the last 2"_s)) << csv.Err.toStdString();
  EXPECT_TRUE(csv.Err.contains(u"(line 4)"_s));
  const QJsonArray json =
      QJsonDocument::fromJson(Run("alignments --format json --satellite noaa_19").Out.toUtf8()).array();
  ASSERT_EQ(json.size(), 1);
  EXPECT_EQ(json[0][u"clock_correction_s"_s].toDouble(), 1.5);
  const QStringList text = Run("alignments --format text").Lines();
  ASSERT_EQ(text.size(), 4);
  EXPECT_EQ(text[1].indexOf(u"-2.00"_s) + 1, text[2].indexOf(u"1.50"_s)) << "points stand below each other";
  EXPECT_TRUE(text[3].startsWith(u"Station's clock"_s));
}

TEST_F(Cli, ScansAndLinesTellTheGeometry) {
  const QStringList scan = Run("scan --satellite NOAA_19 --height 860").Lines();
  ASSERT_EQ(scan.size(), 456);
  EXPECT_GT(scan[455].section(u',', 1).toDouble(), 1400);
  const QStringList line = Run("line --elements DEMO --satellite NOAA_19 --from 2022-02-23T09:39:00").Lines();
  ASSERT_EQ(line.size(), 910);
  EXPECT_TRUE(line[1].startsWith(u"-454,"_s));
  // South-bound over the British Isles: positive positions lie east.
  EXPECT_GT(line[909].section(u',', 2).toDouble(), line[1].section(u',', 2).toDouble());

  // Rows of the reference table.
  const std::string seen = "line --elements " PELORIN_TEST_DATA
                           "/swath-elements.2li --satellite METEOR-M2_4 --scanner MSU-MR_LRPT --from ";
  const struct {
    const char *options, *column, *latitude, *longitude;
  } rows[] = {
      {"2461274.059140 --roll 1.76 --pitch -0.29 --yaw 0.67", "446,", "35.97327", "-156.55534"},
      {"2461274.339050 --roll 0.95 --pitch -0.2 --yaw 2.5", "919,", "42.38650", "110.01096"},
      {"2461274.339050", "165,", "43.81646", "97.98529"},
  };
  for (const auto& row : rows) {
    const QStringList columns =
        Run(seen + row.options).Lines().filter(QRegularExpression(u'^' + QLatin1StringView(row.column)));
    ASSERT_EQ(columns.size(), 1) << row.options;
    EXPECT_NEAR(columns[0].section(u',', 1, 1).toDouble(), std::stod(row.latitude), 1e-5);
    EXPECT_NEAR(columns[0].section(u',', 2).toDouble(), std::stod(row.longitude), 1e-5);
  }
  const QStringList scanners = Run("scanners --satellite NOAA_19").Lines();
  EXPECT_EQ(scanners.filter(u"AVHRR APT,APT,909,110.74,zones,2.000,"_s).size(), 1)
      << scanners.join(u'\n').toStdString();
  EXPECT_EQ(scanners.size(), 3);
}

}  // namespace
}  // namespace pelorin
