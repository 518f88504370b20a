#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "desktop/help/help.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;

TEST(Dialogs, OpenWhereTheyWereLeftAndHelpBesideThem) {
  ProgramFixture program(u"\"NOAA 19\""_s);
  program.Start();
  program.Form->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(program.Form.get()));
  for (const Page page : {Page::Setup, Page::WorldMap, Page::GroundPath, Page::Flight}) {
    program.Form->ShowPage(page);
    QTest::keyClick(program.Form->windowHandle(), Qt::Key_F1);
  }
  for (const char* item : {"HelpIntroduction", "HelpContents", "HelpIndex", "HelpFAQs"}) {
    program.Find<QAction>(item)->trigger();
  }
  EXPECT_EQ(program.Boxes.HelpShown,
            QList<int>({20, 30, 40, 50, 10, session::kHelpContents, session::kHelpIndex, 200}));

  const struct {
    const char *Item, *First;
  } rows[] = {{"FilePrintPassList", "ListBoxSatellites"},
              {"OptionsTextOverlay", "CheckListBoxLine1"},
              {"OptionsUpdateKeplers", "CheckListBoxFiles"},
              {"ViewSatelliteData", "ListViewKeps"},
              {"HelpAbout", "ButtonOK"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Item);
    QRect left;
    for (const bool isAgain : {false, true}) {
      program.InDialog([&] { program.Find<QAction>(row.Item)->trigger(); },
                       [&](QDialog& dialog) {
                         EXPECT_NE(desktop::HelpTopicOf(dialog.objectName()), 0);
                         EXPECT_EQ(dialog.focusWidget()->objectName(), QLatin1StringView(row.First));
                         EXPECT_TRUE(!isAgain || dialog.geometry() == left);
                         dialog.move(dialog.pos() + QPoint(37, 23));
                         dialog.resize(dialog.size() + QSize(20, 10));
                         dialog.findChildren<QPushButton*>().last()->setFocus();
                         left = dialog.geometry();
                         QTest::keyClick(&dialog, Qt::Key_Escape);
                       });
    }
  }
}

TEST(Dialogs, OverlayTextIsKeptByOkAlone) {
  ProgramFixture program(u"\"NOAA 15\""_s);
  program.Set(u"OvlTextLine1"_s, 1);
  program.Set(u"OvlTextLine2"_s, 2 + 32 + 16);
  program.Start();
  const auto& lines = program.Form->Shared().Settings.OvlTextLine;
  for (const bool isConfirmed : {false, true}) {
    program.InDialog([&] { program.Find<QAction>("OptionsTextOverlay")->trigger(); },
                     [&](QDialog& dialog) {
                       EXPECT_EQ(program.Text("LabelPreview1"), u"NOAA 15  "_s);
                       EXPECT_EQ(program.Text("LabelPreview2"), u"2000 Dec 25  at  45º  "_s);
                       auto* items = program.Find<QListWidget>("CheckListBoxLine1");
                       items->item(2)->setCheckState(Qt::Checked);
                       items->item(0)->setCheckState(Qt::Unchecked);
                       EXPECT_EQ(program.Text("LabelPreview1"), u"at  "_s);
                       if (isConfirmed) dialog.findChild<QPushButton*>(u"ButtonOK"_s)->setFocus();
                       QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
                     });
    EXPECT_EQ(lines[0].Value, isConfirmed ? 32 : 1) << "Enter is for Cancel";
    EXPECT_EQ(lines[1].Value, 2 + 32 + 16);
  }
}

}  // namespace
}  // namespace pelorin::tests
