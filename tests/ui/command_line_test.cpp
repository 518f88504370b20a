#include <gtest/gtest.h>

#include <QFile>
#include <QTest>

#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

TEST(CommandLine, PassOfTheStringIsFoundOrToldToBeMissing) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  program.Start();
  const QStringList passes = program.Find<TListBox>("ListBoxPasses")->Items().filter(u"0223075"_s);
  ASSERT_EQ(passes.size(), 1);
  const QString stamp = passes.first().left(10);
  program.Close();
  QFile::remove(program.Path(u"bin/PassList.txt"_s));
  program.Boxes.Take();

  const QString lastDigitOff = stamp.left(9) + (stamp.endsWith(u'9') ? u'0' : u'9');
  const struct {
    const char* Label;
    QString Parameter, Said;
  } rows[] = {
      {"to the second", stamp, QString()},
      {"with its year", u"2022"_s + stamp, QString()},
      {"the last second's digit gives way", lastDigitOff, QString()},
      {"a minute too early", u"0223074945"_s,
       u"Message: Parameter 0223074945 specified but pass string 02230749 not found.  Note that the pass "
       u"string may "
       "have been truncated in an effort to find a matching pass"_s},
      {"no time at all", u"0231NOON"_s,
       u"Error: The pass string 0231NOON is no time: 'ON' is not a valid integer value"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    program.Start({row.Parameter});
    const QString said = program.Boxes.Take().join(u'\n');
    EXPECT_TRUE(row.Said.isEmpty() ? said.isEmpty() : said.startsWith(row.Said)) << said.toStdString();
    const session::Session& session = program.Form->Shared();
    EXPECT_EQ(session.Run.AutomaticRun, row.Said.isEmpty());
    EXPECT_EQ(program.Form->CurrentPage(), row.Said.isEmpty() ? Page::GroundPath : Page::WorldMap);
    if (row.Said.isEmpty()) {
      EXPECT_EQ(orbit::FormatDateTime("mmddhhnn", session.Pass.PassStart), stamp.left(8).toStdString());
    }
    EXPECT_EQ(session.Map.Mode,
              row.Said.isEmpty() ? session::Timeframe::Manual : session::Timeframe::RealTime);
    EXPECT_FALSE(QFile::exists(program.Path(u"bin/PassList.txt"_s))) << "only the user's own lists are saved";
    program.Close();
  }
}

TEST(CommandLine, NoBoxWaitsWhileAPassIsMade) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
  QFile::remove(program.Path(u"share/pelorin"_s));
  program.Start({u"202202230751"_s});
  EXPECT_EQ(program.Form->Shared().Run.AutomaticFailure, u"the program was closed before the map was made"_s);
  EXPECT_TRUE(QTest::qWaitFor([&program] { return !program.Form->isVisible(); }, 5000));
  EXPECT_EQ(program.Form->Shared().Run.AutomaticFailure, QString());
  EXPECT_TRUE(QFile::exists(program.Path(u"bin/Result.jpg"_s))) << "on black ground";
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  EXPECT_TRUE(program.CallerTexts.contains(u"Topography will not be available"_s));
  program.Close();

  // With no pass to make, somebody has to read it all.
  program.Start({u"202202230101"_s});
  const QStringList said = program.Boxes.Take();
  EXPECT_TRUE(said.contains(u"Message: Topography will not be available"_s));
  EXPECT_TRUE(said.last().startsWith(u"Message: Parameter 202202230101 specified"_s));
  EXPECT_EQ(program.Form->Shared().Run.AutomaticFailure, QString());
  program.Close();
}

}  // namespace
}  // namespace pelorin::tests
