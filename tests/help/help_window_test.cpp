#include "desktop/help/help_window.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QHelpContentWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QWindow>

#include "desktop/help/help.h"
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
  desktop::Help Help{Installed.File(), [this](const QString& text) { Said.append(text); }};
  QWidget* Window = nullptr;
  QHelpContentWidget* Contents = nullptr;
};

TEST_F(HelpWindowTest, CanBeReadWhileABoxWaits) {
  Open(desktop::kHelpFaqs);
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

TEST_F(HelpWindowTest, CanBeReadBesideADialogOpenedLater) {
  Open(desktop::kHelpFaqs);
  Window->setGeometry(0, 0, 500, 400);
  QDialog dialog;
  dialog.setModal(true);
  dialog.setGeometry(100, 100, 80, 80);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  ClickContents(0);
  EXPECT_EQ(Page(), u"faq.html"_s) << "the help would lie over the dialog";
  Window->move(250, 0);
  QApplication::processEvents();
  ClickContents(0);
  EXPECT_EQ(Page(), u"intro.html"_s);
  dialog.close();
  dialog.setGeometry(20, 20, 80, 80);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  ClickContents(1);
  EXPECT_EQ(Page(), u"evening.html"_s);
}

TEST_F(HelpWindowTest, F1InADialogOpensItsTopicOrTheOneBelow) {
  QWidget form;
  auto* hidden = new QWidget(&form);
  hidden->setObjectName(u"TabSheetSetup"_s);
  auto* page = new QWidget(&form);
  page->setObjectName(u"TabSheetMap"_s);
  form.show();
  hidden->hide();
  QDialog dialog(&form), below(&dialog);
  dialog.setObjectName(u"FormSetFlightTime"_s);
  QFileDialog besidePage(&form);
  QMessageBox box(&form);
  const struct {
    QDialog* Dialog;
    QString File;
  } rows[] = {{&dialog, u"flighttime.html"_s},
              {&below, u"flighttime.html"_s},
              {&besidePage, u"map.html"_s},
              {&box, u"messages.html"_s}};
  for (const auto& row : rows) {
    row.Dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(row.Dialog));
    QTest::keyClick(row.Dialog, Qt::Key_F1);
    Open(0);
    EXPECT_EQ(Page(), row.File);
    row.Dialog->close();
  }
}

}  // namespace
}  // namespace pelorin::tests
