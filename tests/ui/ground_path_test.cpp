#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QDoubleSpinBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "files/text_file.h"
#include "picture/picture_file.h"
#include "session/list_box.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;
using session::TListBox;

constexpr int kPictureLines = 300;

/// A station with NOAA 15, 18 and 19, and received pictures of different colours by their names.
class GroundPathTest : public testing::Test {
 protected:
  GroundPathTest() { program.GiveOrdinarySettings(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s); }

  void GivePicture(const QString& name, QColor colour) {
    QImage picture(909, kPictureLines, QImage::Format_RGB32);
    picture.fill(colour);
    picture::SavePicture(picture, program.Path(u"pictures/"_s + name));
  }
  void StartOnPage() {
    program.Start();
    program.Form->ShowPage(Page::GroundPath);
    program.Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 19"_s);
  }
  void Pick(int hour, int minute) {
    program.Find<QDateTimeEdit>("DateTimePickerTime")->setTime(QTime(hour, minute));
  }
  void Choose(const char* channel) {
    QTest::mouseClick(program.Find(channel), Qt::LeftButton, {}, QPoint(8, 8));
  }
  void Open(const QString& name) {
    program.Boxes.ChosenFile = program.Path(name);
    program.Find<QAction>("Open1")->trigger();
  }
  QString PictureShown() { return QFileInfo(program.Find("ImagePicture")->toolTip()).fileName(); }
  void GiveJunk(const QString& name) {
    QFile file(program.Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("nothing") > 0);
  }
  QImage Written(const QString& name) { return QImage(program.Path(u"bin/"_s + name)); }
  bool IsIdle() { return program.Find<QPushButton>("ButtonGenTopo")->text() == u"Make map"_s; }
  /// Does something as soon as a map is half made.
  template <class Deed>
  void WhileMaking(Deed deed) {
    auto* timer = new QTimer(program.Form.get());
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, deed] {
      if (IsIdle()) return;
      timer->deleteLater();
      deed();
    });
    timer->start(0);
  }

  ProgramFixture program;
};

TEST_F(GroundPathTest, FromThePassToTheFiles) {
  program.Set(u"SavePassDetails"_s, 1);
  program.Set(u"OvlTextLine1"_s, 1 + 4 + 8);
  program.TimeZone = app::TimeZone(QTimeZone("Europe/Madrid"));
  program.Start();
  program.Form->ShowPage(Page::Setup);
  auto* list = program.Find<TListBox>("ListBoxPasses");
  const QStringList found = list->Items().filter(u"0223075"_s).filter(u"NOAA 19"_s);
  ASSERT_EQ(found.size(), 1);
  // The recorder began three minutes after the rise, and named the pictures by the clock on the wall.
  const QDateTime begun =
      QDateTime::fromString(u"2022"_s + found.first().left(8), u"yyyyMMddHHmm"_s).addSecs(3 * 60);
  const QString stamp = begun.addSecs(3600).toString(u"MMddHHmm"_s);
  GivePicture(stamp + u"V.png"_s, Qt::darkGray);
  GivePicture(stamp + u"I.png"_s, Qt::lightGray);

  list->setCurrentRow(static_cast<int>(list->Items().indexOf(found.first())));
  program.Click("ButtonPicFromPass");
  EXPECT_EQ(PictureShown(), stamp + u"V.png"_s);
  Choose("RadioButtonChannel1");
  EXPECT_EQ(PictureShown(), stamp + u"I.png"_s);
  EXPECT_EQ(program.Find<QLabel>("LabelPictureTitle")->text(),
            u"Picture: %1I.png  from %2 UTC"_s.arg(stamp, begun.toString(u"HH:mm"_s)));

  QTest::keyClick(program.Find("SpinEditPassDuration"), Qt::Key_Return);
  ASSERT_TRUE(IsIdle());
  EXPECT_EQ(Written(u"Result.jpg"_s).size(), QSize(1040, kPictureLines));
  const QImage south = Written(u"ovl.bmp"_s);
  EXPECT_EQ(south.size(), QSize(1040, kPictureLines));
  QStringList passData = files::ReadLines(program.Path(u"bin/pass.dat"_s));
  EXPECT_EQ(passData.size(), kPictureLines);
  EXPECT_TRUE(passData.first().startsWith(begun.toString(u"yyyy-MM-ddTHH:mm:00.000 "_s)))
      << passData.first().toStdString();
  EXPECT_TRUE(files::ReadLines(program.Path(u"bin/ovl.txt"_s)).first().endsWith(u"  South"_s));

  program.Click("ButtonPassDirection");
  EXPECT_EQ(program.Find<QPushButton>("ButtonPassDirection")->text(), u"---> N"_s);
  EXPECT_EQ(program.Find<QPushButton>("ButtonFlightDirection")->text(), u"---> N"_s);
  EXPECT_EQ(Written(u"ovl.bmp"_s), south.mirrored(true, true));

  // Lines alone leave the land to the ground's own colours.
  const QImage bare = Written(u"Result.jpg"_s);
  program.Find<QAction>("MenuShowOverlay")->trigger();
  program.Fire("TimerSaveResults");
  const QImage covered = Written(u"Result.jpg"_s);
  program.Find<QAction>("MenuOverlayLinesOnly")->trigger();
  program.Click("ButtonGenTopo");
  const QImage lines = Written(u"Result.jpg"_s);
  const auto difference = [&](const QImage& map) {
    long sum = 0;
    for (int y = 0; y < map.height(); ++y) {
      for (int x = 86; x < 995; ++x) sum += std::abs(qGreen(map.pixel(x, y)) - qGreen(bare.pixel(x, y)));
    }
    return sum;
  };
  EXPECT_GT(difference(lines), 0);
  EXPECT_LT(difference(lines) * 2, difference(covered));

  // A correction is seen at once and written soon.
  program.Find<QDoubleSpinBox>("SpinEditTimeCorrection")->setValue(7.5);
  program.Fire("TimerSaveResults");
  passData = files::ReadLines(program.Path(u"bin/pass.dat"_s));
  EXPECT_TRUE(passData.first().contains(u":07.500 "_s)) << passData.first().toStdString();

  // Without a folder nothing is written, and the page lives on.
  program.Form->Shared().Settings.ResultsPath.Value = program.Path(u"gone/"_s);
  program.Boxes.Take();
  program.Click("ButtonGenTopo");
  const QStringList said = program.Boxes.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_TRUE(said.first().startsWith(u"Error: There is no results folder "_s + program.Path(u"gone/"_s)));
  EXPECT_TRUE(IsIdle());
  program.Close();
}

TEST_F(GroundPathTest, MakingEndsWhenTheUserWantsIt) {
  StartOnPage();
  Pick(7, 50);
  program.Find<QSpinBox>("SpinEditPassDuration")->setValue(30);
  program.Click("ButtonGenTopo");
  const QImage whole = Written(u"ovl.bmp"_s);
  ASSERT_EQ(whole.height(), 3600);
  const struct {
    const char* Label;
    std::function<void()> Deed;
  } rows[] = {
      {"button", [this] { program.Click("ButtonGenTopo"); }},
      {"Escape", [this] { QTest::keyClick(program.Find("SpinEditPassDuration"), Qt::Key_Escape); }},
      {"Escape after a turn",
       [this] {
         program.Click("ButtonPassDirection");
         program.Click("ButtonPassDirection");
         QTest::keyClick(program.Find("SpinEditPassDuration"), Qt::Key_Escape);
       }},
      {"closing", [this] { program.Form->close(); }},
  };
  for (const auto& row : rows) {
    WhileMaking(row.Deed);
    program.Click("ButtonGenTopo");
    EXPECT_TRUE(IsIdle()) << row.Label;
    // North-bound lines come in from below; the last ones were not made, but the file was written.
    const QImage part = Written(u"ovl.bmp"_s);
    ASSERT_EQ(part.size(), whole.size()) << row.Label;
    EXPECT_EQ(part.copy(0, 3599, 1040, 1), whole.copy(0, 3599, 1040, 1)) << row.Label;
    EXPECT_NE(part.copy(0, 0, 1040, 100), whole.copy(0, 0, 1040, 100)) << row.Label;
  }
  EXPECT_FALSE(program.Form->isVisible());
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  program.Close();
}

TEST_F(GroundPathTest, ATypedTimeCountsHoweverItIsLeft) {
  GivePicture(u"02230751V.png"_s, Qt::darkGray);
  GivePicture(u"02231459V.png"_s, Qt::darkRed);
  StartOnPage();
  auto* time = program.Find<QDateTimeEdit>("DateTimePickerTime");
  auto* tabs = program.Find<QTabWidget>("PageControl")->tabBar();
  const struct {
    const char* Label;
    std::function<void()> Leave;
  } rows[] = {
      {"Load picture", [this] { program.Click("ButtonReload"); }},
      {"Make map", [this] { program.Click("ButtonGenTopo"); }},
      {"Enter", [time] { QTest::keyClick(time, Qt::Key_Return); }},
      {"Tab", [time] { QTest::keyClick(time, Qt::Key_Tab); }},
      {"mnemonic", [time] { QTest::keyClick(time, Qt::Key_U, Qt::AltModifier); }},
      {"another tab", [tabs] { QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center()); }},
  };
  for (const auto& row : rows) {
    program.Form->ShowPage(Page::GroundPath);
    Pick(14, 59);
    ASSERT_EQ(PictureShown(), u"02231459V.png"_s) << row.Label;
    ClickAndType(time, 1, u"0751"_s);
    row.Leave();
    EXPECT_EQ(time->text(), u"07:51"_s) << row.Label;
    EXPECT_EQ(PictureShown(), u"02230751V.png"_s) << row.Label;
  }
  program.Form->ShowPage(Page::GroundPath);
  Pick(14, 59);
  ClickAndType(time, 4, u"00"_s);
  program.Click("ButtonReload");
  EXPECT_EQ(time->text(), u"14:00"_s) << "only a step takes the hour along";
}

TEST_F(GroundPathTest, StepsCarryAndAPickerThatIsLeftLooksAgain) {
  GivePicture(u"02240001V.png"_s, Qt::darkGray);
  StartOnPage();
  auto* time = program.Find<QDateTimeEdit>("DateTimePickerTime");
  Pick(23, 59);
  time->setFocus();
  time->setCurrentSection(QDateTimeEdit::MinuteSection);
  QTest::keyClick(time, Qt::Key_Up);
  EXPECT_EQ(time->text(), u"00:00"_s);
  EXPECT_EQ(program.Find<QDateTimeEdit>("DateTimePickerDate")->date(), QDate(2022, 2, 24));
  EXPECT_EQ(PictureShown(), u"02240001V.png"_s);
  GivePicture(u"02240000V.png"_s, Qt::lightGray);
  program.Find("ButtonReload")->setFocus();
  EXPECT_EQ(PictureShown(), u"02240000V.png"_s);

  // One that is damaged is said to be so once.
  GiveJunk(u"pictures/02240700V.png"_s);
  ClickAndType(time, 1, u"0700"_s);
  program.Find("ButtonReload")->setFocus();
  EXPECT_EQ(program.Boxes.Take().size(), 1);
  EXPECT_EQ(program.Find<QLabel>("LabelPictureTitle")->text(),
            u"02240700V.png could not be read; this is still 02240000V.png"_s);
  program.Close();
}

TEST_F(GroundPathTest, OpenedPicturesTellTheirTimeAndStay) {
  GivePicture(u"02230751I.png"_s, Qt::lightGray);
  const QString opened = u"0223075142V.png"_s;
  GivePicture(u"../elsewhere/"_s + opened, Qt::darkRed);
  GiveJunk(u"elsewhere/party.png"_s);
  GiveJunk(u"elsewhere/02240001.png"_s);
  StartOnPage();
  QFile file(program.Path(u"elsewhere/"_s + opened));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.setFileTime(QDateTime(QDate(2021, 11, 15), QTime(8, 0)), QFile::FileModificationTime);
  file.close();
  auto* satellite = program.Find<QComboBox>("ComboBoxSatForPic");
  auto* correction = program.Find<QDoubleSpinBox>("SpinEditTimeCorrection");
  satellite->setCurrentText(u"NOAA 15"_s);
  Open(u"elsewhere/"_s + opened);
  EXPECT_EQ(program.Boxes.Asked, QStringList(u"Choose a satellite image to load"_s));
  EXPECT_EQ(program.Find<QDateTimeEdit>("DateTimePickerTime")->time(), QTime(7, 51));
  EXPECT_EQ(program.Find<QDateTimeEdit>("DateTimePickerDate")->date(), QDate(2021, 2, 23));
  EXPECT_EQ(program.Find<QLabel>("LabelPictureTitle")->text(),
            u"Picture: %1  from 07:51:42 UTC"_s.arg(opened));
  correction->setValue(3);
  satellite->setCurrentText(u"NOAA 19"_s);
  EXPECT_EQ(correction->value(), 0) << "another clock";

  const struct {
    const char* Label;
    std::function<void()> Deed;
    QString Shown;
  } rows[] = {
      {"the map page's satellite", [this] { program.Form->Shared().ChooseSatellite(1); }, opened},
      {"passing by a picker", [this] { program.Find("DateTimePickerTime")->setFocus(); }, opened},
      {"no name at all", [this] { Open(u"elsewhere/party.png"_s); }, opened},
      {"a channel of which there is none", [this] { Choose("RadioButtonChannel2"); }, opened},
      {"a channel of the same recording", [this] { Choose("RadioButtonChannel1"); }, u"02230751I.png"_s},
  };
  for (const auto& row : rows) {
    row.Deed();
    program.Click("ButtonGenTopo");
    EXPECT_EQ(PictureShown(), row.Shown) << row.Label;
    EXPECT_TRUE(program.Find("ButtonSaveBlend")->isEnabled()) << row.Label;
  }
  EXPECT_EQ(program.Boxes.Take().size(), 1) << "what has no name is told";
  Open(u"elsewhere/02240001.png"_s);
  EXPECT_EQ(program.Boxes.Take().size(), 1) << "and what is no picture, though it tells its time";
  EXPECT_EQ(PictureShown(), u"02230751I.png"_s);
  program.Close();
  EXPECT_EQ(program.SavedText(u"ClockCorrections"_s), u"NOAA 15=3.0"_s);
}

TEST_F(GroundPathTest, OnlyTheMapOfItsPassIsLaidOverAPicture) {
  GivePicture(u"02230751V.png"_s, Qt::darkGray);
  GivePicture(u"02231432V.png"_s, Qt::darkRed);
  GiveJunk(u"pictures/02230900V.png"_s);
  StartOnPage();
  program.Boxes.ChosenFile = program.Path(u"pictures/02231432V.png"_s);
  const auto onWorldMap = [this](const char* button) {
    program.Form->ShowPage(Page::WorldMap);
    program.Find<QDateTimeEdit>("DateTimePickerMapTime")->setTime(QTime(14, 32));
    program.Click(button);
    program.Form->ShowPage(Page::GroundPath);
  };
  const struct {
    const char* Label;
    std::function<void()> Deed;
    bool Fits;
  } rows[] = {
      {"the world map's time", [&] { onWorldMap("RadioGroupTimeframe2"); }, true},
      {"the world map's file", [&] { onWorldMap("RadioGroupTimeframe1"); }, true},
      {"a pass that was refused",
       [&] {
         WhileMaking([&] { onWorldMap("ButtonMapToPicture"); });
         program.Click("ButtonGenTopo");
       },
       true},
      {"a channel of which there is none", [this] { Choose("RadioButtonChannel2"); }, true},
      {"a damaged picture", [this] { Pick(9, 0); }, false},
      {"another satellite",
       [this] { program.Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 18"_s); }, true},
  };
  for (const auto& row : rows) {
    Choose("RadioButtonChannel0");
    Pick(7, 51);
    program.Click("ButtonGenTopo");
    row.Deed();
    program.Click("ButtonGenTopo");
    EXPECT_EQ(PictureShown(), u"02230751V.png"_s) << row.Label;
    EXPECT_EQ(program.Find("ButtonSaveBlend")->isEnabled(), row.Fits) << row.Label;
    EXPECT_EQ(program.Find("CheckBoxOverlaid")->isEnabled(), row.Fits) << row.Label;
    EXPECT_EQ(Written(u"ovl.bmp"_s).height() == kPictureLines, row.Fits) << row.Label;
  }
  program.Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 19"_s);
  EXPECT_FALSE(program.Find("ButtonSaveBlend")->isEnabled()) << "the map is another satellite's";
  program.Close();
}

TEST_F(GroundPathTest, OfADamagedRecordingTheLinesThatAreThereAreShown) {
  const QString path = program.Path(u"pictures/02231000V.png"_s);
  QImage picture(90, 60, QImage::Format_RGB32);
  for (unsigned i = 0; i < 90 * 60; ++i) {
    picture.setPixel(static_cast<int>(i % 90), static_cast<int>(i / 90), i * i * 77);
  }
  picture::SavePicture(picture, path);
  const QByteArray whole = files::ReadFile(path);
  StartOnPage();
  const struct {
    qsizetype Bytes;
    const char *Title, *Said;
  } rows[] = {
      {0, "02231000V.png could not be read", "Error: %1: Error Reading File!"},
      {whole.size() / 2, "Picture: 02231000V.png (damaged)  from 10:00 UTC",
       "Message: %1: Error Reading File! Only the first "},
      {whole.size(), "Picture: 02231000V.png  from 10:00 UTC", nullptr},
  };
  for (const auto& row : rows) {
    files::ReplaceFile(path, whole.first(row.Bytes));
    program.Boxes.Take();
    Pick(10, 0);
    program.Click("ButtonReload");
    const auto* title = program.Find<QLabel>("LabelPictureTitle");
    EXPECT_EQ(title->toolTip().isEmpty() ? title->text() : title->toolTip(), QLatin1StringView(row.Title));
    const QString said = program.Boxes.Take().join(u'|');
    EXPECT_TRUE(row.Said ? said.startsWith(QString::fromLatin1(row.Said).arg(path)) : said.isEmpty())
        << said.toStdString();
  }
}

TEST_F(GroundPathTest, MapAndPictureAreFittedAndScrolledTogether) {
  QDir(program.Path(u"."_s)).mkdir(u"pictures/more"_s);
  GivePicture(u"more/02230751V.png"_s, Qt::darkGray);
  GivePicture(u"more/02230851V.png"_s, Qt::darkBlue);
  StartOnPage();
  program.Form->resize(1000, 700);
  program.Form->ShowPage(Page::Setup);
  program.Boxes.ChosenFolder = program.Path(u"pictures/more"_s);
  program.Click("ButtonAddPath");
  program.Form->ShowPage(Page::GroundPath);
  Pick(7, 51);
  EXPECT_EQ(PictureShown(), u"02230751V.png"_s) << "in the folder that was added";
  program.Click("ButtonGenTopo");
  auto* mapBox = program.Find<QScrollArea>("ScrollBoxTopo");
  auto* pictureBox = program.Find<QScrollArea>("ScrollBoxPicture");
  QWidget *map = program.Find("ImageTopo"), *picture = program.Find("ImagePicture");
  const int fitted = mapBox->width() - mapBox->verticalScrollBar()->width();
  EXPECT_EQ(pictureBox->width(), mapBox->width());
  EXPECT_EQ(pictureBox->x() - mapBox->x() - mapBox->width(), 8);
  EXPECT_EQ(map->size(), QSize(fitted, kPictureLines * fitted / 1040));
  EXPECT_EQ(picture->size(), QSize(fitted, qRound(kPictureLines / (1040.0 / fitted))));

  program.Find<QCheckBox>("CheckBoxZoom")->click();
  EXPECT_EQ(map->size(), QSize(1040, kPictureLines));
  EXPECT_EQ(picture->size(), QSize(909, kPictureLines));
  const auto scrollTo = [&](int across) {
    mapBox->horizontalScrollBar()->setValue(across);
    program.Fire("TimerSyncScroll");
    return pictureBox->horizontalScrollBar()->value();
  };
  EXPECT_EQ(scrollTo(120), 120);
  pictureBox->horizontalScrollBar()->setValue(30);
  program.Fire("TimerSyncScroll");
  EXPECT_EQ(mapBox->horizontalScrollBar()->value(), 120) << "one way only";
  EXPECT_EQ(pictureBox->horizontalScrollBar()->value(), 30);
  program.Find<QCheckBox>("CheckBoxScrollBoth")->click();
  EXPECT_EQ(scrollTo(90), 30);

  program.Find<QCheckBox>("CheckBoxOverlaid")->click();
  EXPECT_FALSE(mapBox->isVisible());
  const auto middle = [&] { return picture->grab().toImage().pixel(picture->rect().center()); };
  const QRgb blended = middle();
  QTest::keyClick(program.Form.get(), Qt::Key_F8);
  EXPECT_EQ(middle(), QColor(Qt::darkGray).rgb()) << "the picture alone";
  QTest::keyClick(program.Form.get(), Qt::Key_F8);
  EXPECT_EQ(middle(), blended);
  EXPECT_NE(blended, QColor(Qt::darkGray).rgb());
  program.Boxes.ChosenFile = program.Path(u"blend.png"_s);
  program.Click("ButtonSaveBlend");
  const QImage blend = picture::LoadPicture(*program.Boxes.ChosenFile);
  EXPECT_EQ(blend.size(), QSize(909, kPictureLines));
  program.Boxes.ChosenFile = program.Path(u"blend.tiff"_s);
  program.Click("ButtonSaveBlend");
  const auto saved = files::ReadFile(program.Path(u"blend.tiff.jpg"_s));
  program.Find<QSlider>("SliderOpacity")->setValue(0);
  program.Click("ButtonSaveBlend");
  EXPECT_EQ(program.Boxes.Take().size(), 1) << "another name than the one that was asked for";
  EXPECT_EQ(files::ReadFile(program.Path(u"blend.tiff.jpg"_s)), saved);

  Pick(8, 51);
  EXPECT_EQ(PictureShown(), u"02230851V.png"_s);
  EXPECT_TRUE(mapBox->isVisible()) << "it is of another pass";
  program.Boxes.ChosenFile = program.Path(u"page.pdf"_s);
  program.Find<QAction>("FilePrintImage")->trigger();
  EXPECT_TRUE(files::ReadFile(*program.Boxes.ChosenFile).startsWith("%PDF"));
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  program.Close();
}

TEST_F(GroundPathTest, AnAutomaticRunWritesFourFilesAndCloses) {
  program.Set(u"OvlTextLine1"_s, 8);
  program.Start();
  const QStringList found =
      program.Find<TListBox>("ListBoxPasses")->Items().filter(u"0223075"_s).filter(u"NOAA 19"_s);
  ASSERT_EQ(found.size(), 1);
  program.Close();
  program.Boxes.Take();
  program.Start(found.first().left(10));
  EXPECT_TRUE(QTest::qWaitFor([this] { return !program.Form->isVisible(); }, 5000));
  for (const QString& name : {u"Result.jpg"_s, u"ovl.bmp"_s, u"pass.dat"_s, u"ovl.txt"_s}) {
    EXPECT_TRUE(QFile::exists(program.Path(u"bin/"_s + name))) << name.toStdString();
  }
  EXPECT_EQ(program.Unattended->Failure(), QString());
  const qsizetype lines = files::ReadLines(program.Path(u"bin/pass.dat"_s)).size();
  program.Close();

  // Turned midway it begins anew, and closes with a whole map only.
  program.Start(found.first().left(10));
  WhileMaking([this] { program.Click("ButtonPassDirection"); });
  EXPECT_TRUE(QTest::qWaitFor([this] { return !program.Form->isVisible(); }, 5000));
  EXPECT_EQ(files::ReadLines(program.Path(u"bin/pass.dat"_s)).size(), lines);
  EXPECT_EQ(files::ReadLines(program.Path(u"bin/ovl.txt"_s)).first(), u"North"_s);
  program.Close();

  // What goes wrong is for the caller to know; no box waits.
  program.Set(u"ResultsPath"_s, program.Path(u"gone/"_s));
  program.Start(found.first().left(10));
  EXPECT_TRUE(QTest::qWaitFor([this] { return !program.Form->isVisible(); }, 5000));
  EXPECT_TRUE(program.Unattended->Failure().startsWith(u"Cannot write "_s));
  EXPECT_EQ(program.Boxes.Take(), QStringList());
  program.Close();
}

}  // namespace
}  // namespace pelorin::tests
