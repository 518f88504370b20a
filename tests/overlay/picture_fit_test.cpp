#include "overlay/picture_fit.h"

#include <gtest/gtest.h>

#include "overlay/picture_blend.h"

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
}

TEST(PictureFit, MapsAreOfThePicturesSizeOrHaveTheirFrame) {
  const struct {
    int PictureColumns, MapColumns, FirstColumn;
  } rows[] = {{0, 1040, 86}, {909, 1040, 86}, {4159, 4159, 86}, {4161, 4160, 86}};
  swath::Recording picture;
  picture.SeenBy = {"APT", {909, 110.74, swath::ScanLaw::Zones}, 2};
  for (const auto& row : rows) {
    picture.Columns = row.PictureColumns;
    const swath::Recording map = MapOf(picture, 15);
    EXPECT_EQ(map.Columns, row.MapColumns);
    EXPECT_EQ(map.FirstColumn, row.FirstColumn);
    EXPECT_EQ(map.Rows, 1800);
  }
  picture.SeenBy = {"LRPT", {1568, 110.1, swath::ScanLaw::EvenAngles}, 6.498};
  picture.FirstColumn = -10;
  EXPECT_EQ(MapOf(picture, 10).FirstColumn, 0) << "a channel that begins ten columns late";
  EXPECT_EQ(MapOf(picture, 10).Columns, 1568);
  EXPECT_EQ(MapOf(picture, 10).Rows, 3898);
  picture.Rows = 77;
  EXPECT_EQ(MapOf(picture, 10).Rows, 77);
}

TEST(PictureBlend, EveryPixelMeetsTheOneOfItsTime) {
  QImage map(1040, 6, QImage::Format_RGB32);
  for (int y = 0; y < map.height(); ++y) {
    for (int x = 0; x < map.width(); ++x) map.setPixel(x, y, qRgb(x / 256, x % 256, 10 * y));
  }
  const struct {
    const char* Label;
    QSize Picture;
    bool SouthBound;
    int FirstColumn;
    int LastRow;  ///< of the picture, where the last of the map's four lines lies
    int BareRow;  ///< and one that no line has reached
  } rows[] = {
      {"whole line", {1040, 9}, true, 0, 3, 4},
      {"image alone", {909, 6}, true, 86, 3, 4},
      {"all but the filler", {995, 9}, true, 0, 3, 4},
      {"image alone, turned", {909, 6}, false, 45, 2, 1},
      {"image alone, turned, of more rows", {909, 9}, false, 45, 5, 4},
      {"image alone, of fewer rows", {909, 5}, true, 86, 3, 4},
      {"image alone, turned, of fewer rows", {909, 5}, false, 45, 1, 0},
      {"two channels", {2080, 9}, true, 0, 3, 4},
      {"image and frame, cut short", {1000, 9}, true, 0, 3, 4},
      {"image and frame, cut short and turned", {1000, 9}, false, 40, 5, 4},
      {"two channels, turned", {2080, 9}, false, -1040, 5, 4},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    QImage picture(row.Picture, QImage::Format_RGB32);
    picture.fill(Qt::white);
    MapLayer layer{map, {}, row.Picture.width() < 995 ? 0 : 86, 4};
    layer.Recording.FirstColumn = 86;
    layer.Recording.Lies.Turned = !row.SouthBound;
    const int mapRow = row.SouthBound ? 3 : 2;
    const QImage blend = BlendPicture(picture, layer, 100);
    const int first = std::max(0, -row.FirstColumn), column = first + 800;
    EXPECT_EQ(blend.pixel(first, row.LastRow), map.pixel(first + row.FirstColumn, mapRow));
    EXPECT_EQ(blend.pixel(column, row.LastRow), map.pixel(column + row.FirstColumn, mapRow));
    EXPECT_EQ(blend.pixel(first, row.BareRow), picture.pixel(0, 0));
    EXPECT_EQ(BlendRows(picture, layer, 100, 1, 5), blend.copy(0, 1, row.Picture.width(), 4));
    EXPECT_EQ(BlendPicture(picture, layer, 0), picture);
    const int half = qRed(BlendPicture(picture, layer, 50).pixel(column, row.LastRow));
    EXPECT_EQ(half, (255 + qRed(map.pixel(column + row.FirstColumn, mapRow))) / 2);
  }
}

}  // namespace
}  // namespace pelorin::overlay
