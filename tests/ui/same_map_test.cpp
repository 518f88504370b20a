#include <gtest/gtest.h>

#include <QAction>

#include "align/alignment_log.h"
#include "files/read_file.h"
#include "tests/align/logged.h"
#include "tests/support/program_fixture.h"
#include "tests/support/run_program.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;

TEST(SameMap, ConsoleMakesTheWindows) {
  const struct {
    const char* Label;
    int LinesOnly, ShowOverlay;
    QString Picture;
    QString Named;  ///< the same pass for the console program
    bool WasAligned = false;
  } rows[] = {
      {"the pass and a picture with the second", 1, 0, u"0223075142V.png"_s, u"--pass 202202230751"_s},
      {"the recording's start", 1, 1, u"0223075142V.png"_s, u"--start 20220223075142"_s},
      {"a picture that tells no second", 0, 1, u"02230751V.png"_s, u"--pass 202202230751"_s},
      {"a picture that was aligned", 1, 0, u"0223075142V.png"_s, u"--pass 202202230751"_s, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    ProgramFixture program(u"\"NOAA 15\",\"NOAA 19\""_s);
    program.Set(u"OverlayLinesOnly"_s, row.LinesOnly);
    program.Set(u"ShowOverlay"_s, row.ShowOverlay);
    program.Set(u"ClockCorrections"_s, u"NOAA 19=2.5"_s);
    program.Set(u"AttitudeCorrections"_s, u"33591/909=4.00/0.00/-1.50"_s);
    const QString picture = program.GivePicture(row.Picture);
    if (row.WasAligned) {
      align::LoggedAlignment logged = LoggedAt("20220223075142", -7, "0223075142V.png");
      logged.Columns = 909;
      align::AlignmentLog(program.Path(u"user/alignments.csv"_s)).Add(logged);
    }
    program.StartOn(session::Page::Setup);
    program.ChoosePass(u"02230751"_s, u"NOAA 19"_s);
    program.Click("ButtonPicFromPass");
    program.Boxes.ChosenFile = picture;
    program.Find<QAction>("Open1")->trigger();
    program.Click("ButtonGenTopo");
    program.Close();
    EXPECT_EQ(program.Boxes.Take(), QStringList());

    const QStringList overlay =
        u"overlay --picture %1 --master %2 --results %3 %4 --satellite"_s
            .arg(picture, program.Path(u"bin/Overlay.bmp"_s), program.Path(u"elsewhere"_s), row.Named)
            .split(u' ');
    const Outcome outcome = RunProgram(
        QStringLiteral(PELORIN_CLI), overlay + QStringList(u"noaa 19"_s), program.Path(QString()),
        {{"PELORIN_CONFIG_DIR", program.Path(u"config"_s)},
         {"PELORIN_DATA_DIR", row.WasAligned ? program.Path(u"user"_s) : u"" PELORIN_BUILT_DATA ""_s}});
    ASSERT_EQ(outcome.Status, 0) << outcome.Err.toStdString();
    EXPECT_EQ(outcome.Err.contains(u"Aligned before"_s), row.WasAligned) << outcome.Err.toStdString();
    for (const QString& name : {u"/Result.jpg"_s, u"/ovl.bmp"_s}) {
      EXPECT_TRUE(files::ReadFile(program.Path(u"bin"_s + name)) ==
                  files::ReadFile(program.Path(u"elsewhere"_s + name)))
          << name.toStdString();
    }
  }
}

}  // namespace
}  // namespace pelorin::tests
