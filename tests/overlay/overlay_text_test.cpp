#include "overlay/overlay_text.h"

#include <gtest/gtest.h>

#include "files/text_file.h"

namespace pelorin::overlay {
namespace {

using namespace Qt::StringLiterals;

TEST(OverlayText, LinesHoldTheChosenItemsInFixedOrder) {
  const PassText pass{u"METEOR 2"_s, orbit::MakeDateTime(2022, 2, 28, 23, 53, 59),
                      orbit::MakeDateTime(2022, 3, 1, 0, 7, 1), true, 62.7};
  const struct {
    int Stored;
    QByteArray Preview, Line;  // code page 1252, as in files
  } rows[] = {
      {64, "", ""},
      {64 + 1, "NOAA 15  ", "METEOR 2"},
      {32, "at  ", "at"},
      {4, "12:34-12:43  ", "23:53-00:07"},
      {-1, "NOAA 15  2000 Dec 25  at  12:34-12:43  North  45\xBA  ",
       "METEOR 2  2022 Feb 28  at  23:53-00:07  South  63\xBA"},
  };
  for (const auto& row : rows) {
    const std::uint8_t items = MaskItems(row.Stored);
    EXPECT_EQ(files::EncodeText(PreviewText(items)), row.Preview) << row.Stored;
    EXPECT_EQ(files::EncodeText(TextLine(items, pass)), row.Line) << row.Stored;
  }
  EXPECT_EQ(TextLine(kTextDirection, {QString(), {}, {}, false, 0}), u"North"_s);
}

}  // namespace
}  // namespace pelorin::overlay
