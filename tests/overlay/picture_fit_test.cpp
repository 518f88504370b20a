#include "overlay/picture_fit.h"

#include <gtest/gtest.h>

#include "overlay/picture_blend.h"
#include "swath/time_correction.h"

namespace pelorin::overlay {
namespace {

TEST(PictureFit, LinesOfMapAndPictureAreLevel) {
  const struct {
    const char* Label;
    QSize Map, Picture;
    int Width, MapHeight, PictureHeight;
  } rows[] = {
      {"map as tall as the picture", {1040, 999}, {915, 999}, 431, 414, 414},
      {"a longer map", {1040, 1800}, {915, 999}, 431, 745, 414},
      {"rounded for the picture, cut for the map", {1040, 1003}, {909, 1003}, 520, 501, 502},
      {"enlarged", {1040, 20}, {2080, 30}, 2080, 40, 60},
      {"as high as pictures may be", {1040, 30000}, {909, 30000}, 3000, 86538, 86538},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FittedMapHeight(row.Map, row.Width), row.MapHeight) << row.Label;
    EXPECT_EQ(FittedPictureHeight(row.Picture, row.Map, row.Width), row.PictureHeight) << row.Label;
  }
  EXPECT_EQ(MapWidthFor(909), 1040);
  EXPECT_EQ(MapWidthFor(4159), 4159);
  EXPECT_EQ(MapWidthFor(4161), 4160);
  const PaneBoxes boxes = BoxesSideBySide({901, 400});
  EXPECT_EQ(boxes.Map, QRect(0, 0, 446, 400));
  EXPECT_EQ(boxes.Picture, QRect(454, 0, 446, 400));
}

TEST(PictureBlend, EveryPixelMeetsTheOneOfItsTime) {
  QImage map(1040, 6, QImage::Format_RGB32);
  for (int y = 0; y < map.height(); ++y) {
    for (int x = 0; x < map.width(); ++x) map.setPixel(x, y, qRgb(x / 256, x % 256, 10 * y));
  }
  const struct {
    const char* Label;
    int PictureWidth;
    bool SouthBound;
    int FirstColumn;
  } rows[] = {
      {"whole line", 1040, true, 0},
      {"image alone", 909, true, 86},
      {"all but the filler", 995, true, 0},
      {"image alone, turned", 909, false, 45},
      {"two channels", 2080, true, 0},
      {"image and frame, cut short", 1000, true, 0},
      {"image and frame, cut short and turned", 1000, false, 40},
      {"two channels, turned", 2080, false, -1040},
  };
  for (const auto& row : rows) {
    QImage picture(row.PictureWidth, 9, QImage::Format_RGB32);
    picture.fill(Qt::white);
    const MapLayer layer{map, row.SouthBound, 4};
    const int mapRow = row.SouthBound ? 3 : 2, bareRow = row.SouthBound ? 4 : 1;
    const QImage blend = BlendPicture(picture, layer, 100);
    const int first = std::max(0, -row.FirstColumn), column = first + 800;
    EXPECT_EQ(blend.pixel(first, mapRow), map.pixel(first + row.FirstColumn, mapRow)) << row.Label;
    EXPECT_EQ(blend.pixel(column, mapRow), map.pixel(column + row.FirstColumn, mapRow)) << row.Label;
    EXPECT_EQ(blend.pixel(first, bareRow), picture.pixel(0, 0)) << row.Label;
    EXPECT_EQ(BlendRows(picture, layer, 100, 1, 5), blend.copy(0, 1, row.PictureWidth, 4)) << row.Label;
    EXPECT_EQ(BlendPicture(picture, layer, 0), picture) << row.Label;
    const int half = qRed(BlendPicture(picture, layer, 50).pixel(column, mapRow));
    EXPECT_EQ(half, (255 + qRed(map.pixel(column + row.FirstColumn, mapRow))) / 2) << row.Label;
  }
}

TEST(TimeCorrection, ClocksAreRememberedApartFromTheSecondsOfNames) {
  const QString noaa = QStringLiteral("NOAA 19"), meteor = QStringLiteral("METEOR=M 2");
  swath::TimeCorrection correction(QString{});
  EXPECT_EQ(correction.Begin(noaa, 38), 38);
  EXPECT_EQ(correction.Change(40.6), 40.5);
  EXPECT_EQ(correction.Begin(meteor, 10), 10) << "another satellite's recordings have another clock";
  correction.Change(8.5);
  EXPECT_EQ(correction.Begin(noaa, std::nullopt), 0) << "without seconds there is nothing to begin with";
  correction.Change(12);
  swath::TimeCorrection later(correction.Saved() + QStringLiteral(";junk;NOAA 18=x;NOAA 15=1e999"));
  EXPECT_EQ(later.Begin(noaa, 4), 6.5);
  EXPECT_EQ(later.Begin(meteor, 4), 2.5);
  EXPECT_EQ(later.Change(500), 90);
  EXPECT_EQ(later.Change(-500), -90);
}

}  // namespace
}  // namespace pelorin::overlay
