#include "map/backdrop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

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
      QFile file(dir.filePath(name));
      ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("BMP or JPEG, but neither") > 0);
    }
    const Backdrop backdrop = LoadBackdrop(row.HasTopography, [&](const QStringList& names) {
      for (const QString& name : names) {
        if (dir.exists(name)) return dir.filePath(name);
      }
      return QString();
    });
    EXPECT_EQ(backdrop.Picture.width(), expected) << row.Label;
    EXPECT_EQ(backdrop.IsUserBitmap, row.Taken == bitmap) << row.Label;
    EXPECT_EQ(backdrop.Messages.size(), row.Messages) << row.Label;
    const bool advises = backdrop.Messages.join(u"|"_s).contains(u"You can provide"_s);
    EXPECT_EQ(advises, row.Taken.isEmpty()) << row.Label;
    if (row.Taken.endsWith(u".jpg"_s)) {
      EXPECT_EQ(backdrop.Tried.constLast(), row.Taken) << row.Label;
    }
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
