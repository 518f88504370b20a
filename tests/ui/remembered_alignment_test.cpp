#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QTreeWidget>

#include "align/alignment_log.h"
#include "desktop/overlay/alignment_plot_view.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "tests/align/logged.h"
#include "tests/ui/ground_path_fixture.h"

namespace pelorin::tests {
namespace {

/// Pictures that were aligned in earlier runs, and new ones.
class RememberedAlignmentTest : public GroundPathTest {
 protected:
  /// Of the pictures that GivePicture makes.
  static align::LoggedAlignment Earlier(const char* start, double clockS, double roll, const char* picture) {
    align::LoggedAlignment logged = LoggedAt(start, clockS, picture);
    logged.Columns = 909;
    logged.Rows = 300;
    logged.Offsets = {roll, 0, 0.5};
    return logged;
  }
  void Log(const align::LoggedAlignment& alignment) { AlignmentLog().Add(alignment); }
  align::AlignmentLog AlignmentLog() const { return align::AlignmentLog(Path(u"user/alignments.csv"_s)); }
  QString Title() {
    const QString whole = Find("LabelPictureTitle")->toolTip();
    return whole.isEmpty() ? Text("LabelPictureTitle") : whole;
  }
  QString Shown() {
    return u"%1 s, roll %2,%3"_s.arg(Find<QDoubleSpinBox>("SpinEditTimeCorrection")->value())
        .arg(Find<QDoubleSpinBox>("SpinEditRoll")->value())
        .arg(Find<QGroupBox>("GroupBoxAttitude")->title());
  }
};

TEST_F(RememberedAlignmentTest, APictureThatWasAlignedOpensAligned) {
  Log(Earlier("20220223075142", 2.5, -0.75, "0223075142V.png"));
  GivePicture(u"0223075142V.png"_s, Qt::lightGray);
  GivePicture(u"0223075142I.png"_s, Qt::darkGray);
  StartOnPage();
  Open(u"pictures/0223075142V.png"_s);
  const QString aligned = u"2.5 s, roll -0.75, Attitude, by its alignment "_s;
  const QString usual = u"0 s, roll -0.01, Attitude, as fitted for NOAA 19 "_s;
  const QString title = u"Picture: 0223075142V.png  from 07:51:42 UTC"_s;
  EXPECT_EQ(Shown(), aligned);
  EXPECT_EQ(Title(), title + u", aligned"_s);
  EXPECT_FALSE(Find("ButtonAlignedBefore")->isVisible());
  Click("ButtonGenTopo");
  const QImage map = Written(u"ovl.bmp"_s);

  Click("ButtonCorrectionReset");
  EXPECT_EQ(Shown(), usual);
  EXPECT_EQ(Title(), title);
  Fire("TimerSaveResults");
  EXPECT_NE(Written(u"ovl.bmp"_s), map);
  Open(u"pictures/0223075142I.png"_s);
  EXPECT_EQ(Shown(), usual) << "who left it has left it for all its channels";
  EXPECT_EQ(Text("ButtonAlignedBefore"), u"Aligned before: +2.5 s, by its coasts"_s);
  Click("ButtonAlignedBefore");
  EXPECT_EQ(Shown(), aligned);
  Fire("TimerSaveResults");
  EXPECT_EQ(Written(u"ovl.bmp"_s), map);
  Close();
  EXPECT_EQ(SavedText(u"ClockCorrections"_s), QString()) << "nothing is learnt of the satellite";
  EXPECT_EQ(SavedText(u"AttitudeCorrections"_s), QString());
}

TEST_F(RememberedAlignmentTest, ANewPictureIsOfferedTheMedians) {
  Log(Earlier("20220220075142", 1.2, -0.5, "a.png"));
  Log(Earlier("20220221075142", 1.5, -0.75, "b.png"));
  Log(Earlier("20220222075142", 9, -0.25, "c.png"));
  GivePicture(u"0223075142V.png"_s, Qt::lightGray);
  StartOnPage();
  Open(u"pictures/0223075142V.png"_s);
  EXPECT_EQ(Shown(), u"0 s, roll -0.01, Attitude, as fitted for NOAA 19 "_s) << "never unasked";
  EXPECT_EQ(Text("ButtonClockMedian"), u"Clock: take +1.5 s, the median of the last 3"_s);
  EXPECT_TRUE(Find("ButtonClockMedian")->toolTip().contains(u"2022 Feb 22 07:51  NOAA 19  +9.0 s"_s));
  EXPECT_EQ(Text("ButtonAttitudeMedian"), u"Attitude: take roll \u22120.50°, yaw 0.50°, the median of 3"_s);
  Click("ButtonClockMedian");
  Click("ButtonAttitudeMedian");
  EXPECT_EQ(Shown(), u"1.5 s, roll -0.5, Attitude, yours "_s) << "as if typed";
  EXPECT_FALSE(Find("ButtonClockMedian")->isVisible());
  EXPECT_FALSE(Find("ButtonAttitudeMedian")->isVisible());

  swath::Recording found;
  found.Satellite = u"NOAA 19"_s;
  const auto elements =
      std::ranges::find(Form->Shared().Active(), u"NOAA 19"_s, &session::NamedSatellite::Name);
  found.Elements = std::make_shared<const orbit::TSatellite>(*elements->Satellite);
  found.Start = orbit::ParseTimeString("20220223075142");
  found.StartIsFrom = swath::StartFrom::NameSecond;
  found.Columns = 909;
  found.Rows = 300;
  found.OffsetS = -3;
  found.Offsets = {1, 0, 0};
  Find<desktop::TTabSheetGroundPath>("TabSheetGroundPath")
      ->RememberAlignment(found, Path(u"pictures/0223075142V.png"_s), align::FoundBy::Hand, {});
  EXPECT_EQ(Shown(), u"-3 s, roll 1, Attitude, by its alignment "_s);
  EXPECT_TRUE(Title().endsWith(u", aligned"_s));
  ASSERT_EQ(AlignmentLog().Rows().size(), 4U);
  EXPECT_EQ(AlignmentLog().Rows().back().Accepted, Now);
  Close();
  EXPECT_EQ(SavedText(u"ClockCorrections"_s), u"NOAA 19=1.5"_s) << "what was accepted is not learnt twice";
}

TEST_F(RememberedAlignmentTest, TheLogIsShownSortedAndThinned) {
  StartOnPage();
  InDialog("ViewAlignments", [this](QDialog&) {
    EXPECT_TRUE(Find("LabelNoAlignments")->isVisible());
    EXPECT_FALSE(Find("AlignmentPlot")->isVisible());
    EXPECT_FALSE(Find("ButtonDeleteLogged")->isEnabled());
  });
  Log(Earlier("20220221075142", 10, -0.5, "a.png"));
  Log(Earlier("20220222075142", -2, 0.25, "b.png"));
  align::LoggedAlignment other = Earlier("20220220075142", 9, 0, "c.png");
  other.Satellite = u"METEOR M2"_s;
  other.CatalogueNumber = u"40069"_s;
  Log(other);
  InDialog("ViewAlignments", [this](QDialog& dialog) {
    auto* list = Find<QTreeWidget>("ListViewAlignments");
    const auto pictures = [list] {
      QString names;
      for (int row = 0; row < list->topLevelItemCount(); ++row)
        names += list->topLevelItem(row)->text(10).at(0);
      return names;
    };
    EXPECT_EQ(pictures(), u"bac"_s) << "the latest first";
    list->sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(pictures(), u"bca"_s) << "by the clock's number";
    Find<QComboBox>("ComboBoxLogSatellite")->setCurrentText(u"NOAA 19"_s);
    EXPECT_EQ(pictures(), u"ba"_s);
    Q_EMIT Find<desktop::TAlignmentPlotView>("AlignmentPlot")->PointChosen(1);
    EXPECT_EQ(list->currentItem()->text(10), u"a.png"_s);
    Click("ButtonCopyLogged");
    EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 2);
    EXPECT_TRUE(QApplication::clipboard()->text().contains(u"a.png"_s));
    Boxes.AnswerConfirm = false;
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(AlignmentLog().Rows().size(), 3U);
    Boxes.AnswerConfirm = true;
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(pictures(), u"b"_s);
    EXPECT_EQ(AlignmentLog().Rows().size(), 2U);
    dialog.resize(dialog.size() + QSize(20, 10));
    dialog.reject();
    EXPECT_FALSE(Form->Shared().Settings.AlignmentsPlace.Value.isEmpty());
  });
}

}  // namespace
}  // namespace pelorin::tests
