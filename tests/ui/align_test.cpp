#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "align/alignment_log.h"
#include "desktop/overlay/picture_view.h"
#include "picture/picture_file.h"
#include "tests/support/painted_pass.h"
#include "tests/support/tables.h"
#include "tests/ui/ground_path_fixture.h"

namespace pelorin::tests {
namespace {

const QString kPicture = u"pictures/0223174200V.png"_s;

/// A picture of a pass over Europe, of which the recorder's clock was 12.4 s ahead, and other ones.
class AlignTest : public GroundPathTest {
 protected:
  static constexpr double kLateS = 12.4;

  void GivePass() {
    static const QImage painted = [] {
      swath::Recording truth;
      truth.Elements = std::make_shared<const orbit::TSatellite>(DemonstrationSatellite("NOAA 19"));
      truth.SeenBy = {"scanner", {909, 110.74, swath::ScanLaw::Zones}, 2, false};
      truth.Start = orbit::MakeDateTime(2022, 2, 23, 17, 42);
      truth.OffsetS = kLateS;
      truth.Offsets.YawDeg = 0.6;
      truth.Rows = 1200;
      truth.Columns = 909;
      truth.Lies.Turned = true;
      return PaintedPass(truth, PaintedEarth(), {0.3, 6});
    }();
    picture::SavePicture(painted, Path(kPicture));
    // Its name leaves the year to the file.
    QFile file(Path(kPicture));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(QDate(2022, 2, 24).startOfDay(), QFileDevice::FileModificationTime));
  }
  /// Opened, with its map.
  void ShowPass() {
    GivePass();
    StartOnPage();
    Open(kPicture);
    Click("ButtonGenTopo");
  }
  template <class Effect>
  void WaitFor(Effect effect) {
    constexpr int mostMs = 20'000;
    ASSERT_TRUE(QTest::qWaitFor(effect, mostMs));
  }
  bool IsSeen(const char* control) { return Find(control)->isVisible(); }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(Form->focusWidget(), key, modifiers);
  }
  desktop::TPictureView* View() { return Find<desktop::TPictureView>("ImagePicture"); }
  QImage Map() { return Find<desktop::TPictureView>("ImageTopo")->Picture(); }
  double Offset() { return Find<QDoubleSpinBox>("SpinEditTimeCorrection")->value(); }
  double Yaw() { return Find<QDoubleSpinBox>("SpinEditYaw")->value(); }
  std::vector<align::LoggedAlignment> Logged() {
    return align::AlignmentLog(Path(u"user/alignments.csv"_s)).Rows();
  }
};

TEST_F(AlignTest, WhatIsFoundIsOfferedTakenAndUndone) {
  ShowPass();
  const QImage before = Map();
  const double yaw = Yaw();
  Press(Qt::Key_F6);
  EXPECT_TRUE(IsSeen("ProgressBarAlign"));
  EXPECT_EQ(Find("ButtonAlign")->toolTip(), u"An alignment is under way."_s);
  EXPECT_FALSE(Find("ButtonFitByHand")->isEnabled());
  WaitFor([this] { return IsSeen("ButtonAlignTake"); });
  EXPECT_TRUE(Text("LabelAlign").startsWith(u"Found: 12."_s)) << Text("LabelAlign").toStdString();
  EXPECT_EQ(Offset(), 0) << "nothing is taken yet";
  EXPECT_TRUE(Find<QCheckBox>("CheckBoxOverlaid")->isChecked());
  const QImage found = Map();
  EXPECT_NE(found, before);
  Press(Qt::Key_F6);
  EXPECT_EQ(Map(), before);
  Press(Qt::Key_F6);
  EXPECT_EQ(Map(), found);

  Click("CheckBoxAlignWindows");
  const auto& windows = View()->Marks().Windows;
  ASSERT_GT(windows.size(), 20u);
  int inside = 0;
  for (const auto& window : windows) inside += std::hypot(window.MisfitColumns, window.MisfitRows) < 2;
  EXPECT_GT(inside, 0.8 * static_cast<double>(windows.size()));
  Click("ButtonAlignFlip");
  EXPECT_TRUE(View()->Marks().IsEmpty()) << "they are the new map's";

  Press(Qt::Key_Return);
  EXPECT_NEAR(Offset(), kLateS, 0.4);
  EXPECT_NEAR(Yaw(), 0.6, 0.3);
  EXPECT_EQ(Map(), found);
  Fire("TimerSaveResults");
  ASSERT_EQ(Logged().size(), 1u);
  EXPECT_EQ(Logged()[0].How, align::FoundBy::Coasts);
  EXPECT_LT(Logged()[0].ChancePeaks.value_or(1), 0.01);

  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Offset(), 0);
  EXPECT_EQ(Yaw(), yaw);
  EXPECT_EQ(Map(), before);
  EXPECT_FALSE(IsSeen("AlignBar") || Find<QCheckBox>("CheckBoxOverlaid")->isChecked());
  EXPECT_TRUE(Logged().empty());
  EXPECT_EQ(Boxes.Take(), QStringList());
  Close();
  EXPECT_EQ(SavedText(u"AttitudeCorrections"_s), QString()) << "it is the picture's, not the satellite's";
}

TEST_F(AlignTest, EndsAtAnyMoment) {
  GivePicture(u"0223075142V.png"_s, Qt::darkRed);
  ShowPass();
  const auto ends = [this](const char* how, const auto& deed) {
    SCOPED_TRACE(how);
    Click("ButtonAlign");
    ASSERT_TRUE(IsSeen("ProgressBarAlign"));
    deed();
    WaitFor([this] { return !IsSeen("AlignBar"); });
    EXPECT_EQ(Offset(), 0);
    EXPECT_TRUE(Logged().empty());
  };
  ends("Escape", [this] { Press(Qt::Key_Escape); });
  ends("Cancel", [this] { Click("ButtonAlignLeave"); });
  ends("another attitude", [this] {
    auto* roll = Find<QDoubleSpinBox>("SpinEditRoll");
    roll->setValue(roll->value() + 0.1);
  });
  Click("ButtonAlign");
  Open(u"pictures/0223075142V.png"_s);
  EXPECT_FALSE(IsSeen("ButtonAlignTake"));
  WaitFor([this] { return Find("ButtonAlign")->isEnabled(); });
  Click("ButtonAlign");
  WaitFor([this] { return Text("ButtonAlignLeave") == u"Close"_s; });
  EXPECT_EQ(Text("LabelAlign"),
            u"Not found: The picture shows nothing: it is of one colour. Nothing was changed."_s);
  Press(Qt::Key_Escape);
  EXPECT_FALSE(IsSeen("AlignBar"));
  Open(kPicture);
  Click("ButtonAlign");
  Close();
  EXPECT_EQ(Boxes.Take(), QStringList());
}

TEST_F(AlignTest, AnOpenedPictureIsAlignedIfTheUserWantsIt) {
  Set(u"AlignOpened"_s, std::int32_t{2});
  GivePass();
  StartOnPage();
  Open(kPicture);
  WaitFor([this] { return IsSeen("ButtonAlignUndo"); });
  EXPECT_NEAR(Offset(), kLateS, 0.4) << "what is clear is taken";
  Open(kPicture);
  EXPECT_FALSE(IsSeen("ProgressBarAlign")) << "it opens aligned";
  EXPECT_NEAR(Offset(), kLateS, 0.4);
  Close();
  Set(u"AlignOpened"_s, std::int32_t{1});
  align::AlignmentLog(Path(u"user/alignments.csv"_s)).Remove(Logged());
  StartOnPage();
  Open(kPicture);
  WaitFor([this] { return IsSeen("ButtonAlignTake"); });
  EXPECT_EQ(Offset(), 0);
  Click("ButtonAlignLeave");
  EXPECT_FALSE(IsSeen("AlignBar"));
  EXPECT_TRUE(Logged().empty());
  EXPECT_EQ(Boxes.Take(), QStringList());
}

}  // namespace
}  // namespace pelorin::tests
