#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTimer>
#include <algorithm>
#include <functional>

#include <sys/inotify.h>
#include <unistd.h>

#include "files/atomic_file.h"
#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

/// How often the settings are replaced while something is done.
qsizetype Replacements(const QString& folder, const std::function<void()>& work) {
  const int watch = inotify_init1(IN_NONBLOCK);
  inotify_add_watch(watch, QFile::encodeName(folder).constData(), IN_MOVED_TO);
  work();
  QByteArray events(65536, 0);
  events.resize(std::max<ssize_t>(read(watch, events.data(), events.size()), 0));
  close(watch);
  return events.count("registry.reg");
}

class StartUp : public testing::Test, protected ProgramFixture {};

TEST_F(StartUp, SecondStartFindsWhatTheFirstOneLeft) {
  Boxes.AnswerConfirm = true;
  Start();
  EXPECT_EQ(Form->CurrentPage(), Page::Setup) << "a new user begins with the station";
  const QStringList said = Boxes.Take();
  EXPECT_TRUE(QFile::exists(Path(u"bin/weather.2li"_s))) << "a name that an update finds";
  ASSERT_EQ(said.size(), 2);
  EXPECT_TRUE(said[0].startsWith(u"Yes? There are no element sets yet"_s)) << said[0].toStdString();
  EXPECT_EQ(said[1],
            u"Message: Please drag one or more satellites from the Available list to the Active list."_s);
  EXPECT_EQ(SplashTexts.first(), u"Load satellite data ..."_s);
  EXPECT_TRUE(SplashTexts.contains(u"Overlay master image, generating country bondaries 95%"_s))
      << "the master is made at the first start";
  EXPECT_EQ(Find<TListBox>("ListBoxAvailable")->count(), 45);
  EXPECT_EQ(Text("EditHeight"), u"150"_s);

  Form->Shared().Activate(u"NOAA 19"_s);
  Form->Shared().Activate(u"METEOR M2"_s);
  Form->Shared().ChooseSatellite(1);
  Find<QLineEdit>("EditLatitude")->setText(u"48,25"_s);
  Find<QLineEdit>("EditLongitude")->setText(u"-160"_s);
  Find<QAction>("MenuSavePassDetails")->trigger();
  Find<QAction>("MenuFootprint2")->trigger();
  Find<QAction>("MenuInterval20")->trigger();
  Form->resize(1010, 707);
  EXPECT_EQ(Replacements(Path(u"config"_s), [this] { Close(); }), 1) << "all old values or all new ones";

  EXPECT_EQ(SavedText(u"ObserverLatitude"_s), u"48,25"_s) << "as typed";
  EXPECT_EQ(SavedNumber(u"SavePassDetails"_s), 1);
  EXPECT_EQ(SavedNumber(u"FootprintShowLevel"_s), 2);

  Start();
  EXPECT_EQ(Boxes.Take(), QStringList());
  EXPECT_FALSE(SplashTexts.join(u' ').contains(u"master"_s)) << "the master is there";
  EXPECT_EQ(Form->CurrentPage(), Page::WorldMap);
  EXPECT_EQ(Find<TListBox>("ListBoxActive")->Items(), QStringList({u"METEOR M2"_s, u"NOAA 19"_s}));
  EXPECT_EQ(Form->Shared().SelectedSatellite()->Name, "NOAA 19");
  EXPECT_EQ(Text("EditLatitude"), u"48.25"_s);
  EXPECT_TRUE(Form->Shared().Map.PacificCentred);
  EXPECT_TRUE(Find<QAction>("MenuInterval20")->isChecked());
  EXPECT_EQ(Form->size(), QSize(1010, 707));
}

TEST_F(StartUp, InstalledProgramLeavesWhatAnEarlierVersionKeptBesideIt) {
  GiveOrdinarySettings(u"\"NOAA 19\""_s);
  Set(u"TwoLineDataPath"_s, Path(u"bin/"_s));
  Set(u"ResultsPath"_s, Path(u"bin/"_s));
  QFile::remove(Path(u"bin/pelorin-portable.txt"_s));
  QFile master(Path(u"bin/Overlay.bmp"_s));
  ASSERT_TRUE(master.open(QIODevice::WriteOnly) && master.resize(31'364'278));
  const QStringList before = QDir(Path(u"bin"_s)).entryList();
  Start();
  EXPECT_EQ(Boxes.Take(), QStringList());
  EXPECT_TRUE(SplashTexts.join(u' ').contains(u"master"_s)) << "one of its own is drawn, in the cache";
  EXPECT_EQ(Find<TListBox>("ListBoxAvailable")->count(), 44);
  Close();
  EXPECT_EQ(SavedText(u"TwoLineDataPath"_s), Path(u"user/elements/"_s));
  EXPECT_EQ(SavedText(u"ResultsPath"_s), Path(u"user/results/"_s));
  EXPECT_TRUE(QFile::exists(Path(u"user/elements/weather.2li"_s)));
  EXPECT_TRUE(QFile::exists(Path(u"user/results/PassList.txt"_s)));
  EXPECT_EQ(QDir(Path(u"bin"_s)).entryList(), before);
}

TEST_F(StartUp, BadSurroundingsAreToldAndSurvived) {
  const QByteArray noise("\x00\xff\xfe\x01 garbage\n\x02\x03", 15);
  GiveOrdinarySettings(u"\"NOAA 19\""_s);
  Set(u"TwoLineDataPath"_s, Path(u"nowhere/"_s));
  files::ReplaceFile(Path(u"elsewhere/UserMap.jpg"_s), noise);
  StartOn(Page::Debug);
  const QStringList said = Boxes.Take();
  EXPECT_TRUE(said.value(0).startsWith(u"Message: "_s)) << "the backdrop";
  EXPECT_TRUE(said.value(1).startsWith(u"Warning 270: Pelorin could find no satellite data."_s));
  // The self-check's orbit: 36 turns and 166° after its ascending node, 4 minutes before the equator.
  const QStringList check = Find<TListBox>("ListBoxPropagator")->Items();
  ASSERT_EQ(check.size(), 61);
  EXPECT_TRUE(check.last().startsWith(u"1999-02-05 19:34:00  "_s));
  const auto northKm = [&check](qsizetype minute) {
    return check[minute].split(u' ', Qt::SkipEmptyParts).value(4).toDouble();
  };
  EXPECT_GT(northKm(3), 0);
  EXPECT_LT(northKm(5), 0);
  Close();

  files::ReplaceFile(Path(u"config/registry.reg"_s), noise);
  QFile::remove(Path(u"bin/weather.2li"_s));
  Start();
  EXPECT_TRUE(Boxes.Take().value(0).startsWith(u"Yes? There are no element sets yet"_s));
}

TEST_F(StartUp, ElementsThatCannotBeUsedAreToldQuietly) {
  GiveOrdinarySettings(u"\"NOAA 19\""_s);
  Start();
  EXPECT_TRUE(Find("StatusElements")->isHidden());
  Close();
  QFile::link(u"gone.2li"_s, Path(u"bin/a.2li"_s));
  files::ReplaceFile(Path(u"bin/<b>.tle"_s), "STILL\n1 21264U\n2 21264\n");
  Start();
  EXPECT_TRUE(Find("StatusElements")->isVisible());
  EXPECT_EQ(Text("StatusElements"), u"Left out of the elements: 2"_s);
  EXPECT_EQ(Form->Shared().Satellites().Count(), 45) << "the rest is loaded";
  InDialog("ViewSatelliteData", [&](QDialog&) {
    EXPECT_EQ(Text("LabelLeftOut"),
              u"Left out:\na.2li, because it cannot be read\n"
              "STILL in <b>.tle, because its elements describe no orbit"_s);
  });
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(StartUp, StaleElementsAreToldBeyondSixtyDays) {
  GiveOrdinarySettings(u"\"NOAA 19\""_s);
  for (const double age : {60.98, 61.02}) {
    SCOPED_TRACE(age);
    Boxes.AnswerRetry = true;
    // The oldest set is of day 53.19536745. An hour ahead of UTC in April, the clock on the wall decides.
    Now.Days = orbit::MakeDateTime(2021, 12, 31).Days + 53.19536745 + age - 1.0 / 24;
    QString opened;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&opened] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      opened = dialog->objectName();
      dialog->reject();
    });
    watch.start(5);
    Start();
    const QStringList said = Boxes.Take();
    EXPECT_EQ(opened, age > 61 ? u"FormUpdateKeplers"_s : QString());
    ASSERT_EQ(said.size(), age > 61 ? 1 : 0);
    EXPECT_TRUE(said.isEmpty() || said[0].startsWith(u"Retry? 280: Warning: Satellite Data is Stale.  "_s));
    Close();
  }
}

}  // namespace
}  // namespace pelorin::tests
