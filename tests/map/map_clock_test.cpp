#include "map/map_clock.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include "files/file_error.h"
#include "orbit/scalar_math.h"

namespace pelorin::map {
namespace {

using namespace Qt::StringLiterals;

std::string Text(orbit::TDateTime time) { return orbit::FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", time); }

TEST(MapTimeOfPicture, IsInTheNameAndTheFilesDate) {
  const QTemporaryDir folder;
  const struct {
    QString Name;
    const char* Time;  // null: not a time
  } rows[] = {
      {u"12311759.jpg"_s, "2001-12-31 17:59:00.000"},
      {u"04121830a4.png"_s, "2001-04-12 18:30:00.000"},
      {u"02291015.jpg"_s, nullptr},
      {u"04122430.jpg"_s, nullptr},
      {u"0412.jpg"_s, nullptr},
      {u"Märzbild1.bmp"_s, nullptr},
      {u"+4-21830.jpg"_s, nullptr},
      {u"0412183"_s, nullptr},
  };
  for (const auto& row : rows) {
    const QString path = folder.filePath(row.Name);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2001, 11, 15), QTime(8, 0)), QFile::FileModificationTime));
    if (row.Time) {
      EXPECT_EQ(Text(MapTimeOfPicture(path)), row.Time);
    } else {
      EXPECT_THROW(MapTimeOfPicture(path), orbit::ConvertError) << row.Name.toStdString();
    }
  }
  EXPECT_THROW(MapTimeOfPicture(folder.filePath(u"12311758.jpg"_s)), files::FileError);
}

}  // namespace
}  // namespace pelorin::map
