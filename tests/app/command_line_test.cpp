#include "app/command_line.h"

#include <gtest/gtest.h>

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

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
    SCOPED_TRACE(row.Arguments.join(u' ').toStdString());
    EXPECT_EQ(line.Help, row.Help);
    EXPECT_EQ(line.Version, row.Version);
    EXPECT_EQ(line.UnknownOption, row.UnknownOption);
    EXPECT_EQ(line.Parameters, row.Parameters);
  }
}

}  // namespace
}  // namespace pelorin::app
