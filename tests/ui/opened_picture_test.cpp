#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
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
#include <QTest>
#include <QTimeEdit>
#include <QUrl>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "swath/scanner_match.h"
#include "swath/scanner_table.h"
#include "tests/support/decoded_pass.h"
#include "tests/support/minute_marks.h"
#include "tests/support/painted_pass.h"
#include "tests/support/tables.h"
#include "tests/ui/ground_path_fixture.h"

namespace pelorin::tests {
namespace {

/// Pictures that the user names, on the ground path.
class OpenedPictureTest : public GroundPathTest {};

TEST_F(OpenedPictureTest, OpenedPicturesTellTheirTimeAndStay) {
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

TEST_F(OpenedPictureTest, ADecodersPassLiesUnderItsMapAtOnce) {
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

TEST_F(OpenedPictureTest, WhatAPictureDoesNotTellIsAsked) {
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

TEST_F(OpenedPictureTest, CoastsTellThePassOfAPicture) {
  swath::Recording pass;
  pass.Columns = swath::kZoneColumns;
  pass.Rows = 1000;
  pass.Start = orbit::MakeDateTime(2022, 2, 23, 7, 53);
  std::vector<std::string> problems;
  swath::TakeElements(DemonstrationSatellite("NOAA 19"),
                      swath::LoadScannerTables({QStringLiteral(PELORIN_SCANNERS)}, problems), pass);
  pass.Lies.Turned = true;
  QDir().mkpath(Path(u"elsewhere"_s));
  ASSERT_TRUE(PaintedPass(pass, PaintedEarth(), {0.2, 5}).save(Path(u"elsewhere/party.png"_s)));
  StartOnPage();
  Boxes.ChosenFile = Path(u"elsewhere/party.png"_s);
  InDialog("Open1", [this](QDialog& dialog) {
    Find<QDateEdit>("StartDate")->setDate(QDate(2022, 2, 23));
    Find<QComboBox>("ComboBoxSatellite")->setCurrentText(u"NOAA 15"_s);
    auto* button = Find<QPushButton>("ButtonWhichPass");
    button->click();
    EXPECT_TRUE(dialog.isVisible());
    button->click();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("LabelPasses").startsWith(u"Stopped"_s); }, 60000));
    EXPECT_EQ(Text("ComboBoxSatellite"), u"NOAA 15"_s);
    button->click();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Find("ListBoxPasses")->isVisible(); }, 60000));
    EXPECT_TRUE(Text("LabelPasses").startsWith(u"It is the first"_s)) << Text("LabelPasses").toStdString();
    EXPECT_EQ(Text("ComboBoxSatellite"), u"NOAA 19"_s);
    EXPECT_LE(std::abs(Find<QTimeEdit>("StartTime")->time().secsTo(QTime(7, 53))), 1);
    EXPECT_EQ(Text("ComboBoxStored"), u"Turned by 180 degrees"_s);
    Find<QPushButton>("ButtonOK")->click();
  });
  EXPECT_EQ(Text("ComboBoxSatForPic"), u"NOAA 19"_s);
  EXPECT_TRUE(Text("LabelPictureTitle").contains(u"party.png  from 07:5"_s));
}

TEST_F(OpenedPictureTest, AttitudeIsTheUsersForItsSatelliteUntilReset) {
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

TEST_F(OpenedPictureTest, MinuteMarksOfferTheirCorrection) {
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

}  // namespace
}  // namespace pelorin::tests
