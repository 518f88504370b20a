#include "picture/tiff_image.h"

#include <gtest/gtest.h>
#include <tiffio.h>

#include <cstring>
#include <vector>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "picture/picture_file.h"
#include "tests/support/folder_test.h"

namespace pelorin::picture {
namespace {

constexpr int kWidth = 19, kHeight = 21, kRowsPerStrip = 5;
constexpr std::uint32_t kTile = 16;

/// Takes every value of 8 bits.
int Tone(int x, int y, int channel) { return (y * kWidth + x + 40 * channel) & 255; }

struct Kind {
  const char* Label;
  const char* Mode;
  int Bits, Channels;
  int Photometric = PHOTOMETRIC_MINISBLACK;
  int Packing = COMPRESSION_NONE;
  bool IsApart = false, IsTiled = false;
  int Format = SAMPLEFORMAT_UINT;
  const char* Error = "";
};

constexpr int kRgb = PHOTOMETRIC_RGB;
constexpr Kind kKinds[] = {
    {"grey", "wl", 8, 1},
    {"grey, white first", "wb", 8, 1, PHOTOMETRIC_MINISWHITE, COMPRESSION_PACKBITS},
    {"grey 16", "wb", 16, 1},
    {"grey 16 in tiles", "wl", 16, 1, PHOTOMETRIC_MINISBLACK, COMPRESSION_LZW, false, true},
    {"grey and alpha", "wl", 8, 2, PHOTOMETRIC_MINISBLACK, COMPRESSION_LZW},
    {"RGB", "wl", 8, 3, kRgb, COMPRESSION_LZW},
    {"RGB 16", "wl", 16, 3, kRgb, COMPRESSION_ADOBE_DEFLATE},
    {"RGB 16, other byte order", "wb", 16, 3, kRgb, COMPRESSION_ADOBE_DEFLATE},
    {"RGB and alpha 16", "wb", 16, 4, kRgb, COMPRESSION_PACKBITS},
    {"RGB apart", "wl", 8, 3, kRgb, COMPRESSION_ADOBE_DEFLATE, true},
    {"RGB and alpha 16 apart in tiles", "wb", 16, 4, kRgb, COMPRESSION_NONE, true, true},
    {"large file", "w8", 8, 3, kRgb, COMPRESSION_LZW},
    {"half bytes", "wl", 4, 1, 1, 1, false, false, SAMPLEFORMAT_UINT, "4 bits a sample"},
    {"fractions", "wl", 16, 1, 1, 1, false, false, SAMPLEFORMAT_IEEEFP, "samples of format 3"},
    {"four inks", "wl", 8, 4, PHOTOMETRIC_SEPARATED, 1, false, false, SAMPLEFORMAT_UINT, "colours of kind 5"},
    {"RGB of one", "wl", 8, 1, kRgb, 1, false, false, SAMPLEFORMAT_UINT, "colours of kind 2"},
    {"rarer packing", "wl", 8, 1, 1, COMPRESSION_LZMA, false, false, SAMPLEFORMAT_UINT,
     "packing of kind 34925"},
};

/// Alpha is opaque left of column 8 and nothing from there on.
int Sample(const Kind& kind, int x, int y, int channel) {
  const int colours = kind.Photometric == kRgb ? 3 : 1;
  const int tone = channel < colours ? Tone(x, y, channel) : x < 8 ? 255 : 0;
  const int value = kind.Photometric == PHOTOMETRIC_MINISWHITE ? 255 - tone : tone;
  // 10 bits, and one lost sample of 0 is told from the darkest.
  return kind.Bits == 16 ? channel < colours ? 512 + value : value * 257 : value;
}

/// One row of `count` samples a channel from `left` on, `step` channels side by side from `channel` on.
std::vector<std::uint8_t> Row(const Kind& kind, int left, int y, int count, int channel, int step) {
  std::vector<std::uint8_t> row;
  for (int i = 0; i < count * step; ++i) {
    const int value = Sample(kind, left + i / step, y, channel + i % step);
    std::uint8_t bytes[2];
    const auto deep = static_cast<std::uint16_t>(value);
    std::memcpy(bytes, &deep, 2);
    if (kind.Bits == 16)
      row.insert(row.end(), bytes, bytes + 2);
    else
      row.push_back(static_cast<std::uint8_t>(value));
  }
  return row;
}

void Write(const Kind& kind, const QString& path) {
  TIFF* tiff = TIFFOpen(qPrintable(path), kind.Mode);
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.Bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.Channels);
  TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, kind.Format);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.Photometric);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.Packing);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.IsApart ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  const std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
  if (kind.Channels % 2 == 0) TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
  const int step = kind.IsApart ? 1 : kind.Channels;
  if (kind.IsTiled) {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, kTile);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, kTile);
  } else {
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, kRowsPerStrip);
  }
  const int tile = kTile;
  for (int channel = 0; channel < kind.Channels; channel += step) {
    const auto plane = static_cast<std::uint16_t>(channel);
    for (int y = 0; y < kHeight && !kind.IsTiled; ++y) {
      TIFFWriteScanline(tiff, Row(kind, 0, y, kWidth, channel, step).data(), static_cast<std::uint32_t>(y),
                        plane);
    }
    for (int corner = 0; corner < 4 && kind.IsTiled; ++corner) {
      const int left = corner % 2 * tile, top = corner / 2 * tile;
      std::vector<std::uint8_t> pixels;
      for (int y = top; y < top + tile; ++y) {
        const auto row = Row(kind, left, y, tile, channel, step);
        pixels.insert(pixels.end(), row.begin(), row.end());
      }
      TIFFWriteTile(tiff, pixels.data(), static_cast<std::uint32_t>(left), static_cast<std::uint32_t>(top), 0,
                    plane);
    }
  }
  TIFFClose(tiff);
}

qsizetype PlaceOfStrip(std::uint32_t strip, const QString& path) {
  TIFF* tiff = TIFFOpen(qPrintable(path), "r");
  const auto place = static_cast<qsizetype>(TIFFGetStrileOffset(tiff, strip));
  TIFFClose(tiff);
  return place;
}

class TiffImage : public tests::FolderTest {};

TEST_F(TiffImage, EveryKindHasItsPixels) {
  const QString path = Path("MSU-MR-1.tif");
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.Label);
    Write(kind, path);
    LoadedPicture loaded;
    const QString error = tests::ErrorOf([&] { loaded = LoadRecording(path); });
    EXPECT_TRUE(error.contains(QLatin1StringView(kind.Error))) << error.toStdString();
    EXPECT_EQ(error.isEmpty(), *kind.Error == '\0') << error.toStdString();
    if (!error.isEmpty()) continue;
    EXPECT_EQ(loaded.Damage, QString());
    ASSERT_EQ(loaded.Image.size(), QSize(kWidth, kHeight));
    for (int i = 0; i < kWidth * kHeight; ++i) {
      const int x = i % kWidth, y = i / kWidth, step = kind.Photometric == kRgb ? 1 : 0;
      const bool isClear = kind.Channels % 2 == 0 && x >= 8;
      ASSERT_EQ(loaded.Image.pixel(x, y),
                isClear ? 0xFFFFFFFF : qRgb(Tone(x, y, 0), Tone(x, y, step), Tone(x, y, 2 * step)))
          << x << ' ' << y;
    }
  }
}

TEST_F(TiffImage, LyingSizesAreRefused) {
  const QString path = Path("pass.tif");
  Write(kKinds[0], path);
  QByteArray file = files::ReadFile(path);
  for (const int tag : {0, 1}) {  // width and height
    QByteArray entry("\0\1\3\0\1\0\0\0", 8);
    entry[0] = static_cast<char>(tag);
    ASSERT_GT(file.indexOf(entry), 0);
    file.replace(file.indexOf(entry) + 8, 2, "\x20\x4E");
  }
  files::ReplaceFile(path, file);
  EXPECT_EQ(tests::ErrorOf([&] { LoadRecording(path); }),
            QStringLiteral("Cannot read %1: 20000 x 20000 pixels cannot be in this file").arg(path));
}

TEST_F(TiffImage, DamageLeavesTheLinesBefore) {
  const QString path = Path("pass.tiff");
  for (const int packing : {COMPRESSION_ADOBE_DEFLATE, COMPRESSION_LZW}) {
    Write({"", "wl", 8, 3, kRgb, packing}, path);
    const qsizetype third = PlaceOfStrip(2, path);
    const QByteArray file = files::ReadFile(path);
    const QImage whole = LoadPicture(path);
    files::ReplaceFile(path, QByteArray(file).replace(third, 8, QByteArray(8, '\xFF')));
    const LoadedPicture loaded = LoadRecording(path);
    EXPECT_TRUE(loaded.Damage.startsWith(path)) << loaded.Damage.toStdString();
    EXPECT_TRUE(loaded.Damage.contains(u"Only the first 10 of 21 lines")) << loaded.Damage.toStdString();
    EXPECT_EQ(loaded.Image.copy(0, 0, kWidth, 10), whole.copy(0, 0, kWidth, 10));
    EXPECT_EQ(loaded.Image.pixel(3, 10), kMissingLine);
    for (qsizetype at = 0; at < file.size(); at += 13) {
      QByteArray garbled = file;
      garbled[at] = static_cast<char>(~garbled[at]);
      for (const QByteArray& content : {garbled, file.first(at)}) {
        files::ReplaceFile(path, content);
        // Either answer, and no other exception; nothing is printed.
        testing::internal::CaptureStderr();
        const QString error = tests::ErrorOf([&] { LoadRecording(path); });
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << at;
        EXPECT_TRUE(error.isEmpty() || error.contains(path)) << error.toStdString();
      }
    }
  }
}

}  // namespace
}  // namespace pelorin::picture
