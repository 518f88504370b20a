#include "picture/png_graphic.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <functional>

#include "files/atomic_file.h"
#include "picture/picture_file.h"
#include "tests/support/folder_test.h"

namespace pelorin::picture {
namespace {

enum ColourType { kGrey = 0, kRgb = 2, kPalette = 3, kGreyAlpha = 4, kRgbAlpha = 6 };

struct PngRow {
  const char* Label;
  int Depth;
  int ColourType;
  QByteArray Row;  ///< one row, each pass led by the filter type
  std::vector<QRgb> Pixels;
  QByteArray Transparency{};  ///< the tRNS chunk
  char Interlace = 0;
};

QByteArray Number(quint32 value) {
  return QByteArray::fromHex(QByteArray::number(value, 16).rightJustified(8, '0'));
}

QByteArray Chunk(const QByteArray& type, const QByteArray& data) {
  const QByteArray body = type + data;
  const auto sum = crc32(0, reinterpret_cast<const Bytef*>(body.constData()), static_cast<uInt>(body.size()));
  return Number(static_cast<quint32>(data.size())) + body + Number(static_cast<quint32>(sum));
}

QByteArray MakePng(const PngRow& row) {
  const char kind[] = {static_cast<char>(row.Depth), static_cast<char>(row.ColourType), 0, 0, row.Interlace};
  const QByteArray size = Number(static_cast<quint32>(row.Pixels.size())) + Number(1);
  QByteArray file = "\x89PNG\r\n\x1A\n" + Chunk("IHDR", size + QByteArray(kind, 5));
  if (row.ColourType == kPalette) file += Chunk("PLTE", QByteArray::fromHex("000000 102030 204060 306090"));
  if (!row.Transparency.isEmpty()) file += Chunk("tRNS", row.Transparency);
  return file + Chunk("IDAT", qCompress(row.Row).mid(4)) + Chunk("IEND", {});
}

class PngGraphic : public tests::FolderTest {};

TEST_F(PngGraphic, EveryKindHasItsColoursAndKeepsThemWhenSaved) {
  const auto hex = [](const char* digits) { return QByteArray::fromHex(digits); };
  const PngRow rows[] = {
      {"grey 1", 1, kGrey, hex("00 40"), {0xFF000000, 0xFFFFFFFF}},
      {"grey 2", 2, kGrey, hex("00 1B"), {0xFF000000, 0xFF555555, 0xFFAAAAAA, 0xFFFFFFFF}},
      {"grey 4", 4, kGrey, hex("00 3F"), {0xFF333333, 0xFFFFFFFF}},
      {"grey 16, darkest to brightest, lost ones black",
       16,
       kGrey,
       hex("00 12C0 4968 8010 0000"),
       {0xFF000000, 0xFF808080, 0xFFFFFFFF, 0xFF000000}},
      {"grey and alpha", 8, kGreyAlpha, hex("00 40 80"), {0x80404040}},
      {"RGB", 8, kRgb, hex("00 102030"), {0xFF102030}},
      {"RGB and alpha", 8, kRgbAlpha, hex("00 10203040"), {0x40102030}},
      {"RGB 16 and alpha", 16, kRgbAlpha, hex("00 1010 2020 3030 4040"), {0x400080FF}},
      {"palette 2", 2, kPalette, hex("00 70"), {0xFF102030, 0xFF306090}},
      {"palette 4, transparent", 4, kPalette, hex("00 12"), {0x80102030, 0xFF204060}, hex("11 80")},
      {"grey 2, one transparent", 2, kGrey, hex("00 60"), {0x00555555, 0xFFAAAAAA}, hex("0001")},
      {"interlaced", 8, kGrey, hex("00 02 00 03"), {0xFF020202, 0xFF030303}, {}, 1},
  };
  const QString path = Path("05211525V.png");
  for (const PngRow& row : rows) {
    SCOPED_TRACE(row.Label);
    files::ReplaceFile(path, MakePng(row));
    TPngGraphic graphic;
    graphic.LoadFromFile(path);
    EXPECT_EQ(graphic.BitDepth(), row.Depth);
    EXPECT_EQ(graphic.ColourType(), row.ColourType);
    graphic.SaveToFile(path);
    TPngGraphic again;
    again.LoadFromFile(path);
    const QImage page = LoadPicture(path);
    ASSERT_EQ(page.width(), static_cast<int>(row.Pixels.size()));
    for (int x = 0; x < page.width(); ++x) {
      const QRgb wanted = row.Pixels[static_cast<std::size_t>(x)];
      EXPECT_EQ(graphic.Image().pixel(x, 0), wanted) << x;
      EXPECT_EQ(again.Image().pixel(x, 0), wanted) << x;
      // Transparent parts show white on the page.
      const int alpha = qAlpha(wanted);
      EXPECT_NEAR(qRed(page.pixel(x, 0)), (alpha * qRed(wanted) + (255 - alpha) * 255) / 255, 1) << x;
    }
  }
}

TEST_F(PngGraphic, FailuresHaveTheirTexts) {
  const QString good = Path("good.png"), bad = Path("bad.png"), nowhere = Path("missing/x.png");
  files::ReplaceFile(good, MakePng({"", 8, kGrey, QByteArray("\0\x40", 2), {0}}));
  files::ReplaceFile(bad, "GIF89a");
  TPngGraphic graphic;
  graphic.LoadFromFile(good);
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"Error Opening File %1!", [&] { graphic.LoadFromFile(nowhere); }},
      {"Error Reading File!", [&] { graphic.LoadFromFile(bad); }},
      {"Error Opening File %1!", [&] { graphic.SaveToFile(nowhere); }},
      {"Error Writing File!", [&] { TPngGraphic().SaveToFile(good); }},
  };
  for (const auto& [text, deed] : rows) {
    EXPECT_EQ(tests::ErrorOf(deed), QString::fromLatin1(text).replace(QStringLiteral("%1"), nowhere));
  }
  EXPECT_EQ(graphic.Image().pixel(0, 0), 0xFF404040) << "the earlier picture stays";
  EXPECT_NO_THROW(graphic.LoadFromFile(good)) << "the earlier file stays";
}

}  // namespace
}  // namespace pelorin::picture
