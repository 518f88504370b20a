#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "align/alignment_log.h"
#include "desktop/overlay/picture_view.h"
#include "files/atomic_file.h"
#include "tests/ui/ground_path_fixture.h"

namespace pelorin::tests {
namespace {

/// A picture that is fitted by hand, on the ground path.
class HandFitTest : public GroundPathTest {
 protected:
  void ShowPicture() {
    GivePicture(u"02230751V.png"_s, Qt::darkGray);
    StartOnPage();
    Pick(7, 51);
  }
  desktop::TPictureView* View() { return Find<desktop::TPictureView>("ImagePicture"); }
  bool IsOn() { return Find("HandFitBar")->isVisible(); }
  double Offset() { return Find<QDoubleSpinBox>("SpinEditTimeCorrection")->value(); }
  /// A line there, on the part of the picture that is seen, so far down at least.
  QPoint OnALine(int top = 20) {
    const QRect seen = View()->visibleRegion().boundingRect().adjusted(20, top, -20, -60);
    for (const lines::PixelLine& line : View()->Marks().Lines->Shores) {
      for (const swath::PixelPoint& place : line) {
        const QPoint at = View()->Scale().OnView(place).toPoint();
        if (seen.contains(at)) return at;
      }
    }
    ADD_FAILURE() << "no line is seen";
    return {};
  }
  void Pull(QPoint from, QPoint by) {
    // A pointer that is there already does not move.
    QTest::mouseMove(View(), from + QPoint(1, 1));
    QTest::mouseMove(View(), from);
    EXPECT_EQ(View()->cursor().shape(), Qt::OpenHandCursor);
    QTest::mousePress(View(), Qt::LeftButton, {}, from);
    QTest::mouseMove(View(), from + by / 2);
    QTest::mouseMove(View(), from + by);
    EXPECT_EQ(View()->cursor().shape(), Qt::ClosedHandCursor);
    QTest::mouseRelease(View(), Qt::LeftButton, {}, from + by);
  }
};

TEST_F(HandFitTest, ALineThatIsPulledMovesTheMap) {
  ShowPicture();
  Click("ButtonGenTopo");
  const QImage before = Written(u"ovl.bmp"_s);
  QTest::keyClick(View(), Qt::Key_F7);
  ASSERT_TRUE(IsOn());
  EXPECT_FALSE(Find("ButtonGenTopo")->isEnabled());
  EXPECT_FALSE(Find("GroupBoxTimeCorrection")->isEnabled());
  EXPECT_FALSE(Find("ButtonHandTake")->isEnabled());
  const QPoint from = OnALine();
  Pull(from, {0, 30});
  const QString told = Text("LabelHandFit");
  EXPECT_TRUE(told.startsWith(u"1 point: time and shift only (time +"_s)) << told.toStdString();
  EXPECT_EQ(View()->Marks().Points.at(0).Text, u"1  0.0 px"_s);
  QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Text("LabelHandFit"), u"Drag a line to where the picture shows it."_s);
  QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Text("LabelHandFit"), told);
  QTest::mouseClick(View(), Qt::LeftButton, {}, from + QPoint(0, 30));
  QTest::keyClick(View(), Qt::Key_Down);
  EXPECT_NE(Text("LabelHandFit"), told) << "the chosen point moves by a line";
  QTest::keyClick(View(), Qt::Key_Delete);
  EXPECT_TRUE(View()->Marks().Points.empty());
  Click("ButtonHandUndo");
  EXPECT_EQ(Offset(), 0) << "nothing is taken yet";
  QTest::keyClick(View(), Qt::Key_Return);
  EXPECT_FALSE(IsOn());
  EXPECT_TRUE(View()->Marks().IsEmpty());
  const align::AlignmentLog log(Path(u"user/alignments.csv"_s));
  ASSERT_EQ(log.Rows().size(), 1U);
  EXPECT_EQ(log.Rows().front().How, align::FoundBy::Hand);
  EXPECT_NEAR(log.Rows().front().ClockS, Offset(), 0.01);
  // Two lines a second, north up on a north-bound picture: what lies lower came earlier.
  EXPECT_NEAR(Offset(), (30 / View()->Scale().Down() + 1) / 2, 0.02);
  Fire("TimerSaveResults");
  EXPECT_NE(Written(u"ovl.bmp"_s), before) << "the map follows";
  EXPECT_TRUE(Find("GroupBoxTimeCorrection")->isEnabled() && Find("GroupBoxAttitude")->isEnabled());
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(HandFitTest, AClocksDriftIsThePicturesAlone) {
  ShowPicture();
  Click("ButtonFitByHand");
  Pull(OnALine(), {0, 1});
  const int middle = View()->visibleRegion().boundingRect().height() / 2;
  Pull(OnALine(middle), {0, 4});
  auto* third = Find<QComboBox>("ComboBoxThird");
  third->setFocus();
  QTest::keyClick(third, Qt::Key_Down);
  EXPECT_TRUE(Text("LabelHandFit").startsWith(u"2 points: time, shift and clock drift"_s))
      << Text("LabelHandFit").toStdString();
  Click("ButtonHandTake");
  const auto title = [this] { return Find<QGroupBox>("GroupBoxTimeCorrection")->title(); };
  EXPECT_TRUE(title().contains(u" ppm"_s)) << title().toStdString();
  Click("ButtonCorrectionReset");
  EXPECT_EQ(title(), u" Time correction "_s);
  EXPECT_EQ(Offset(), 0);
}

TEST_F(HandFitTest, WhatIsNotTakenLeavesNoTrace) {
  ShowPicture();
  const auto leave = [this](const char* how) {
    SCOPED_TRACE(how);
    EXPECT_FALSE(IsOn());
    EXPECT_FALSE(Find<QPushButton>("ButtonFitByHand")->isChecked());
    EXPECT_EQ(Offset(), 0);
    EXPECT_TRUE(View()->Marks().IsEmpty());
  };
  Click("ButtonFitByHand");
  Pull(OnALine(), {5, 12});
  QTest::mousePress(View(), Qt::LeftButton, {}, OnALine());
  QTest::mouseMove(View(), {30, 30});
  QTest::keyClick(View(), Qt::Key_Escape);
  EXPECT_EQ(View()->Marks().Points.size(), 1U) << "the first Escape gives up the drag";
  QTest::mouseRelease(View(), Qt::LeftButton, {}, {30, 30});
  QTest::keyClick(View(), Qt::Key_Escape);
  leave("Escape");
  Click("ButtonFitByHand");
  Pull(OnALine(), {5, 12});
  Click("ButtonHandCancel");
  leave("Cancel");
  Click("ButtonFitByHand");
  Pull(OnALine(), {5, 12});
  Click("ButtonFitByHand");
  leave("the button itself");
  Click("ButtonFitByHand");
  GivePicture(u"../elsewhere/0223075142V.png"_s, Qt::darkRed);
  Open(u"elsewhere/0223075142V.png"_s);
  leave("another picture");
}

TEST_F(HandFitTest, SaysWhyItCannotBe) {
  files::ReplaceFile(Path(u"bin/Coastlines.dat"_s), "junk");
  ShowPicture();
  EXPECT_FALSE(Find("ButtonFitByHand")->isEnabled());
  EXPECT_TRUE(Find("ButtonFitByHand")->toolTip().contains(u"Coastlines.dat"_s));
  Click("ButtonGenTopo");
  EXPECT_TRUE(Find("CheckBoxOverlaid")->isEnabled()) << "nothing else suffers";
  Close();
  QFile::remove(Path(u"bin/Coastlines.dat"_s));
  StartOnPage();
  EXPECT_EQ(Find("ButtonFitByHand")->toolTip(), u"Load a picture first."_s);
  Pick(7, 51);
  EXPECT_TRUE(Find("ButtonFitByHand")->isEnabled());
}

}  // namespace
}  // namespace pelorin::tests
