#include "picture/tiff_image.h"

#include <tiffio.h>

#include <QFile>
#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include "picture/picture_error.h"
#include "picture/picture_size.h"
#include "picture/sample_image.h"

namespace pelorin::picture {
namespace {

/// No block of memory that the library takes by a number out of the file is larger.
constexpr tmsize_t kMostAtOnce = 400'000'000;

tmsize_t Read(thandle_t file, void* to, tmsize_t count) {
  return static_cast<QFile*>(file)->read(static_cast<char*>(to), count);
}

tmsize_t RefuseToWrite(thandle_t, void*, tmsize_t) { return 0; }

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
  auto* file = static_cast<QFile*>(handle);
  const auto start = whence == SEEK_CUR ? file->pos() : whence == SEEK_END ? file->size() : 0;
  // What counts from elsewhere may be negative, and comes as a large number.
  const auto place = static_cast<qint64>(static_cast<toff_t>(start) + offset);
  return place >= 0 && file->seek(place) ? static_cast<toff_t>(place) : static_cast<toff_t>(-1);
}

int LeaveOpen(thandle_t) { return 0; }

toff_t Size(thandle_t file) { return static_cast<toff_t>(static_cast<QFile*>(file)->size()); }

constexpr int kIsHandled = 1;  ///< keeps the library from telling its own handlers, which print

/// Remembers the first error; what follows is mostly of its making.
int OnError(TIFF*, void* first, const char*, const char* format, va_list arguments) {
  auto* text = static_cast<QString*>(first);
  if (text->isEmpty()) *text = QString::vasprintf(format, arguments);
  return kIsHandled;
}

int OnWarning(TIFF*, void*, const char*, const char*, va_list) { return kIsHandled; }

/// An open file with handlers of its own. Tiff is null when it is no TIFF file.
struct Reader {
  explicit Reader(QFile& file) {
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   &TIFFOpenOptionsFree);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kMostAtOnce);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), OnError, &Error);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), OnWarning, nullptr);
    Tiff = TIFFClientOpenExt("", "rm", &file, Read, RefuseToWrite, Seek, LeaveOpen, Size, nullptr, nullptr,
                             options.get());
  }
  ~Reader() {
    if (Tiff != nullptr) TIFFClose(Tiff);
  }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  template <class Value>
  Value Field(std::uint32_t tag) const {
    Value value = 0;
    TIFFGetFieldDefaulted(Tiff, tag, &value);
    return value;
  }

  TIFF* Tiff = nullptr;
  QString Error;  ///< the first that was told
};

/// What the tags say of a picture that we can show.
struct Layout {
  std::int64_t Width = 0, Height = 0;
  int SampleBytes = 0;
  int FileChannels = 0;
  int Colours = 0;  ///< 1 or 3
  bool HasAlpha = false, IsApart = false, IsTiled = false, IsZeroWhite = false;
  int MostPerByte = 0;

  int Channels() const { return Colours + (HasAlpha ? 1 : 0); }
  bool Inverts(int channel) const { return channel == Colours || IsZeroWhite; }  ///< alpha is held inverted
};

struct Packing {
  std::uint16_t Compression;
  int MostPerByte;  ///< bytes that can come out of one
};

/// Of a plain file that is cut short some lines may be there.
constexpr Packing kPackings[] = {{COMPRESSION_NONE, 64},
                                 {COMPRESSION_PACKBITS, 64},
                                 {COMPRESSION_LZW, 2731},
                                 {COMPRESSION_ADOBE_DEFLATE, 1032},
                                 {COMPRESSION_DEFLATE, 1032}};

[[noreturn]] void Refuse(const char16_t* what, int number) {
  throw PictureError(QString::fromUtf16(what).arg(number));
}

Layout ReadLayout(const Reader& reader) {
  Layout layout;
  const auto small = [&reader](std::uint32_t tag) { return int{reader.Field<std::uint16_t>(tag)}; };
  layout.Width = reader.Field<std::uint32_t>(TIFFTAG_IMAGEWIDTH);
  layout.Height = reader.Field<std::uint32_t>(TIFFTAG_IMAGELENGTH);
  layout.FileChannels = small(TIFFTAG_SAMPLESPERPIXEL);
  layout.IsApart = small(TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
  layout.IsTiled = TIFFIsTiled(reader.Tiff) != 0;
  const int bits = small(TIFFTAG_BITSPERSAMPLE), format = small(TIFFTAG_SAMPLEFORMAT);
  if (bits != 8 && bits != 16) Refuse(u"%1 bits a sample cannot be shown, only 8 and 16", bits);
  if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID) {
    Refuse(u"samples of format %1 cannot be shown, only whole numbers without a sign", format);
  }
  layout.SampleBytes = bits / 8;
  const int photometric = small(TIFFTAG_PHOTOMETRIC);
  layout.IsZeroWhite = photometric == PHOTOMETRIC_MINISWHITE;
  layout.Colours = photometric == PHOTOMETRIC_RGB ? 3 : 1;
  const bool isGreyOrRgb = photometric <= PHOTOMETRIC_RGB && layout.FileChannels >= layout.Colours;
  if (!isGreyOrRgb) Refuse(u"colours of kind %1 cannot be shown, only grey and RGB", photometric);
  std::uint16_t extras = 0;
  const std::uint16_t* kinds = nullptr;
  TIFFGetFieldDefaulted(reader.Tiff, TIFFTAG_EXTRASAMPLES, &extras, &kinds);
  layout.HasAlpha = extras > 0 && kinds[0] == EXTRASAMPLE_UNASSALPHA && layout.FileChannels > layout.Colours;
  const int compression = small(TIFFTAG_COMPRESSION);
  const auto* packing = std::find_if(std::begin(kPackings), std::end(kPackings),
                                     [=](const Packing& row) { return row.Compression == compression; });
  if (packing == std::end(kPackings)) {
    Refuse(u"packing of kind %1 is not known, only LZW, deflate and PackBits", compression);
  }
  layout.MostPerByte = packing->MostPerByte;
  return layout;
}

void CheckCost(const Reader& reader, const Layout& layout, std::int64_t fileBytes) {
  const auto block = static_cast<std::int64_t>(layout.IsTiled ? TIFFTileSize64(reader.Tiff)
                                                              : TIFFScanlineSize64(reader.Tiff));
  const std::int64_t blocks = layout.IsTiled ? std::int64_t{TIFFNumberOfTiles(reader.Tiff)}
                                             : layout.Height * (layout.IsApart ? layout.FileChannels : 1);
  std::int64_t work = 0;
  if (__builtin_mul_overflow(block, blocks, &work)) work = INT64_MAX;
  picture::CheckCost({fileBytes, layout.Width, layout.Height, work, layout.MostPerByte, block});
}

/// Copies the samples of one channel, that are `fromStep` and `toStep` samples apart.
template <class Sample>
void CopyChannel(const std::uint8_t* from, int fromStep, std::uint8_t* to, int toStep, int count,
                 bool inverts) {
  const auto mask = static_cast<Sample>(inverts ? -1 : 0);
  constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(Sample));
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    Sample value;
    std::memcpy(&value, from + i * fromStep * size, sizeof value);
    value = static_cast<Sample>(value ^ mask);
    std::memcpy(to + i * toStep * size, &value, sizeof value);
  }
}

/// Takes over pixels of a row as the library gives them: those of one plane, or all channels.
void TakePixels(const Layout& layout, int plane, const std::uint8_t* from, SampleRows& samples, int row,
                int column, int count) {
  const int fromStep = layout.IsApart ? 1 : layout.FileChannels;
  const int toStep = samples.Channels(), bytes = layout.SampleBytes;
  const int end = layout.IsApart ? plane + 1 : toStep;
  std::uint8_t* to = samples.Row(row) + std::ptrdiff_t{column} * toStep * bytes;
  for (int channel = plane; channel < end; ++channel, from += bytes) {
    const auto copy = bytes == 1 ? CopyChannel<std::uint8_t> : CopyChannel<std::uint16_t>;
    copy(from, fromStep, to + std::ptrdiff_t{channel} * bytes, toStep, count, layout.Inverts(channel));
  }
}

/// Both return how many of the first `lines` rows could be read.
int ReadStrips(const Reader& reader, const Layout& layout, int plane, int lines, SampleRows& samples) {
  std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize64(reader.Tiff)));
  for (int y = 0; y < lines; ++y) {
    const auto number = static_cast<std::uint32_t>(y);
    if (TIFFReadScanline(reader.Tiff, row.data(), number, static_cast<std::uint16_t>(plane)) < 0) return y;
    TakePixels(layout, plane, row.data(), samples, y, 0, samples.Width());
  }
  return lines;
}

int ReadTiles(const Reader& reader, const Layout& layout, int plane, int lines, SampleRows& samples) {
  std::vector<std::uint8_t> tile(static_cast<std::size_t>(TIFFTileSize64(reader.Tiff)));
  const auto rowBytes = static_cast<std::ptrdiff_t>(TIFFTileRowSize64(reader.Tiff));
  const std::int64_t tileWidth = reader.Field<std::uint32_t>(TIFFTAG_TILEWIDTH);
  const std::int64_t tileHeight = reader.Field<std::uint32_t>(TIFFTAG_TILELENGTH);
  for (std::int64_t top = 0; top < lines; top += tileHeight) {
    for (std::int64_t left = 0; left < layout.Width; left += tileWidth) {
      if (TIFFReadTile(reader.Tiff, tile.data(), static_cast<std::uint32_t>(left),
                       static_cast<std::uint32_t>(top), 0, static_cast<std::uint16_t>(plane)) < 0) {
        return static_cast<int>(top);
      }
      const auto columns = static_cast<int>(std::min(tileWidth, layout.Width - left));
      const std::int64_t rows = std::min(tileHeight, lines - top);
      for (std::int64_t y = 0; y < rows; ++y) {
        TakePixels(layout, plane, tile.data() + y * rowBytes, samples, static_cast<int>(top + y),
                   static_cast<int>(left), columns);
      }
    }
  }
  return lines;
}

LoadedPicture Load(QFile& file) {
  const Reader reader(file);
  const auto refuse = [&reader] {
    throw PictureError(reader.Error.isEmpty() ? QStringLiteral("not a TIFF file") : reader.Error);
  };
  if (reader.Tiff == nullptr) refuse();
  const Layout layout = ReadLayout(reader);
  CheckCost(reader, layout, file.size());
  const auto height = static_cast<int>(layout.Height);
  SampleRows samples(static_cast<int>(layout.Width), height, layout.Channels(), layout.SampleBytes);
  int lines = height;
  for (int plane = 0; plane < (layout.IsApart ? layout.Channels() : 1); ++plane) {
    const auto read = layout.IsTiled ? ReadTiles : ReadStrips;
    lines = read(reader, layout, plane, lines, samples);
  }
  if (lines == 0) refuse();
  LoadedPicture loaded{LayOnWhite(MakeImage(std::move(samples), lines)), {}};
  FillMissing(loaded.Image, lines);
  if (lines < height) loaded.Damage = DamageText(file.fileName(), reader.Error + u'.', lines, height);
  return loaded;
}

}  // namespace

LoadedPicture LoadTiff(const QString& path) {
  const auto fail = [&path](const QString& reason) {
    return QStringLiteral("Cannot read %1: %2").arg(path, reason);
  };
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw files::FileError(fail(file.errorString()));
  try {
    return Load(file);
  } catch (const PictureError& error) {
    throw PictureError(fail(error.Text()));
  }
}

}  // namespace pelorin::picture
