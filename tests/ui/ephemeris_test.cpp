#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <csignal>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "files/text_file.h"
#include "session/list_box.h"
#include "session/qt_prompts.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::TListBox;

/// The program with its ephemeris window open.
class EphemerisWindow {
 public:
  EphemerisWindow() {
    Program.GiveOrdinarySettings(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s);
    Program.Start();
    Program.Form->ShowPage(session::Page::Setup);
    dialog_ = Program.Find<QDialog>("FormEphemeris");
  }

  /// Opens the window as the user does, and does `work` in it until it is closed.
  void Open(const std::function<void()>& work) {
    Program.InDialog([&] { Program.Click("ButtonEphemeris"); }, [&](QDialog&) { work(); });
  }

  template <class Control>
  Control* Find(const char* name) const {
    return dialog_->findChild<Control*>(QString::fromLatin1(name));
  }
  void Click(const char* name) const { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }
  QStringList Lines() const { return Find<TListBox>("ListBoxPasses")->Items(); }
  QStringList Days() const { return Lines().filter(u"Pelorin pass prediction for "_s); }
  bool ShowsReport() const {
    return Find<QTabWidget>("PageControl")->currentWidget()->objectName() == u"TabSheetEphemeris"_s;
  }

  ProgramFixture Program;

 protected:
  QDialog* dialog_;
};

TEST(Ephemeris, ReportIsPredictedSavedAndPrinted) {
  EphemerisWindow window;
  RecordingPrompts& boxes = window.Program.Boxes;
  window.Program.Find<QDateEdit>("DateTimePickerPasses")->setDate(QDate(2022, 2, 20));
  window.Program.Click("ButtonRegenPasses");
  const qsizetype passes = window.Program.Find<TListBox>("ListBoxPasses")->count();
  window.Open([&] {
    EXPECT_EQ(window.Find<TListBox>("ListBoxSatellites")->selectedItems().size(), 3);
    EXPECT_EQ(window.Find<QDateEdit>("DateTimePickerStart")->text(), u"2022 Feb 23"_s);
    // The picker shows today; the report is of the pass list's day.
    window.Click("ButtonPredict");
    EXPECT_TRUE(window.ShowsReport());
    EXPECT_EQ(window.Lines().first(), u"Pelorin pass prediction for Sunday, 2022 Feb 20"_s);
    EXPECT_EQ(window.Lines().size(), 5 + passes);

    boxes.ChosenFile = window.Program.Path(u"report.txt"_s);
    window.Click("ButtonSave");
    EXPECT_EQ(files::ReadFile(*boxes.ChosenFile), files::EncodeText(window.Lines().join(u"\r\n"_s)) + "\r\n");
    boxes.ChosenFile = window.Program.Path(u"report.ics"_s);
    window.Click("ButtonSave");
    EXPECT_EQ(files::ReadFile(*boxes.ChosenFile).count("BEGIN:VEVENT"), passes);
    EXPECT_EQ(boxes.Take(), QStringList());

    boxes.ChosenFile = window.Program.Path(u"missing/report.txt"_s);
    window.Click("ButtonSave");
    EXPECT_EQ(boxes.Take(), QStringList(u"Error: Error tring to save pass list to "_s + *boxes.ChosenFile));

    // Touching the days takes the picker's date. A month counts as four weeks.
    window.Find<QTabWidget>("PageControl")->setCurrentIndex(0);
    const struct {
      const char* Button;
      int Days;
    } durations[] = {{"ButtonWeeks1", 7},   {"ButtonWeeks2", 14},  {"ButtonWeeks3", 21},
                     {"ButtonMonths3", 84}, {"ButtonMonths2", 56}, {"ButtonMonths1", 28}};
    for (const auto& duration : durations) {
      window.Click(duration.Button);
      EXPECT_EQ(window.Find<QSpinBox>("SpinEditNumDays")->value(), duration.Days) << duration.Button;
    }
    EXPECT_EQ(window.Days().size(), 1) << "only on demand";
    window.Click("ButtonPredict");
    EXPECT_EQ(window.Days().size(), 28);
    EXPECT_EQ(window.Days().first().right(11), u"2022 Feb 23"_s);

    // No printer is known here: the report goes into a file, every time into the one that is named.
    for (const char* name : {"first.pdf", "second.pdf"}) {
      boxes.ChosenFile = window.Program.Path(QString::fromLatin1(name));
      window.Click("ButtonPrint");
      const QByteArray pdf = files::ReadFile(*boxes.ChosenFile);
      EXPECT_TRUE(pdf.startsWith("%PDF")) << name;
      EXPECT_GE(pdf.count("/Type /Page\n"), window.Lines().size() / 80) << name;
    }
    boxes.ChosenFile = window.Program.Path(u"missing/report.pdf"_s);
    window.Click("ButtonPrint");
    EXPECT_EQ(boxes.Take(),
              QStringList(u"Error: Cannot write "_s + *boxes.ChosenFile + u": No such file or directory"_s));
    // A disk that has room for the beginning only.
    boxes.ChosenFile = window.Program.Path(u"first.pdf"_s);
    const QByteArray earlierReport = files::ReadFile(*boxes.ChosenFile);
    rlimit earlier{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &earlier), 0);
    const auto earlierHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{static_cast<rlim_t>(earlierReport.size() / 2), earlier.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    window.Click("ButtonPrint");
    setrlimit(RLIMIT_FSIZE, &earlier);
    std::signal(SIGXFSZ, earlierHandler);
    EXPECT_TRUE(boxes.Take().value(0).startsWith(u"Error: Cannot write "_s + *boxes.ChosenFile));
    EXPECT_EQ(files::ReadFile(*boxes.ChosenFile), earlierReport);
    EXPECT_EQ(window.Days().size(), 28);
  });
  window.Program.Close();
}

TEST(Ephemeris, PredictionIsRefusedOrStoppedWithWhatThereIs) {
  EphemerisWindow window;
  RecordingPrompts& boxes = window.Program.Boxes;
  window.Open([&] {
    auto* pages = window.Find<QTabWidget>("PageControl");
    window.Click("ButtonSelectNone");
    for (int turn = 0; turn < 2; ++turn) {
      if (turn == 0) window.Click("ButtonPredict");
      if (turn == 1) pages->setCurrentIndex(1);
      EXPECT_EQ(boxes.Take(), QStringList(u"Message: Please select one or more satellites"_s));
      EXPECT_FALSE(window.ShowsReport());
    }
    window.Click("ButtonSelectAll");
    window.Find<QSpinBox>("SpinEditNumDays")->setValue(365);
    bool wasBusy = false;
    QTimer::singleShot(0, window.Find<QPushButton>("ButtonCancel"), [&] {
      wasBusy = window.Find<QProgressBar>("ProgressBar")->isVisible() &&
                !window.Find<QPushButton>("ButtonSave")->isEnabled() &&
                QGuiApplication::overrideCursor() != nullptr;
      QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    });
    // An empty report is made when it is to be seen.
    pages->setCurrentIndex(1);
    EXPECT_TRUE(wasBusy);
    EXPECT_GT(window.Days().size(), 0);
    EXPECT_LT(window.Days().size(), 365);
    EXPECT_NE(window.Lines().last(), QString());
    EXPECT_TRUE(window.Find<QPushButton>("ButtonSave")->isEnabled());
    EXPECT_FALSE(window.Find<QProgressBar>("ProgressBar")->isVisible());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    ASSERT_NE(QApplication::activeModalWidget(), nullptr) << "the first Escape must not close the window";
    QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  });
  const QStringList before = window.Lines();
  window.Open([&] { EXPECT_EQ(window.Lines(), before) << "the report stays between showings"; });
  EXPECT_EQ(boxes.Take(), QStringList());
  window.Program.Close();
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

TEST(Ephemeris, NameOfTheFileFollowsItsKind) {
  const QTemporaryDir folder;
  session::QtPrompts boxes(u"Pelorin"_s, {});
  const QString noDot = folder.filePath(u"passes"_s);
  files::ReplaceFile(noDot, "passes");
  const struct {
    const char* Typed;
    int Kind;  ///< of those below
    const char* Chosen;
  } rows[] = {{nullptr, 0, "passes.txt"},
              {nullptr, 1, "passes.ics"},
              {"bare", 0, "bare.txt"},
              {"bare", 1, "bare.ics"},
              {nullptr, 2, "passes.txt"}};
  for (const auto& row : rows) {
    QTimer::singleShot(0, qApp, [&row, &noDot] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      if (row.Typed) dialog->findChild<QLineEdit*>()->setText(QString::fromLatin1(row.Typed));
      auto* kinds = dialog->findChild<QComboBox*>(u"fileTypeCombo"_s);
      kinds->setCurrentIndex(row.Kind);
      Q_EMIT kinds->activated(row.Kind);
      Q_EMIT kinds->textActivated(kinds->currentText());
      if (row.Kind == 2) {
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return dialog->findChild<QFileSystemModel*>()->index(noDot).isValid(); }));
      }
      dialog->accept();
    });
    const auto chosen =
        boxes.SaveFile(u"Save as"_s, folder.filePath(u"passes.txt"_s),
                       {u"Text files (*.txt)"_s, u"iCalendar files (*.ics)"_s, u"All files (*.*)"_s});
    EXPECT_EQ(chosen.value_or(QString()), folder.filePath(QString::fromLatin1(row.Chosen)));
  }
}

}  // namespace
}  // namespace pelorin::tests
