#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <array>
#include <cstring>
#include <functional>

#include <sys/inotify.h>
#include <unistd.h>

#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

void WriteFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

/// The files of a folder that are replaced while something is done, as often as they are.
QStringList ReplacedWhile(const QString& folder, const std::function<void()>& work) {
  const int watch = inotify_init1(IN_NONBLOCK);
  inotify_add_watch(watch, QFile::encodeName(folder).constData(), IN_MOVED_TO);
  work();
  std::array<char, 65536> buffer{};
  const ssize_t size = read(watch, buffer.data(), buffer.size());
  close(watch);
  QStringList names;
  for (ssize_t at = 0; at < size;) {
    inotify_event event{};
    std::memcpy(&event, buffer.data() + at, sizeof event);
    names.append(QFile::decodeName(buffer.data() + at + sizeof event));
    at += static_cast<ssize_t>(sizeof event + event.len);
  }
  return names;
}

TEST(StartUp, SecondStartFindsWhatTheFirstOneLeft) {
  ProgramFixture program;
  program.Boxes.AnswerConfirm = true;
  program.Start();
  EXPECT_EQ(program.Form->CurrentPage(), Page::Setup) << "a new user begins with the station";
  const QStringList said = program.Boxes.Take();
  EXPECT_TRUE(QFile::exists(program.Path(u"bin/weather.2li"_s))) << "a name that an update finds";
  ASSERT_EQ(said.size(), 2);
  EXPECT_TRUE(said[0].startsWith(u"Yes? There are no element sets yet"_s)) << said[0].toStdString();
  EXPECT_EQ(said[1],
            u"Message: Please drag one or more satellites from the Available list to the Active list."_s);
  EXPECT_EQ(program.SplashTexts.first(), u"Load satellite data ..."_s);
  EXPECT_TRUE(program.SplashTexts.contains(u"Overlay master image, generating country bondaries 95%"_s))
      << "the master is made at the first start";
  EXPECT_EQ(program.Find<TListBox>("ListBoxAvailable")->count(), 45);
  EXPECT_EQ(program.Find<QLineEdit>("EditHeight")->text(), u"150"_s);

  program.Form->Shared().Activate(u"NOAA 19"_s);
  program.Form->Shared().Activate(u"METEOR M2"_s);
  program.Form->Shared().ChooseSatellite(1);
  auto* latitude = program.Find<QLineEdit>("EditLatitude");
  latitude->setText(u"48,25"_s);
  program.Find<QAction>("MenuSavePassDetails")->trigger();
  program.Find<QAction>("MenuFootprint2")->trigger();
  program.Find<QAction>("MenuInterval20")->trigger();
  program.Form->resize(1010, 707);
  EXPECT_EQ(ReplacedWhile(program.Path(u"config"_s), [&program] { program.Close(); }),
            QStringList(u"registry.reg"_s))
      << "a kill leaves all old values or all new ones";

  EXPECT_EQ(program.SavedText(u"ObserverLatitude"_s), u"48,25"_s) << "as typed";
  EXPECT_EQ(program.SavedText(u"SatelliteList"_s), u"\"METEOR M2\",\"NOAA 19\""_s);
  EXPECT_EQ(program.SavedText(u"PrimarySatellite"_s), u"NOAA 19"_s);
  EXPECT_EQ(program.SavedNumber(u"SavePassDetails"_s), 1);
  EXPECT_EQ(program.SavedNumber(u"FootprintShowLevel"_s), 2);
  EXPECT_EQ(program.SavedText(u"ResultsPath"_s), program.Path(u"bin/"_s));

  program.Start();
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  EXPECT_FALSE(program.SplashTexts.join(u' ').contains(u"master"_s)) << "the master is there";
  EXPECT_EQ(program.Form->CurrentPage(), Page::WorldMap);
  EXPECT_EQ(program.Find<TListBox>("ListBoxActive")->Items(), QStringList({u"METEOR M2"_s, u"NOAA 19"_s}));
  EXPECT_EQ(program.Form->Shared().SelectedSatellite()->Name, "NOAA 19");
  EXPECT_EQ(program.Find<QLineEdit>("EditLatitude")->text(), u"48.25"_s);
  EXPECT_TRUE(program.Find<QAction>("MenuInterval20")->isChecked());
  EXPECT_EQ(program.Form->size(), QSize(1010, 707));
}

TEST(StartUp, InstalledProgramLeavesWhatAnEarlierVersionKeptBesideIt) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  program.Set(u"TwoLineDataPath"_s, program.Path(u"bin/"_s));
  program.Set(u"ResultsPath"_s, program.Path(u"bin/"_s));
  QFile::remove(program.Path(u"bin/pelorin-portable.txt"_s));
  QFile master(program.Path(u"bin/Overlay.bmp"_s));
  ASSERT_TRUE(master.open(QIODevice::WriteOnly) && master.resize(31'364'278));
  const QStringList before = QDir(program.Path(u"bin"_s)).entryList();
  program.Start();
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  EXPECT_FALSE(program.SplashTexts.join(u' ').contains(u"master"_s)) << "the one beside the program is read";
  EXPECT_EQ(program.Find<TListBox>("ListBoxAvailable")->count(), 44);
  program.Close();
  EXPECT_EQ(program.SavedText(u"TwoLineDataPath"_s), program.Path(u"user/elements/"_s));
  EXPECT_EQ(program.SavedText(u"ResultsPath"_s), program.Path(u"user/results/"_s));
  EXPECT_TRUE(QFile::exists(program.Path(u"user/elements/weather.2li"_s)));
  EXPECT_TRUE(QFile::exists(program.Path(u"user/results/PassList.txt"_s)));
  EXPECT_EQ(QDir(program.Path(u"bin"_s)).entryList(), before);
}

/// Whatever is wrong around it, the program says so and runs on.
TEST(StartUp, BadSurroundingsAreToldAndSurvived) {
  const QByteArray noise("\x00\xff\xfe\x01 garbage\n\x02\x03", 15);
  const struct {
    const char* Label;
    std::function<void(ProgramFixture&)> Spoil;
    QString Said;  ///< begins like this
  } rows[] = {
      {"element folder missing",
       [](ProgramFixture& p) { p.Set(u"TwoLineDataPath"_s, p.Path(u"nowhere/"_s)); },
       u"Warning 270: Pelorin could find no satellite data."_s},
      {"element file is a folder",
       [](ProgramFixture& p) {
         QFile::remove(p.Path(u"bin/weather.2li"_s));
         QDir(p.Path(u"bin"_s)).mkdir(u"weather.2li"_s);
       },
       u"Warning 270: "_s},
      {"element file is noise",
       [&noise](ProgramFixture& p) {
         QFile::remove(p.Path(u"bin/weather.2li"_s));
         WriteFile(p.Path(u"bin/weather.2li"_s), noise);
       },
       u"Warning 270: "_s},
      {"backdrop is no picture",
       [&noise](ProgramFixture& p) { WriteFile(p.Path(u"elsewhere/UserMap.jpg"_s), noise); }, u"Message: "_s},
      {"settings are noise",
       [&noise](ProgramFixture& p) { WriteFile(p.Path(u"config/registry.reg"_s), noise); },
       u"Yes? There are no"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    ProgramFixture program;
    program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
    row.Spoil(program);
    if (program.SavedText(u"ObserverHeight"_s) == u"(none)"_s)
      QFile::remove(program.Path(u"bin/weather.2li"_s));
    program.Start();
    const QStringList said = program.Boxes.Take();
    ASSERT_FALSE(said.isEmpty());
    EXPECT_TRUE(said.first().startsWith(row.Said)) << said.join(u'\n').toStdString();
    program.Form->ShowPage(Page::Debug);
    EXPECT_GE(
        program.Form->findChild<QWidget*>(u"TabSheetDebug"_s)->findChildren<TListBox*>().last()->count(), 61);
    program.Close();
  }
}

TEST(StartUp, ElementsThatCannotBeUsedAreToldQuietly) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  program.Start();
  EXPECT_TRUE(program.Find("StatusElements")->isHidden());
  program.Close();
  QFile::link(u"gone.2li"_s, program.Path(u"bin/a.2li"_s));
  WriteFile(program.Path(u"bin/<b>.tle"_s), "STILL\n1 21264U\n2 21264\n");
  program.Start();
  const auto* status = program.Find<QLabel>("StatusElements");
  EXPECT_TRUE(status->isVisible());
  EXPECT_EQ(status->text(), u"Left out of the elements: 2"_s);
  EXPECT_EQ(program.Form->Shared().Satellites().Count(), 45) << "the rest is loaded";
  QString shown;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&shown] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    shown = dialog->findChild<QLabel*>(u"LabelLeftOut"_s)->text();
    dialog->reject();
  });
  watch.start(5);
  program.Find<QAction>("ViewSatelliteData")->trigger();
  EXPECT_EQ(shown,
            u"Left out:\na.2li, because it cannot be read\n"
            "STILL in <b>.tle, because its elements describe no orbit"_s);
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  program.Close();
}

TEST(StartUp, MapIsCentredWhereTheStationIs) {
  const struct {
    QString Longitude;
    bool Pacific;
  } rows[] = {{u"150"_s, false}, {u"150.01"_s, true}, {u"-160"_s, true}, {u"210"_s, false}};
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  for (const auto& row : rows) {
    program.Set(u"ObserverLongitude"_s, row.Longitude);
    program.Start();
    EXPECT_EQ(program.Form->Shared().Map.PacificCentred, row.Pacific) << row.Longitude.toStdString();
    program.Close();
  }
}

TEST(StartUp, StaleElementsAreToldBeyondSixtyDays) {
  const struct {
    double LocalAgeDays;  // of the oldest set, whose epoch is 2022 day 52.54566227
    bool Warns;
  } rows[] = {{60.98, false}, {61.02, true}};
  for (const auto& row : rows) {
    ProgramFixture program;
    program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
    program.Start();
    double oldest = 1e9;
    const elements::TSatelliteList& satellites = program.Form->Shared().Satellites();
    for (int index = 0; index < satellites.Count(); ++index) {
      oldest = std::min(oldest, satellites.Satellite(index).Epoch);
    }
    program.Close();
    program.Boxes.Take();
    // An hour ahead of UTC in April, the clock on the wall decides.
    program.Now.Days = oldest - 2415018.5 + row.LocalAgeDays - 1.0 / 24;
    program.Boxes.AnswerRetry = true;
    bool isUpdateOpened = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&isUpdateOpened] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      isUpdateOpened = dialog->objectName() == u"FormUpdateKeplers"_s;
      dialog->reject();
    });
    watch.start(5);
    program.Start();
    EXPECT_EQ(isUpdateOpened, row.Warns);
    const QStringList said = program.Boxes.Take();
    ASSERT_EQ(said.size(), row.Warns ? 1 : 0) << said.join(u'\n').toStdString();
    if (!row.Warns) continue;
    EXPECT_EQ(
        said[0],
        u"Retry? 280: Warning: Satellite Data is Stale.  Your data contains some entries that are more than "
        u"60 "
        "days old.  Use the View, Satellite data... menu for details of the actual satellite data.\r\rClick "
        "Retry to update from the Internet\rClick Ignore to use the stale data\rClick Help for more "
        "information."_s);
  }
}

}  // namespace
}  // namespace pelorin::tests
