#include "map/backdrop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "files/atomic_file.h"

namespace pelorin::map {
namespace {

using namespace Qt::StringLiterals;

TEST(Backdrop, TheBestReadableFileIsTaken) {
  const QString user = u"UserMap.jpg"_s, small = u"SmallUserMap.jpg"_s, large = u"LargeUserMap.jpg"_s,
                bitmap = u"UserMap.bmp"_s;
  const struct {
    const char* Label;
    bool HasTopography;
    QStringList Good, Damaged;
    QString Taken;
    qsizetype Messages;
  } rows[] = {
      {"all there", false, {user, small, large, bitmap}, {}, user, 0},
      {"small with topography", true, {small, large, bitmap}, {}, small, 0},
      {"large without", false, {small, large, bitmap}, {}, large, 0},
      {"the only one", true, {large}, {}, large, 0},
      {"bitmap", true, {bitmap}, {}, bitmap, 0},
      {"damaged ones are told and passed over", true, {large}, {user, small}, large, 2},
      {"damaged bitmap", true, {}, {bitmap}, {}, 1},
      {"nothing", true, {}, {}, {}, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const QTemporaryDir folder;
    const QDir dir(folder.path());
    int width = 10, expected = 0;
    for (const QString& name : row.Good) {
      QImage picture(++width, 5, QImage::Format_RGB32);
      picture.fill(Qt::green);
      ASSERT_TRUE(picture.save(dir.filePath(name)));
      if (name == row.Taken) expected = width;
    }
    for (const QString& name : row.Damaged) {
      files::ReplaceFile(dir.filePath(name), "BMP or JPEG, but neither");
    }
    const Backdrop backdrop = LoadBackdrop(row.HasTopography, [&](const QStringList& names) {
      for (const QString& name : names) {
        if (dir.exists(name)) return dir.filePath(name);
      }
      return QString();
    });
    EXPECT_EQ(backdrop.Picture.width(), expected);
    EXPECT_EQ(backdrop.IsUserBitmap, row.Taken == bitmap);
    EXPECT_EQ(backdrop.Messages.size(), row.Messages);
    EXPECT_EQ(backdrop.Messages.join(u"|"_s).contains(u"You can provide"_s), row.Taken.isEmpty());
    EXPECT_EQ(backdrop.Tried.contains(row.Taken), row.Taken.endsWith(u".jpg"_s));
  }
}

TEST(Backdrop, TurnsByHalf) {
  QImage picture(5, 2, QImage::Format_RGB32);
  for (int i = 0; i < 10; ++i) picture.setPixel(i % 5, i / 5, static_cast<QRgb>(0xFF000000 + i));
  const QImage turned = TurnedByHalf(picture);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(turned.pixel(i % 5, i / 5) & 0xFF, (i % 5 + 2) % 5 + i / 5 * 5) << i;
  EXPECT_TRUE(TurnedByHalf(QImage()).isNull());
}

}  // namespace
}  // namespace pelorin::map
