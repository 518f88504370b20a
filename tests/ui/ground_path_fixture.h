#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFileInfo>
#include <QImage>
#include <QTest>
#include <QTimer>

#include "files/text_file.h"
#include "tests/support/program_fixture.h"

namespace pelorin::tests {

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

}  // namespace pelorin::tests
