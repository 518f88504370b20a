#include <gtest/gtest.h>

#include <QBuffer>
#include <QDataStream>

#include "files/read_file.h"
#include "picture/ext_bitmap.h"
#include "picture/indexed_bitmap.h"
#include "picture/picture_error.h"
#include "tests/support/folder_test.h"

namespace pelorin::picture {
namespace {

struct BitmapFile {
  const char* Label;
  std::int32_t Width, Height;
  quint16 BitCount;
  quint32 Offset, Used, Important;
  int Entries;  ///< in the file; entry n is red n, green 2n, blue 3n
  QByteArray Pixels;
  std::vector<QRgb> Colours;  ///< of the left column, from the top
  quint32 Compression = 0;
};

QByteArray Bytes(const BitmapFile& file) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setByteOrder(QDataStream::LittleEndian);
  stream << quint8{'B'} << quint8{'M'} << quint32{77} << quint32{0} << file.Offset << quint32{40}
         << file.Width << file.Height << quint16{1} << file.BitCount << file.Compression << quint32{0}
         << quint32{0} << quint32{0} << file.Used << file.Important;
  for (int n = 0; n < file.Entries; ++n) {
    stream << static_cast<quint8>(3 * n) << static_cast<quint8>(2 * n) << static_cast<quint8>(n) << quint8{0};
  }
  return bytes + file.Pixels;
}

QImage Load(QByteArray bytes) {
  QBuffer stream(&bytes);
  stream.open(QIODevice::ReadOnly);
  TExtBitmap bitmap;
  bitmap.LoadFromStream(stream);
  return bitmap.Image();
}

const QRgb k1 = qRgb(1, 2, 3);
const QRgb k60 = qRgb(60, 120, 180);

TEST(ExtBitmap, HeadersAreReadAsProgramsWriteThem) {
  const QByteArray two("\x3C\1\1\1\1\1\1\1", 8);  // bottom row 60, top row 1
  const QByteArray runs("\2\x3C\0\0\2\1\0\1", 8);
  const QByteArray deep("\x03\x02\x01\0\xB4\x78\x3C\0", 8);
  const BitmapFile files[] = {
      {"200 counted, more follows", 2, 2, 8, 1078, 200, 200, 256, two + QByteArray(300, 0), {k1, k60}},
      {"the same, pixels said to follow the counted", 2, 2, 8, 854, 200, 200, 256, two, {k1, k60}},
      {"full palette, 224 counted", 2, 2, 8, 1078, 224, 224, 256, two, {k1, k60}},
      {"200 colours in truth", 2, 2, 8, 854, 200, 256, 200, two, {k1, k60}},
      {"200 colours in truth, all important", 2, 2, 8, 854, 200, 200, 200, two, {k1, k60}},
      {"224 colours in truth", 2, 2, 8, 950, 224, 224, 224, two, {k1, k60}},
      {"200 colours in truth, runs", 2, 2, 8, 854, 200, 200, 200, runs, {k1, k60}, 1},
      {"no colours counted, offset beyond the end", 2, 2, 8, 9999, 0, 0, 256, two, {k1, k60}},
      {"top row first", 2, -2, 8, 1078, 256, 0, 256, two, {k60, k1}},
      {"1 bit", 2, 1, 1, 62, 0, 0, 2, QByteArray("\x80\0\0\0", 4), {k1}},
      {"4 bits", 1, 1, 4, 118, 0, 0, 16, QByteArray("\x10\0\0\0", 4), {k1}},
      {"24 bits", 1, 2, 24, 54, 0, 0, 0, deep, {k60, k1}},
      {"32 bits", 1, 2, 32, 54, 0, 0, 0, deep, {k60, k1}},
      {"runs", 2, 2, 8, 1078, 0, 0, 256, runs, {k1, k60}, 1},
  };
  for (const BitmapFile& file : files) {
    SCOPED_TRACE(file.Label);
    const QImage image = Load(Bytes(file));
    ASSERT_EQ(image.size(), QSize(file.Width, std::abs(file.Height)));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_EQ(image.pixel(0, 0), file.Colours.front());
    EXPECT_EQ(image.pixel(0, image.height() - 1), file.Colours.back());
  }
  const QByteArray shortest("BM\x1E\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\1\0\1\0\1\0\x18\0\3\2\1\0", 30);
  EXPECT_EQ(Load(shortest).pixel(0, 0), k1) << "30 bytes, the oldest kind of header";
}

TEST(ExtBitmap, ImpossibleHeadersAreRefused) {
  const QByteArray two(8, '\1');
  const BitmapFile files[] = {
      {"no width", 0, 2, 8, 1078, 0, 0, 256, two, {}},
      {"lowest height", 2, INT32_MIN, 8, 1078, 0, 0, 256, two, {}},
      {"more rows than the file", 2, 3, 8, 1078, 0, 0, 256, two, {}},
      {"runs for far more than the file", 20000, 20000, 8, 1078, 0, 0, 256, "\1\1\0\1", {}, 1},
      {"runs without end", 2, 2, 8, 1078, 0, 0, 256, "\2\x3C", {}, 1},
      {"too wide", 40000, 1, 1, 62, 0, 0, 2, QByteArray(5000, '\1'), {}},
      {"palette of millions", 2, 2, 8, 1078, 0x7FFFFFFF, 0, 256, two, {}},
  };
  for (const BitmapFile& file : files) EXPECT_THROW(Load(Bytes(file)), PictureError) << file.Label;
}

class IndexedBitmap : public tests::FolderTest {};

TEST_F(IndexedBitmap, FileHasItsLayout) {
  const QString path = Path("ovl.bmp");
  ColourTable colours{};
  colours[7] = 0x00102030;
  IndexedImage image{5, 2, {7, 0, 0, 0, 1, 2, 0, 0, 0, 3}};
  SaveIndexedBitmap(image, colours, path, 0x44332211);
  const QByteArray file = files::ReadFile(path);
  EXPECT_EQ(file.mid(6, 4), "\x11\x22\x33\x44");
  EXPECT_EQ(file.mid(54 + 7 * 4, 4), QByteArray("\x30\x20\x10\0", 4));
  EXPECT_EQ(file.mid(1078), QByteArray("\2\0\0\0\3\0\0\0\7\0\0\0\1\0\0\0", 16));
  EXPECT_EQ(Load(file).pixel(0, 0), qRgb(0x10, 0x20, 0x30));
  EXPECT_EQ(QImage(path).colorCount(), 256);
  image.Pixels.pop_back();
  EXPECT_THROW(SaveIndexedBitmap(image, colours, path), PictureError);
  EXPECT_THROW(SaveIndexedBitmap({}, colours, path), PictureError);
  EXPECT_EQ(files::ReadFile(path), file);
}

}  // namespace
}  // namespace pelorin::picture
