#include "app/ui/help_window.h"

#include <gtest/gtest.h>

#include <QHelpContentWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QWindow>

#include "app/ui/help.h"
#include "tests/help/installed_help.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;

class HelpWindowTest : public testing::Test {
 protected:
  HelpWindowTest() { qApp->installEventFilter(&Help); }

  void Open(int context) {
    Help.Show(context);
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == u"HelpWindow"_s) Window = widget;
    }
    ASSERT_NE(Window, nullptr) << Said.join(u'\n').toStdString();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(Window));
    Contents = Window->findChild<QHelpContentWidget*>(u"HelpContents"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Contents->model()->rowCount() > 2; }, 5000));
  }
  QString Page() const { return Window->findChild<QTextBrowser*>(u"HelpPage"_s)->source().fileName(); }
  /// Clicks a line of the contents as the window system would.
  void ClickContents(int row) {
    const QRect place = Contents->visualRect(Contents->model()->index(row, 0));
    QTest::mouseClick(Window->windowHandle(), Qt::LeftButton, {},
                      Contents->viewport()->mapTo(Window, place.center()));
    QApplication::processEvents();
  }

  InstalledHelp Installed;
  QStringList Said;
  ui::Help Help{Installed.File(), [this](const QString& text) { Said.append(text); }};
  QWidget* Window = nullptr;
  QHelpContentWidget* Contents = nullptr;
};

TEST_F(HelpWindowTest, CanBeReadWhileABoxWaits) {
  Open(ui::kHelpFaqs);
  EXPECT_EQ(Page(), u"faq.html"_s);
  QMessageBox box(QMessageBox::Warning, u"Pelorin"_s, u"Stale"_s, QMessageBox::Ok | QMessageBox::Help);
  box.setWindowModality(Qt::ApplicationModal);
  QAbstractButton* help = box.button(QMessageBox::Help);
  help->disconnect();
  QObject::connect(help, &QAbstractButton::clicked, &box, [this] { Help.Show(280); });
  box.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
  ClickContents(0);
  EXPECT_EQ(Page(), u"faq.html"_s) << "the box holds all other windows";
  QTest::keyClick(&box, Qt::Key_F1);
  EXPECT_EQ(Page(), u"stale.html"_s);
  EXPECT_TRUE(box.isVisible());
  ClickContents(0);
  EXPECT_EQ(Page(), u"intro.html"_s);
  box.close();
  QApplication::processEvents();
  ClickContents(1);
  EXPECT_EQ(Page(), u"evening.html"_s) << "and afterwards";
  EXPECT_TRUE(Window->isVisible());
}

TEST_F(HelpWindowTest, F1InADialogOpensItsTopic) {
  QDialog dialog;
  dialog.setObjectName(u"FormSetFlightTime"_s);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  QTest::keyClick(&dialog, Qt::Key_F1);
  Open(0);
  EXPECT_EQ(Page(), u"flighttime.html"_s);
}

}  // namespace
}  // namespace pelorin::tests
