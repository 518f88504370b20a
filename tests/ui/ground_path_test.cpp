#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QImage>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "files/text_file.h"
#include "tests/ui/ground_path_fixture.h"

namespace pelorin::tests {
namespace {

TEST_F(GroundPathTest, FromThePassToTheFiles) {
  Set(u"SavePassDetails"_s, 1);
  Set(u"OvlTextLine1"_s, 1 + 4 + 8);
  TimeZone = app::TimeZone(QTimeZone("Europe/Madrid"));
  // The recorder began three minutes after the rise, and named the pictures by the clock on the wall.
  GivePicture(u"02230854V.png"_s, Qt::darkGray);
  GivePicture(u"02230854I.png"_s, Qt::lightGray);
  StartOn(Page::Setup);
  ChoosePass(u"02230751"_s, u"NOAA 19"_s);
  Click("ButtonPicFromPass");
  EXPECT_EQ(PictureShown(), u"02230854V.png"_s);
  Choose("RadioButtonChannel1");
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: 02230854I.png  from 07:54 UTC"_s);

  QTest::keyClick(Find("SpinEditPassDuration"), Qt::Key_Return);
  const QImage south = Written(u"ovl.bmp"_s);
  EXPECT_EQ(south.size(), QSize(1040, 300)) << "as many lines as the picture has";
  EXPECT_TRUE(FirstLine(u"pass.dat"_s).startsWith(u"2022-02-23T07:54:00.000 "_s));
  EXPECT_TRUE(FirstLine(u"ovl.txt"_s).endsWith(u"  South"_s));
  Click("ButtonPassDirection");
  EXPECT_EQ(Text("ButtonPassDirection"), u"---> N"_s);
  EXPECT_EQ(Text("ButtonFlightDirection"), u"---> N"_s);
  EXPECT_EQ(Written(u"ovl.bmp"_s), south.mirrored(true, true));

  // What lies over the ground, and a correction, are seen at once and written soon.
  const QImage bare = Written(u"Result.jpg"_s);
  Find<QAction>("MenuShowOverlay")->trigger();
  Fire("TimerSaveResults");
  EXPECT_NE(Written(u"Result.jpg"_s), bare);
  Find<QDoubleSpinBox>("SpinEditTimeCorrection")->setValue(7.5);
  Fire("TimerSaveResults");
  EXPECT_TRUE(FirstLine(u"pass.dat"_s).contains(u":07.500 "_s));
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(GroundPathTest, MakingEndsWhenTheUserWantsIt) {
  StartOnPage();
  Pick(7, 50);
  Find<QSpinBox>("SpinEditPassDuration")->setValue(30);
  Click("ButtonGenTopo");
  const QImage whole = Written(u"ovl.bmp"_s);
  ASSERT_EQ(whole.height(), 3600);
  const struct {
    const char* Label;
    std::function<void()> Deed;
  } rows[] = {
      {"button", [this] { Click("ButtonGenTopo"); }},
      {"Escape", [this] { QTest::keyClick(Find("SpinEditPassDuration"), Qt::Key_Escape); }},
      {"Escape after a turn",
       [this] {
         Click("ButtonPassDirection");
         Click("ButtonPassDirection");
         QTest::keyClick(Find("SpinEditPassDuration"), Qt::Key_Escape);
       }},
      {"closing", [this] { Form->close(); }},
  };
  for (const auto& row : rows) {
    WhileMaking(row.Deed);
    Click("ButtonGenTopo");
    EXPECT_TRUE(IsIdle()) << row.Label;
    // North-bound lines come in from below; the last ones were not made, but the file was written.
    const QImage part = Written(u"ovl.bmp"_s);
    ASSERT_EQ(part.size(), whole.size()) << row.Label;
    EXPECT_EQ(part.copy(0, 3599, 1040, 1), whole.copy(0, 3599, 1040, 1)) << row.Label;
    EXPECT_NE(part.copy(0, 0, 1040, 100), whole.copy(0, 0, 1040, 100)) << row.Label;
  }
  EXPECT_FALSE(Form->isVisible());
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(GroundPathTest, ATypedTimeCountsHoweverItIsLeft) {
  GivePicture(u"02230751V.png"_s, Qt::darkGray);
  GivePicture(u"02231459V.png"_s, Qt::darkRed);
  StartOnPage();
  auto* time = Find<QDateTimeEdit>("DateTimePickerTime");
  auto* tabs = Find<QTabWidget>("PageControl")->tabBar();
  const struct {
    const char* Label;
    std::function<void()> Leave;
  } rows[] = {
      {"Load picture", [this] { Click("ButtonReload"); }},
      {"Make map", [this] { Click("ButtonGenTopo"); }},
      {"Enter", [time] { QTest::keyClick(time, Qt::Key_Return); }},
      {"Tab", [time] { QTest::keyClick(time, Qt::Key_Tab); }},
      {"mnemonic", [time] { QTest::keyClick(time, Qt::Key_U, Qt::AltModifier); }},
      {"another tab", [tabs] { QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center()); }},
  };
  for (const auto& row : rows) {
    Form->ShowPage(Page::GroundPath);
    Pick(14, 59);
    ASSERT_EQ(PictureShown(), u"02231459V.png"_s) << row.Label;
    ClickAndType(time, 1, u"0751"_s);
    row.Leave();
    EXPECT_EQ(time->text(), u"07:51"_s) << row.Label;
    EXPECT_EQ(PictureShown(), u"02230751V.png"_s) << row.Label;
  }
  Form->ShowPage(Page::GroundPath);
  Pick(14, 59);
  ClickAndType(time, 4, u"00"_s);
  Click("ButtonReload");
  EXPECT_EQ(time->text(), u"14:00"_s) << "only a step takes the hour along";
}

TEST_F(GroundPathTest, StepsCarryAndAPickerThatIsLeftLooksAgain) {
  GivePicture(u"02240001V.png"_s, Qt::darkGray);
  StartOnPage();
  auto* time = Find<QDateTimeEdit>("DateTimePickerTime");
  Pick(23, 59);
  time->setFocus();
  time->setCurrentSection(QDateTimeEdit::MinuteSection);
  QTest::keyClick(time, Qt::Key_Up);
  EXPECT_EQ(time->text(), u"00:00"_s);
  EXPECT_EQ(Find<QDateTimeEdit>("DateTimePickerDate")->date(), QDate(2022, 2, 24));
  EXPECT_EQ(PictureShown(), u"02240001V.png"_s);
  GivePicture(u"02240000V.png"_s, Qt::lightGray);
  Find("ButtonReload")->setFocus();
  EXPECT_EQ(PictureShown(), u"02240000V.png"_s);

  // One that is damaged is said to be so once, and shown as far as it goes.
  files::ReplaceFile(Path(u"pictures/02240700V.png"_s), "junk");
  ClickAndType(time, 1, u"0700"_s);
  Find("ButtonReload")->setFocus();
  EXPECT_EQ(Boxes.Take().size(), 1);
  EXPECT_EQ(Text("LabelPictureTitle"), u"02240700V.png could not be read; this is still 02240000V.png"_s);
  const QString cut = GivePicture(u"02240800V.jpg"_s);
  const QByteArray whole = files::ReadFile(cut);
  files::ReplaceFile(cut, whole.first(whole.size() / 2));
  Pick(8, 0);
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: 02240800V.jpg (damaged)  from 08:00 UTC"_s);
  EXPECT_TRUE(Boxes.Take().value(0).startsWith(u"Message: %1: "_s.arg(cut)));
}

TEST_F(GroundPathTest, OnlyTheMapOfItsPassIsLaidOverAPicture) {
  GivePicture(u"02230751V.png"_s, Qt::darkGray);
  GivePicture(u"02231432V.png"_s, Qt::darkRed);
  files::ReplaceFile(Path(u"pictures/02230900V.png"_s), "junk");
  StartOnPage();
  Boxes.ChosenFile = Path(u"pictures/02231432V.png"_s);
  const auto onWorldMap = [this](const char* button) {
    Form->ShowPage(Page::WorldMap);
    Find<QDateTimeEdit>("DateTimePickerMapTime")->setTime(QTime(14, 32));
    Click(button);
    Form->ShowPage(Page::GroundPath);
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
         Click("ButtonGenTopo");
       },
       true},
      {"a channel of which there is none", [this] { Choose("RadioButtonChannel2"); }, true},
      {"a damaged picture", [this] { Pick(9, 0); }, false},
      {"another satellite", [this] { Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 18"_s); },
       true},
  };
  for (const auto& row : rows) {
    Choose("RadioButtonChannel0");
    Pick(7, 51);
    Click("ButtonGenTopo");
    row.Deed();
    Click("ButtonGenTopo");
    EXPECT_EQ(PictureShown(), u"02230751V.png"_s) << row.Label;
    EXPECT_EQ(Find("ButtonSaveBlend")->isEnabled(), row.Fits) << row.Label;
    EXPECT_EQ(Find("CheckBoxOverlaid")->isEnabled(), row.Fits) << row.Label;
    EXPECT_EQ(Written(u"ovl.bmp"_s).height() == 300, row.Fits) << row.Label;
  }
  Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 19"_s);
  EXPECT_FALSE(Find("ButtonSaveBlend")->isEnabled()) << "the map is another satellite's";
}

TEST_F(GroundPathTest, MapAndPictureAreSeenTogether) {
  GivePicture(u"02230751V.png"_s, Qt::darkGray);
  GivePicture(u"02230851V.png"_s, Qt::darkBlue);
  StartOnPage();
  Form->resize(1000, 700);
  Pick(7, 51);
  Click("ButtonGenTopo");
  auto* mapBox = Find<QScrollArea>("ScrollBoxTopo");
  auto* pictureBox = Find<QScrollArea>("ScrollBoxPicture");
  QWidget *map = Find("ImageTopo"), *picture = Find("ImagePicture");
  const int fitted = mapBox->width() - mapBox->verticalScrollBar()->width();
  EXPECT_EQ(pictureBox->width(), mapBox->width());
  EXPECT_EQ(map->size(), QSize(fitted, 300 * fitted / 1040));
  EXPECT_EQ(picture->width(), fitted);

  Find<QCheckBox>("CheckBoxZoom")->click();
  EXPECT_EQ(map->size(), QSize(1040, 300));
  EXPECT_EQ(picture->size(), QSize(909, 300));
  const auto scrollTo = [&](QScrollArea* box, int across) {
    box->horizontalScrollBar()->setValue(across);
    Fire("TimerSyncScroll");
    return std::pair(mapBox->horizontalScrollBar()->value(), pictureBox->horizontalScrollBar()->value());
  };
  EXPECT_EQ(scrollTo(mapBox, 120), std::pair(120, 120));
  EXPECT_EQ(scrollTo(pictureBox, 30), std::pair(120, 30)) << "one way only";
  Find<QCheckBox>("CheckBoxScrollBoth")->click();
  EXPECT_EQ(scrollTo(mapBox, 90), std::pair(90, 30));

  Find<QCheckBox>("CheckBoxOverlaid")->click();
  EXPECT_FALSE(mapBox->isVisible());
  const auto middle = [&] { return picture->grab().toImage().pixel(picture->rect().center()); };
  const QRgb blended = middle();
  QTest::keyClick(Form.get(), Qt::Key_F8);
  EXPECT_EQ(middle(), QColor(Qt::darkGray).rgb()) << "the picture alone";
  QTest::keyClick(Form.get(), Qt::Key_F8);
  EXPECT_EQ(middle(), blended);
  EXPECT_NE(blended, QColor(Qt::darkGray).rgb());
  Boxes.ChosenFile = Path(u"blend.tiff"_s);
  Click("ButtonSaveBlend");
  const QByteArray saved = files::ReadFile(Path(u"blend.tiff.jpg"_s));
  EXPECT_EQ(QImage::fromData(saved).size(), QSize(909, 300));
  Find<QSlider>("SliderOpacity")->setValue(0);
  Click("ButtonSaveBlend");
  EXPECT_EQ(Boxes.Take().size(), 1) << "another name than the one that was asked for";
  EXPECT_EQ(files::ReadFile(Path(u"blend.tiff.jpg"_s)), saved);

  Pick(8, 51);
  EXPECT_TRUE(mapBox->isVisible()) << "it is of another pass";
  Boxes.ChosenFile = Path(u"page.pdf"_s);
  Find<QAction>("FilePrintImage")->trigger();
  EXPECT_TRUE(files::ReadFile(*Boxes.ChosenFile).startsWith("%PDF"));
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(GroundPathTest, AnAutomaticRunThatIsTurnedBeginsAnewAndClosesWithAWholeMap) {
  Set(u"OvlTextLine1"_s, 8);
  Start(u"0223075129"_s);
  WhileMaking([this] { Click("ButtonPassDirection"); });
  EXPECT_TRUE(QTest::qWaitFor([this] { return !Form->isVisible(); }, 5000));
  EXPECT_EQ(Unattended->Failure(), QString());
  EXPECT_EQ(files::ReadLines(Path(u"bin/pass.dat"_s)).size(), 15 * 120);
  EXPECT_EQ(FirstLine(u"ovl.txt"_s), u"North"_s);
}

}  // namespace
}  // namespace pelorin::tests
