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

class Dialogs : public testing::Test, protected ProgramFixture {
 protected:
  Dialogs() : ProgramFixture(u"\"NOAA 15\""_s) {}
};

TEST_F(Dialogs, OpenWhereTheyWereLeftAndHelpBesideThem) {
  Start();
  Form->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(Form.get()));
  for (const Page page : {Page::Setup, Page::WorldMap, Page::GroundPath, Page::Flight}) {
    Form->ShowPage(page);
    QTest::keyClick(Form->windowHandle(), Qt::Key_F1);
  }
  for (const char* item : {"HelpIntroduction", "HelpContents", "HelpIndex", "HelpFAQs"}) {
    Find<QAction>(item)->trigger();
  }
  EXPECT_EQ(Boxes.HelpShown,
            QList<int>({20, 30, 40, 50, 10, session::kHelpContents, session::kHelpIndex, 200}));

  const struct {
    const char *Item, *First;
  } rows[] = {{"FilePrintPassList", "ListBoxSatellites"},    {"OptionsTextOverlay", "CheckListBoxLine1"},
              {"OptionsUpdateKeplers", "CheckListBoxFiles"}, {"ViewSatelliteData", "ListViewKeps"},
              {"ViewAlignments", "ListViewAlignments"},      {"HelpAbout", "ButtonOK"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Item);
    QRect left;
    for (const bool isAgain : {false, true}) {
      InDialog(row.Item, [&](QDialog& dialog) {
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

TEST_F(Dialogs, OverlayTextIsKeptByOkAlone) {
  Set(u"OvlTextLine1"_s, 1);
  Set(u"OvlTextLine2"_s, 2 + 32 + 16);
  Start();
  const auto& lines = Form->Shared().Settings.OvlTextLine;
  for (const bool isConfirmed : {false, true}) {
    InDialog("OptionsTextOverlay", [&](QDialog& dialog) {
      EXPECT_EQ(Text("LabelPreview1"), u"NOAA 15  "_s);
      EXPECT_EQ(Text("LabelPreview2"), u"2000 Dec 25  at  45º  "_s);
      auto* items = Find<QListWidget>("CheckListBoxLine1");
      items->item(2)->setCheckState(Qt::Checked);
      items->item(0)->setCheckState(Qt::Unchecked);
      EXPECT_EQ(Text("LabelPreview1"), u"at  "_s);
      if (isConfirmed) Find("ButtonOK")->setFocus();
      QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(lines[0].Value, isConfirmed ? 32 : 1) << "Enter is for Cancel";
    EXPECT_EQ(lines[1].Value, 2 + 32 + 16);
  }
}

}  // namespace
}  // namespace pelorin::tests
