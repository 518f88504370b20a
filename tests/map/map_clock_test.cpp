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

TEST(MapTimeOfPicture, IsInTheNameAndTheFilesDate) {
  const QTemporaryDir folder;
  const auto timeOf = [&folder](const QString& name) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.setFileTime(QDateTime(QDate(2001, 11, 15), QTime(8, 0)), QFile::FileModificationTime);
    return orbit::FormatDateTime("yyyy-mm-dd hh:nn:ss", MapTimeOfPicture(file.fileName()));
  };
  EXPECT_EQ(timeOf(u"12311759a4.png"_s), "2001-12-31 17:59:00");
  EXPECT_THROW(timeOf(u"02291015.jpg"_s), orbit::ConvertError) << "2001 had none";
  EXPECT_THROW(MapTimeOfPicture(folder.filePath(u"12311758.jpg"_s)), files::FileError);
}

}  // namespace
}  // namespace pelorin::map
