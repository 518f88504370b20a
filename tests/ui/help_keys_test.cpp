#include <gtest/gtest.h>

#include <QAction>
#include <QTest>

#include "session/prompts.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using session::Page;

TEST(HelpKeys, PagesAndMenuOpenTheirTopics) {
  ProgramFixture program;
  program.GiveOrdinarySettings(QStringLiteral("\"NOAA 19\""));
  program.Start();
  program.Form->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(program.Form.get()));
  const struct {
    Page Shown;
    int Topic;
  } pages[] = {{Page::Setup, 20}, {Page::WorldMap, 30}, {Page::GroundPath, 40}, {Page::Flight, 50}};
  for (const auto& page : pages) {
    program.Form->ShowPage(page.Shown);
    QTest::keyClick(program.Form->windowHandle(), Qt::Key_F1);
    EXPECT_EQ(std::exchange(program.Boxes.HelpShown, {}), QList<int>{page.Topic});
  }
  const struct {
    const char* Item;
    int Topic;
  } items[] = {{"HelpIntroduction", 10},
               {"HelpContents", session::kHelpContents},
               {"HelpIndex", session::kHelpIndex},
               {"HelpFAQs", 200}};
  for (const auto& item : items) {
    program.Find<QAction>(item.Item)->trigger();
    EXPECT_EQ(std::exchange(program.Boxes.HelpShown, {}), QList<int>{item.Topic}) << item.Item;
  }
  program.Close();
}

}  // namespace
}  // namespace pelorin::tests
