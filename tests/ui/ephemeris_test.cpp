#include <gtest/gtest.h>

#include <QApplication>
#include <QDateEdit>
#include <QDialog>
#include <QFile>
#include <QMessageBox>
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

class Ephemeris : public testing::Test, protected ProgramFixture {
 protected:
  Ephemeris() : ProgramFixture(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s) { StartOn(session::Page::Setup); }

  QStringList Lines() const { return Find<TListBox>("ListBoxPasses")->Items(); }
  QStringList Days() const { return Lines().filter(u"Pelorin pass prediction for "_s); }
  /// What is in a file after a button has put something there.
  QByteArray SavedBy(const char* button, const char* name) {
    Boxes.ChosenFile = Path(QLatin1StringView(name));
    Click(button);
    return QFile::exists(*Boxes.ChosenFile) ? files::ReadFile(*Boxes.ChosenFile) : "";
  }
};

TEST_F(Ephemeris, ReportIsPredictedSavedAndPrinted) {
  Find<QDateEdit>("DateTimePickerPasses")->setDate(QDate(2022, 2, 20));
  Click("ButtonRegenPasses");
  const qsizetype passes = Find<TListBox>("ListBoxPasses")->count();
  InDialog("ButtonEphemeris", [&](QDialog&) {
    // The picker shows today; the report is of the pass list's day.
    EXPECT_EQ(Find<QDateEdit>("DateTimePickerStart")->text(), u"2022 Feb 23"_s);
    Click("ButtonPredict");
    EXPECT_EQ(Find<QTabWidget>("PageControl")->currentIndex(), 1);
    EXPECT_EQ(Lines().first(), u"Pelorin pass prediction for Sunday, 2022 Feb 20"_s);
    EXPECT_EQ(Lines().size(), 5 + passes);
    EXPECT_EQ(SavedBy("ButtonSave", "report.txt"), files::EncodeText(Lines().join(u"\r\n"_s)) + "\r\n");
    EXPECT_EQ(SavedBy("ButtonSave", "report.ics").count("BEGIN:VEVENT"), passes);
    EXPECT_EQ(Boxes.Take(), QStringList());
    EXPECT_EQ(SavedBy("ButtonSave", "missing/report.txt"), QByteArray());
    EXPECT_EQ(Boxes.Take(), QStringList(u"Error: Error tring to save pass list to "_s + *Boxes.ChosenFile));

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
    EXPECT_TRUE(Boxes.Take().value(0).startsWith(u"Error: Cannot write "_s));
  });
}

TEST_F(Ephemeris, PredictionIsRefusedOrStoppedWithWhatThereIs) {
  QStringList report;
  InDialog("ButtonEphemeris", [&](QDialog& dialog) {
    auto* pages = Find<QTabWidget>("PageControl");
    Click("ButtonSelectNone");
    pages->setCurrentIndex(1);
    EXPECT_EQ(Boxes.Take(), QStringList(u"Message: Please select one or more satellites"_s));
    EXPECT_EQ(pages->currentIndex(), 0);
    Click("ButtonSelectAll");
    Find<QSpinBox>("SpinEditNumDays")->setValue(365);
    const auto isBusy = [this] {
      return Find("ProgressBar")->isVisible() && !Find("ButtonSave")->isEnabled() &&
             QGuiApplication::overrideCursor() != nullptr;
    };
    bool wasBusy = false;
    QTimer::singleShot(0, pages, [&] {
      wasBusy = isBusy();
      QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    // An empty report is made when it is to be seen.
    pages->setCurrentIndex(1);
    EXPECT_TRUE(wasBusy);
    EXPECT_FALSE(isBusy());
    EXPECT_TRUE(Find("ButtonSave")->isEnabled());
    report = Lines();
    EXPECT_GT(Days().size(), 0);
    EXPECT_LT(Days().size(), 365);
    EXPECT_NE(report.last(), QString());
    EXPECT_TRUE(dialog.isVisible()) << "the first Escape must not close the window";
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  InDialog("ButtonEphemeris", [&](QDialog&) { EXPECT_EQ(Lines(), report) << "it stays between showings"; });
  EXPECT_EQ(Boxes.Take(), QStringList());
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
