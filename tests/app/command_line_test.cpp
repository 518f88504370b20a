#include "app/command_line.h"

#include <gtest/gtest.h>

#include "orbit/scalar_math.h"

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

TEST(CommandLine, PassStringFindsItsPass) {
  const orbit::TDateTime now = orbit::MakeDateTime(2022, 2, 22, 13, 14, 15);
  const QStringList entries = {u"0412183002 S 1 700 A"_s, u"0412183049 N 2 700 B"_s,
                               u"0412183102 S 3 700 C"_s};
  const struct {
    QString PassString;
    int Index;
    QString Key;
    orbit::TDateTime Time;
  } rows[] = {
      {u"0412183102"_s, 2, u"0412183102"_s, orbit::MakeDateTime(2022, 4, 12, 18, 31, 2)},
      {u"0412183045"_s, 1, u"041218304"_s, orbit::MakeDateTime(2022, 4, 12, 18, 30, 45)},
      {u"20010412183025"_s, 0, u"04121830"_s, orbit::MakeDateTime(2001, 4, 12, 18, 30, 25)},
      {u"200104121831"_s, 2, u"04121831"_s, orbit::MakeDateTime(2001, 4, 12, 18, 31)},
      {u"0412183245"_s, -1, u"04121832"_s, orbit::MakeDateTime(2022, 4, 12, 18, 32, 45)},
  };
  for (const auto& row : rows) {
    const PassMatch match = FindPassByString(row.PassString, entries, now);
    EXPECT_EQ(match.Index, row.Index) << row.PassString.toStdString();
    EXPECT_EQ(match.Key, row.Key);
    EXPECT_EQ(match.Time, row.Time);
  }
  for (const QString& text : {u""_s, u"04x21830"_s, u"0230183000"_s, u"04\u0664\u0664183000"_s}) {
    EXPECT_THROW(FindPassByString(text, entries, now), orbit::ConvertError) << text.toStdString();
  }
}

TEST(CommandLine, OptionsAreToldFromPasses) {
  const struct {
    QStringList Arguments;
    bool Help, Version;
    QString UnknownOption;
    QStringList Parameters;
  } rows[] = {
      {{}, false, false, {}, {}},
      {{u"0412183045"_s, u"--help"_s}, true, false, {}, {u"0412183045"_s}},
      {{u"-v"_s}, false, true, {}, {}},
      {{u"--verbose"_s, u"-x"_s, u"0412"_s}, false, false, u"--verbose"_s, {u"0412"_s}},
      {{u"--"_s, u"-0412"_s, u"--help"_s}, false, false, {}, {u"-0412"_s, u"--help"_s}},
  };
  for (const auto& row : rows) {
    const CommandLine line = ReadCommandLine(row.Arguments);
    const std::string label = row.Arguments.join(u' ').toStdString();
    EXPECT_EQ(line.Help, row.Help) << label;
    EXPECT_EQ(line.Version, row.Version) << label;
    EXPECT_EQ(line.UnknownOption, row.UnknownOption) << label;
    EXPECT_EQ(line.Parameters, row.Parameters) << label;
  }
}

}  // namespace
}  // namespace pelorin::app
