#include <gtest/gtest.h>

#include <QApplication>
#include <QDateEdit>
#include <QDialog>
#include <QFile>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "files/read_file.h"
#include "files/text_file.h"
#include "session/list_box.h"
#include "session/qt_prompts.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::TListBox;

class Ephemeris : public testing::Test {
 protected:
  Ephemeris() { program.StartOn(session::Page::Setup); }

  /// Opens the window as the user does, and does `work` in it until it is closed.
  void Open(const std::function<void()>& work) {
    program.InDialog([&] { program.Click("ButtonEphemeris"); }, [&](QDialog&) { work(); });
  }
  template <class Control>
  Control* Find(const char* name) const {
    return program.Find<QDialog>("FormEphemeris")->findChild<Control*>(QLatin1StringView(name));
  }
  void Click(const char* name) const { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }
  QStringList Lines() const { return Find<TListBox>("ListBoxPasses")->Items(); }
  QStringList Days() const { return Lines().filter(u"Pelorin pass prediction for "_s); }
  /// What is in a file after a button has put something there.
  QByteArray SavedBy(const char* button, const char* name) {
    program.Boxes.ChosenFile = program.Path(QLatin1StringView(name));
    Click(button);
    return QFile::exists(*program.Boxes.ChosenFile) ? files::ReadFile(*program.Boxes.ChosenFile) : "";
  }

  ProgramFixture program{u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s};
};

TEST_F(Ephemeris, ReportIsPredictedSavedAndPrinted) {
  program.Find<QDateEdit>("DateTimePickerPasses")->setDate(QDate(2022, 2, 20));
  program.Click("ButtonRegenPasses");
  const qsizetype passes = program.Find<TListBox>("ListBoxPasses")->count();
  Open([&] {
    // The picker shows today; the report is of the pass list's day.
    EXPECT_EQ(Find<QDateEdit>("DateTimePickerStart")->text(), u"2022 Feb 23"_s);
    Click("ButtonPredict");
    EXPECT_EQ(Find<QTabWidget>("PageControl")->currentIndex(), 1);
    EXPECT_EQ(Lines().first(), u"Pelorin pass prediction for Sunday, 2022 Feb 20"_s);
    EXPECT_EQ(Lines().size(), 5 + passes);
    EXPECT_EQ(SavedBy("ButtonSave", "report.txt"), files::EncodeText(Lines().join(u"\r\n"_s)) + "\r\n");
    EXPECT_EQ(SavedBy("ButtonSave", "report.ics").count("BEGIN:VEVENT"), passes);
    EXPECT_EQ(program.Boxes.Take(), QStringList());
    EXPECT_EQ(SavedBy("ButtonSave", "missing/report.txt"), QByteArray());
    EXPECT_EQ(program.Boxes.Take(),
              QStringList(u"Error: Error tring to save pass list to "_s + *program.Boxes.ChosenFile));

    // Touching the days takes the picker's date. A month counts as four weeks.
    Find<QTabWidget>("PageControl")->setCurrentIndex(0);
    Click("ButtonWeeks2");
    EXPECT_EQ(Find<QSpinBox>("SpinEditNumDays")->value(), 14);
    Click("ButtonMonths1");
    EXPECT_EQ(Days().size(), 1) << "only on demand";
    Click("ButtonPredict");
    EXPECT_EQ(Days().size(), 28);
    EXPECT_EQ(Days().first().right(11), u"2022 Feb 23"_s);

    // No printer is known here: the report goes into a file, every time into the one that is named.
    for (const char* name : {"first.pdf", "second.pdf"}) {
      const QByteArray pdf = SavedBy("ButtonPrint", name);
      EXPECT_TRUE(pdf.startsWith("%PDF")) << name;
      EXPECT_GE(pdf.count("/Type /Page\n"), Lines().size() / 80) << name;
    }
    EXPECT_EQ(SavedBy("ButtonPrint", "missing/report.pdf"), QByteArray());
    EXPECT_TRUE(program.Boxes.Take().value(0).startsWith(u"Error: Cannot write "_s));
  });
}

TEST_F(Ephemeris, PredictionIsRefusedOrStoppedWithWhatThereIs) {
  Open([&] {
    auto* pages = Find<QTabWidget>("PageControl");
    Click("ButtonSelectNone");
    pages->setCurrentIndex(1);
    EXPECT_EQ(program.Boxes.Take(), QStringList(u"Message: Please select one or more satellites"_s));
    EXPECT_EQ(pages->currentIndex(), 0);
    Click("ButtonSelectAll");
    Find<QSpinBox>("SpinEditNumDays")->setValue(365);
    bool wasBusy = false;
    QTimer::singleShot(0, pages, [&] {
      wasBusy = Find<QProgressBar>("ProgressBar")->isVisible() &&
                !Find<QPushButton>("ButtonSave")->isEnabled() && QGuiApplication::overrideCursor() != nullptr;
      QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    });
    // An empty report is made when it is to be seen.
    pages->setCurrentIndex(1);
    EXPECT_TRUE(wasBusy);
    EXPECT_GT(Days().size(), 0);
    EXPECT_LT(Days().size(), 365);
    EXPECT_NE(Lines().last(), QString());
    EXPECT_TRUE(Find<QPushButton>("ButtonSave")->isEnabled());
    EXPECT_FALSE(Find<QProgressBar>("ProgressBar")->isVisible());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    ASSERT_NE(QApplication::activeModalWidget(), nullptr) << "the first Escape must not close the window";
    QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  });
  const QStringList before = Lines();
  Open([&] { EXPECT_EQ(Lines(), before) << "the report stays between showings"; });
  EXPECT_EQ(program.Boxes.Take(), QStringList());
}

TEST(QtPrompts, LongTextsFitOnTheScreen) {
  session::QtPrompts boxes(u"Pelorin"_s, {});
  const struct {
    const char* Label;
    QString Text;
    bool IsCut;
  } rows[] = {{"many lines", u"<p>refused</p>\n"_s.repeated(500), true},
              {"one long line", u"refused "_s.repeated(2500), true},
              {"one long word", QString(20000, u'x'), true},
              {"some lines", u"refused\n"_s.repeated(12), false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    QTimer::singleShot(0, qApp, [&row] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_TRUE(box->screen()->availableSize().expandedTo(box->frameGeometry().size()) ==
                  box->screen()->availableSize())
          << box->width() << " x " << box->height();
      EXPECT_EQ(box->detailedText(), row.IsCut ? row.Text : QString());
      EXPECT_TRUE(row.Text.startsWith(box->text().first(70)));
      box->accept();
    });
    boxes.Error(row.Text);
  }
}

}  // namespace
}  // namespace pelorin::tests
