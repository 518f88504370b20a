#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QFileInfo>
#include <QGroupBox>
#include <QImage>
#include <QMenu>
#include <QMimeData>
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
#include "tests/support/decoded_pass.h"
#include "tests/support/minute_marks.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;
using session::Page;

/// A station with NOAA 15, 18 and 19, and received pictures of different colours by their names.
class GroundPathTest : public testing::Test, protected ProgramFixture {
 protected:
  GroundPathTest() : ProgramFixture(u"\"NOAA 15\",\"NOAA 18\",\"NOAA 19\""_s) {}

  void StartOnPage() {
    StartOn(Page::GroundPath);
    Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 19"_s);
  }
  void Pick(int hour, int minute) { Find<QDateTimeEdit>("DateTimePickerTime")->setTime(QTime(hour, minute)); }
  void Choose(const char* channel) { QTest::mouseClick(Find(channel), Qt::LeftButton, {}, QPoint(8, 8)); }
  void Open(const QString& name) {
    Boxes.ChosenFile = Path(name);
    Find<QAction>("Open1")->trigger();
  }
  QString PictureShown() { return QFileInfo(Find("ImagePicture")->toolTip()).fileName(); }
  QImage Written(const QString& name) { return QImage(Path(u"bin/"_s + name)); }
  QString FirstLine(const QString& name) { return files::ReadLines(Path(u"bin/"_s + name)).value(0); }
  bool IsIdle() { return Text("ButtonGenTopo") == u"Make map"_s; }
  /// Does something as soon as a map is half made.
  template <class Deed>
  void WhileMaking(Deed deed) {
    auto* timer = new QTimer(Form.get());
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, deed] {
      if (IsIdle()) return;
      timer->deleteLater();
      deed();
    });
    timer->start(0);
  }
};

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

TEST_F(GroundPathTest, OpenedPicturesTellTheirTimeAndStay) {
  GivePicture(u"02230751I.png"_s, Qt::lightGray);
  const QString opened = u"0223075142V.png"_s;
  GivePicture(u"../elsewhere/"_s + opened, Qt::darkRed, QDate(2021, 11, 15));
  for (const char* name : {"elsewhere/party.png", "elsewhere/02240001.png"}) {
    files::ReplaceFile(Path(QLatin1StringView(name)), "junk");
  }
  StartOnPage();
  Open(u"elsewhere/"_s + opened);
  EXPECT_EQ(Boxes.Asked, QStringList(u"Choose a satellite image to load"_s));
  EXPECT_EQ(Find<QDateTimeEdit>("DateTimePickerTime")->time(), QTime(7, 51));
  EXPECT_EQ(Find<QDateTimeEdit>("DateTimePickerDate")->date(), QDate(2021, 2, 23));
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: %1  from 07:51:42 UTC"_s.arg(opened));
  Find<QDoubleSpinBox>("SpinEditTimeCorrection")->setValue(3);

  Form->Shared().ChooseSatellite(0);
  Find("DateTimePickerTime")->setFocus();
  Open(u"elsewhere/party.png"_s);
  EXPECT_EQ(Boxes.Take().size(), 1) << "what is no picture is told";
  Choose("RadioButtonChannel2");
  Click("ButtonGenTopo");
  EXPECT_EQ(PictureShown(), opened) << "nor is there such a channel";
  EXPECT_TRUE(Find("ButtonSaveBlend")->isEnabled());
  Choose("RadioButtonChannel1");
  Click("ButtonGenTopo");
  EXPECT_EQ(PictureShown(), u"02230751I.png"_s);
  EXPECT_TRUE(Find("ButtonSaveBlend")->isEnabled());
  Open(u"elsewhere/02240001.png"_s);
  EXPECT_EQ(Boxes.Take().size(), 1) << "and what is no picture, though it tells its time";
  EXPECT_EQ(PictureShown(), u"02230751I.png"_s);
  Close();
  EXPECT_EQ(SavedText(u"ClockCorrections"_s), u"NOAA 19=3.0"_s);
}

TEST_F(GroundPathTest, ADecodersPassLiesUnderItsMapAtOnce) {
  const QString pass = Path(u"METEOR-M2_pass"_s);
  LeaveDecodedPass(pass, orbit::MakeDateTime(2022, 2, 23, 17, 33, 12), 400);
  LeaveDecodedPass(Path(u"cut"_s), orbit::MakeDateTime(2022, 2, 23, 17, 33, 12), 8);
  files::ReplaceFile(Path(u"cut/product.cbor"_s), "junk");
  StartOn(Page::WorldMap);
  QMimeData dragged;
  dragged.setUrls({QUrl::fromLocalFile(pass)});
  QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
  QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
  QCoreApplication::sendEvent(Form.get(), &enter);
  QCoreApplication::sendEvent(Form.get(), &drop);
  ASSERT_TRUE(QTest::qWaitFor([this] { return Form->CurrentPage() == Page::GroundPath; }, 2000));
  EXPECT_EQ(Text("ComboBoxSatForPic"), u"METEOR M2"_s) << "though it is not an active one";
  EXPECT_EQ(Text("ButtonPassDirection"), u"---> N"_s);
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: MSU-MR-1.png  from 17:33:12 UTC, north-bound, turned"_s);
  EXPECT_EQ(Find<QDoubleSpinBox>("SpinEditTimeCorrection")->value(), 0.2);
  Click("ButtonGenTopo");
  const QImage turned = Written(u"ovl.bmp"_s);
  EXPECT_EQ(turned.size(), QSize(1568, 400));
  EXPECT_TRUE(Find("CheckBoxOverlaid")->isEnabled());
  Find<QCheckBox>("CheckBoxNorthUp")->click();
  Fire("TimerSaveResults");
  EXPECT_EQ(Written(u"ovl.bmp"_s), turned.mirrored(true, true)) << "the map is turned with the picture";
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: MSU-MR-1.png  from 17:33:12 UTC, north-bound"_s);

  Form->Shared().Activate(u"NOAA 20"_s);
  EXPECT_EQ(Text("ComboBoxSatForPic"), u"METEOR M2"_s) << "who becomes active has nothing to do with it";
  InDialog("ButtonDetails", [this](QDialog&) {
    EXPECT_TRUE(Text("LabelReason").contains(u"by the product file"_s));
    Find<QTimeEdit>("StartTime")->setTime(QTime(17, 34, 12));
    Find<QComboBox>("ComboBoxStored")->setCurrentIndex(2);
    Find<QPushButton>("ButtonOK")->click();
  });
  Find<QComboBox>("ComboBoxPictureChannel")->setCurrentIndex(1);
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: MSU-MR-2.png  from 17:34:12 UTC, north-bound"_s)
      << "what was told holds for all that were opened together";
  files::ReplaceFile(pass + u"/MSU-MR_corrected.png"_s, files::ReadFile(pass + u"/MSU-MR-1.png"_s));
  Open(u"METEOR-M2_pass/MSU-MR_corrected.png"_s);
  EXPECT_TRUE(Boxes.Take().value(0).contains(u"stretched"_s));
  EXPECT_FALSE(Find("CheckBoxOverlaid")->isEnabled()) << "no map can lie on it";
  Open(u"METEOR-M2_pass/MSU-MR-2.png"_s);
  EXPECT_EQ(PictureShown(), u"MSU-MR-2.png"_s);
  Open(u"cut/product.cbor"_s);
  EXPECT_EQ(Boxes.Take().size(), 1);
  EXPECT_EQ(PictureShown(), u"MSU-MR-2.png"_s) << "the page is as it was";
  auto* recent = Find<QMenu>("MenuOpenRecent");
  Q_EMIT recent->aboutToShow();
  ASSERT_EQ(recent->actions().size(), 3);
  EXPECT_EQ(recent->actions().at(2)->text(),
            QFileInfo(Path(u"."_s)).canonicalFilePath().section(u'/', -1) + u"/METEOR-M2_pass/MSU-MR-1.png"_s)
      << "instruments' folders are called alike";
  recent->actions().at(2)->trigger();
  EXPECT_EQ(PictureShown(), u"MSU-MR-1.png"_s);
  Pick(7, 51);
  EXPECT_FALSE(Find("ComboBoxPictureChannel")->isVisible()) << "another pass is looked for in the folders";
  LeaveDecodedPass(Path(u"pictures/METEOR-M2_20220223_174012Z"_s),
                   orbit::MakeDateTime(2022, 2, 23, 17, 40, 12), 80);
  Pick(17, 38);
  Click("ButtonReload");
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: MSU-MR-1.png  from 17:40:12 UTC, north-bound"_s)
      << "found by its own name";
}

TEST_F(GroundPathTest, WhatAPictureDoesNotTellIsAsked) {
  GivePicture(u"../elsewhere/party.png"_s, Qt::darkRed);
  GivePicture(u"../elsewhere/02230300V.png"_s, Qt::darkBlue);
  StartOnPage();
  Boxes.ChosenFile = Path(u"elsewhere/party.png"_s);
  InDialog("Open1", [this](QDialog& dialog) {
    EXPECT_TRUE(Text("LabelReason").contains(u"does not tell when"_s));
    Find<QComboBox>("ComboBoxSatellite")->setCurrentText(u"NOAA 18"_s);
    Find<QDateEdit>("StartDate")->setDate(QDate(2022, 2, 23));
    Find<QTimeEdit>("StartTime")->setTime(QTime(9, 34, 42));
    Find<QComboBox>("ComboBoxStored")->setCurrentIndex(1);
    Find<QPushButton>("ButtonOK")->click();
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(Text("ComboBoxSatForPic"), u"NOAA 18"_s);
  EXPECT_EQ(Text("LabelPictureTitle"), u"Picture: party.png  from 09:34:42 UTC, north-bound, turned"_s);
  Click("ButtonGenTopo");
  EXPECT_TRUE(Find("CheckBoxOverlaid")->isEnabled());
  // A year, or a clock, that puts the satellite out of sight.
  Boxes.ChosenFile = Path(u"elsewhere/02230300V.png"_s);
  InDialog("Open1", [this](QDialog& dialog) {
    EXPECT_TRUE(Text("LabelReason").contains(u"out of sight"_s));
    dialog.reject();
  });
  EXPECT_EQ(PictureShown(), u"party.png"_s);
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(GroundPathTest, AttitudeIsTheUsersForItsSatelliteUntilReset) {
  GivePicture(u"02230751V.png"_s, Qt::darkGray);
  StartOnPage();
  Pick(7, 51);
  Click("ButtonGenTopo");
  const QImage fitted = Written(u"ovl.bmp"_s);
  const auto shown = [this] {
    return Find<QGroupBox>("GroupBoxAttitude")->title() + Find<QDoubleSpinBox>("SpinEditRoll")->text() +
           u' ' + Find<QDoubleSpinBox>("SpinEditYaw")->text();
  };
  EXPECT_EQ(shown(), u" Attitude, as fitted for NOAA 19 -0.01° 0.00°"_s);
  auto* roll = Find<QDoubleSpinBox>("SpinEditRoll");
  roll->setFocus();
  roll->selectAll();
  QTest::keyClicks(roll, u"2.5"_s);
  QTest::keyClick(roll, Qt::Key_Tab);
  Fire("TimerSaveResults");
  const QImage turned = Written(u"ovl.bmp"_s);
  EXPECT_NE(turned, fitted);
  const QString mine = u" Attitude, yours 2.50° 0.00°"_s;
  EXPECT_EQ(shown(), mine);
  Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 15"_s);
  EXPECT_EQ(shown(), u" Attitude, as fitted for NOAA 15 -0.10° 0.40°"_s);
  Close();
  EXPECT_EQ(SavedText(u"AttitudeCorrections"_s), u"33591/909=2.50/0.00/0.00"_s);

  StartOnPage();
  Pick(7, 51);
  EXPECT_EQ(shown(), mine);
  Click("ButtonGenTopo");
  EXPECT_EQ(Written(u"ovl.bmp"_s), turned);
  Click("ButtonAttitudeReset");
  Fire("TimerSaveResults");
  EXPECT_EQ(Written(u"ovl.bmp"_s), fitted);
  Close();
  EXPECT_EQ(SavedText(u"AttitudeCorrections"_s), QString());
}

TEST_F(GroundPathTest, MinuteMarksOfferTheirCorrection) {
  // Marks 30 s after the first line and a minute later; north-bound, so the file is turned.
  const QImage received = WithMinuteMarks(86, 1040);
  ASSERT_TRUE(received.mirrored(true, true).save(GivePicture(u"02230751V.png"_s)));
  StartOnPage();
  Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 18"_s);
  Pick(7, 51);
  EXPECT_EQ(Text("ButtonMinuteMarks"), u"Minute marks: begin 30.0 s later,\nif NOAA 18 marks full minutes"_s);
  Find<QComboBox>("ComboBoxSatForPic")->setCurrentText(u"NOAA 19"_s);
  EXPECT_EQ(Text("ButtonMinuteMarks"), u"Minute marks: begin 43.3 s later"_s);
  auto* correction = Find<QDoubleSpinBox>("SpinEditTimeCorrection");
  EXPECT_EQ(correction->value(), 0) << "never unasked";
  Click("ButtonMinuteMarks");
  EXPECT_EQ(correction->value(), 43.3);
  EXPECT_FALSE(Find("ButtonMinuteMarks")->isVisible());
  Click("ButtonCorrectionReset");
  EXPECT_EQ(correction->value(), 0);
  EXPECT_TRUE(Find("ButtonMinuteMarks")->isVisible());
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
