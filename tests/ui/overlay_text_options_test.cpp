#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;

TEST(OverlayTextOptions, LinesAreChosenByTheirSamples) {
  ProgramFixture program;
  program.GiveOrdinarySettings(u"\"NOAA 15\""_s);
  program.Set(u"OvlTextLine1"_s, 64 + 1);
  program.Set(u"OvlTextLine2"_s, 2 + 32 + 16);
  program.Start();
  QStringList previews;
  const auto answer = [&](const char* button) {
    QTimer::singleShot(0, program.Form.get(), [&, button] {
      previews.clear();
      auto* lines = program.Find<QListWidget>("CheckListBoxLine1");
      for (const char* preview : {"LabelPreview1", "LabelPreview2", "LabelPreview3"}) {
        previews.append(program.Find<QLabel>(preview)->text());
      }
      // "at" on, "Name" the other way round.
      lines->item(2)->setCheckState(Qt::Checked);
      QListWidgetItem* name = lines->item(0);
      name->setCheckState(name->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
      previews.append(program.Find<QLabel>("LabelPreview1")->text());
      auto* dialog = program.Find<QDialog>("FormOverlayTextOptions");
      if (button != nullptr) {
        QTest::mouseClick(dialog->findChild<QPushButton*>(QLatin1StringView(button)), Qt::LeftButton);
      } else {
        QTest::keyClick(dialog, Qt::Key_Return);
      }
    });
    program.Find<QAction>("OptionsTextOverlay")->trigger();
  };
  const QStringList before{u"NOAA 15  "_s, u"2000 Dec 25  at  45º  "_s, QString(), u"at  "_s};
  const app::Settings& settings = program.Form->Shared().Settings;
  for (const char* cancelling : {"ButtonCancel", static_cast<const char*>(nullptr)}) {
    answer(cancelling);
    EXPECT_EQ(previews, before);
    EXPECT_EQ(settings.OvlTextLine[0].Value, 64 + 1) << "all bits, since nothing was confirmed";
  }
  answer("ButtonOK");
  EXPECT_EQ(previews, before) << "what was cancelled is forgotten";
  answer("ButtonCancel");
  EXPECT_EQ(previews.first(), u"at  "_s);
  program.Close();
  EXPECT_EQ(program.SavedNumber(u"OvlTextLine1"_s), 32);
  EXPECT_EQ(program.SavedNumber(u"OvlTextLine2"_s), 2 + 32 + 16);
}

}  // namespace
}  // namespace pelorin::tests
