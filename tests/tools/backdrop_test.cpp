#include "tools/backdrop.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QtEndian>

#include "tools/relief.h"

namespace pelorin::tools {
namespace {

/// The grid with `east` metres in the eastern hemisphere and `west` in the western one.
ElevationGrid TwoHemispheres(std::int16_t east, std::int16_t west) {
  QByteArray bytes(ElevationGrid::kRows * ElevationGrid::kColumns * 2, '\0');
  for (int i = 0; i < ElevationGrid::kRows * ElevationGrid::kColumns; ++i) {
    qToLittleEndian(i % ElevationGrid::kColumns < 2160 ? east : west, bytes.data() + i * 2);
  }
  return ElevationGrid(bytes);
}

TEST(Backdrop, PutsLandLakeAndSeaInTheirPlaces) {
  const ElevationGrid heights = TwoHemispheres(-6000, -100);
  std::vector<overlay::TPolyObject> records(2);
  records[0].Points = {{600, 600}, {3600, 600}, {3600, 3000}, {600, 3000}};
  records[1].Kind = overlay::kWaterRecord;
  records[1].Points = {{1200, 1200}, {1800, 1200}, {1800, 1800}, {1200, 1800}};
  const QImage picture = RenderBackdrop(records, heights, 360);  // a pixel a degree
  ASSERT_EQ(picture.size(), QSize(360, 180));
  const auto at = [&](int latitude, int longitude) {
    return picture.pixelColor(180 + longitude, 89 - latitude);
  };
  const QColor land = at(15, 15);
  EXPECT_GT(land.green(), land.blue());
  EXPECT_GT(at(45, 55).green(), at(45, 55).blue());  // the other corner
  const QColor lake = at(25, 25);
  EXPECT_GT(lake.blue(), lake.green());
  EXPECT_GT(at(5, 15).blue(), at(5, 15).green());                     // sea south of the land
  EXPECT_LT(at(-40, 90).lightness(), at(-40, -90).lightness() - 30);  // deep and shallow
}

TEST(Relief, SlopesFacingNorthWestAreBright) {
  EXPECT_FLOAT_EQ(HillShade(0, 0), 1);
  EXPECT_GT(HillShade(0.5F, -0.5F), 1.2F);  // rises to the south-east, so it faces north-west
  EXPECT_LT(HillShade(-0.5F, 0.5F), 0.5F);
}

}  // namespace
}  // namespace pelorin::tools
