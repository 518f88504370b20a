#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QLabel>
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
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 19\""_s);
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
  program.Close();
}

TEST(Dialogs, OverlayTextIsChosenByItsSamples) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 15\""_s);
  program.Set(u"OvlTextLine1"_s, 64 + 1);
  program.Set(u"OvlTextLine2"_s, 2 + 32 + 16);
  program.Start();
  const QStringList before{u"NOAA 15  "_s, u"2000 Dec 25  at  45º  "_s, QString(), u"at  "_s};
  const struct {
    const char* Label;
    const char* Button;  ///< gets the keyboard before Enter is pressed
    bool Keeps;
    QStringList Shown;
  } rows[] = {
      {"Enter is for Cancel", nullptr, false, before},
      {"Cancel", "ButtonCancel", false, before},
      {"OK", "ButtonOK", true, before},
      {"what was chosen is shown", "ButtonCancel", false, {u"at  "_s, before[1], {}, u"NOAA 15  at  "_s}}};
  const app::Settings& settings = program.Form->Shared().Settings;
  int line = 64 + 1;  // all bits, as long as nothing is confirmed
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    program.InDialog([&] { program.Find<QAction>("OptionsTextOverlay")->trigger(); },
                     [&](QDialog& dialog) {
                       QStringList shown;
                       for (const char* preview : {"LabelPreview1", "LabelPreview2", "LabelPreview3"}) {
                         shown.append(program.Find<QLabel>(preview)->text());
                       }
                       // "at" on, "Name" the other way round.
                       auto* items = program.Find<QListWidget>("CheckListBoxLine1");
                       items->item(2)->setCheckState(Qt::Checked);
                       const bool hasName = items->item(0)->checkState() == Qt::Checked;
                       items->item(0)->setCheckState(hasName ? Qt::Unchecked : Qt::Checked);
                       shown.append(program.Find<QLabel>("LabelPreview1")->text());
                       EXPECT_EQ(shown, row.Shown);
                       if (row.Button != nullptr)
                         dialog.findChild<QPushButton*>(QLatin1StringView(row.Button))->setFocus();
                       QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
                     });
    if (row.Keeps) line = 32;
    EXPECT_EQ(settings.OvlTextLine[0].Value, line);
  }
  program.Close();
  EXPECT_EQ(program.SavedNumber(u"OvlTextLine1"_s), 32);
  EXPECT_EQ(program.SavedNumber(u"OvlTextLine2"_s), 2 + 32 + 16);
}

}  // namespace
}  // namespace pelorin::tests
