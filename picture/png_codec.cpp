#include "picture/png_codec.h"

#include <png.h>

#include <QIODevice>
#include <bit>
#include <csetjmp>
#include <cstring>

#include "picture/picture_size.h"

// libpng leaves a failing call by longjmp, which skips destructors. So each setjmp stands in a function
// of its own that has no objects; what must be released belongs to its caller.

namespace pelorin::picture {
namespace {

/// Deflate makes at most this many bytes out of one.
constexpr std::int64_t kMaxInflation = 1032;

constexpr int kDeepest = 16;

[[noreturn]] void Fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }

void Ignore(png_structp, png_const_charp) {}

struct Reader {
  png_structp Png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore);
  png_infop Info = Png != nullptr ? png_create_info_struct(Png) : nullptr;

  Reader() = default;
  ~Reader() { png_destroy_read_struct(&Png, &Info, nullptr); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
};

struct Writer {
  png_structp Png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore);
  png_infop Info = Png != nullptr ? png_create_info_struct(Png) : nullptr;

  Writer() = default;
  ~Writer() { png_destroy_write_struct(&Png, &Info); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;
};

/// Serves libpng from the bytes not yet read, which its I/O pointer leads to.
void ReadBytes(png_structp png, png_bytep to, std::size_t count) {
  auto* rest = static_cast<QByteArrayView*>(png_get_io_ptr(png));
  if (count > static_cast<std::size_t>(rest->size())) png_error(png, "end of file");
  std::memcpy(to, rest->data(), count);
  *rest = rest->sliced(static_cast<qsizetype>(count));
}

void WriteBytes(png_structp png, png_bytep from, std::size_t count) {
  static_cast<QIODevice*>(png_get_io_ptr(png))
      ->write(reinterpret_cast<const char*>(from), static_cast<qint64>(count));
}

void FlushNothing(png_structp) {}

/// PNG has the high byte first.
void SwapDeepSamples(png_structp png, int bitDepth) {
  if (bitDepth == kDeepest && std::endian::native == std::endian::little) png_set_swap(png);
}

bool ReadHeader(const Reader& reader, QByteArrayView* rest) {
  if (setjmp(png_jmpbuf(reader.Png)) != 0) return false;
  png_set_read_fn(reader.Png, rest, ReadBytes);
  png_read_info(reader.Png, reader.Info);
  return true;
}

bool PrepareSamples(const Reader& reader) {
  if (setjmp(png_jmpbuf(reader.Png)) != 0) return false;
  const int colourType = png_get_color_type(reader.Png, reader.Info);
  const int bitDepth = png_get_bit_depth(reader.Png, reader.Info);
  png_set_invert_alpha(reader.Png);
  if (colourType == PNG_COLOR_TYPE_PALETTE || (colourType == PNG_COLOR_TYPE_GRAY && bitDepth < 8) ||
      png_get_valid(reader.Png, reader.Info, PNG_INFO_tRNS) != 0) {
    png_set_expand(reader.Png);
  }
  png_set_packing(reader.Png);
  SwapDeepSamples(reader.Png, bitDepth);
  png_set_interlace_handling(reader.Png);
  png_read_update_info(reader.Png, reader.Info);
  return true;
}

bool ReadRows(const Reader& reader, png_bytepp rows) {
  if (setjmp(png_jmpbuf(reader.Png)) != 0) return false;
  png_read_image(reader.Png, rows);
  return true;
}

bool WriteRows(const Writer& writer, const PngPicture& picture, QIODevice* device) {
  if (setjmp(png_jmpbuf(writer.Png)) != 0) return false;
  const int bitDepth = 8 * picture.SampleBytes;
  const bool hasAlpha = picture.Channels % 2 == 0;
  const int colourType =
      (picture.Channels > 2 ? PNG_COLOR_MASK_COLOR : 0) | (hasAlpha ? PNG_COLOR_MASK_ALPHA : 0);
  png_set_write_fn(writer.Png, device, WriteBytes, FlushNothing);
  png_set_IHDR(writer.Png, writer.Info, static_cast<png_uint_32>(picture.Width),
               static_cast<png_uint_32>(picture.Height), bitDepth, colourType, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(writer.Png, writer.Info);
  png_set_invert_alpha(writer.Png);
  SwapDeepSamples(writer.Png, bitDepth);
  const std::size_t rowBytes = picture.Samples.size() / static_cast<std::size_t>(picture.Height);
  for (std::size_t start = 0; start < picture.Samples.size(); start += rowBytes) {
    png_write_row(writer.Png, picture.Samples.data() + start);
  }
  png_write_end(writer.Png, nullptr);
  return true;
}

}  // namespace

bool DecodePng(QByteArrayView file, PngPicture& picture) {
  const Reader reader;
  if (reader.Info == nullptr) return false;
  QByteArrayView rest = file;
  if (!ReadHeader(reader, &rest)) return false;
  const std::int64_t width = png_get_image_width(reader.Png, reader.Info);
  const std::int64_t height = png_get_image_height(reader.Png, reader.Info);
  const auto packedRow = static_cast<std::int64_t>(png_get_rowbytes(reader.Png, reader.Info));
  if (!IsPossibleSize(width, height) || packedRow * height > rest.size() * kMaxInflation) return false;
  picture.Width = static_cast<int>(width);
  picture.Height = static_cast<int>(height);
  picture.BitDepth = png_get_bit_depth(reader.Png, reader.Info);
  picture.ColourType = png_get_color_type(reader.Png, reader.Info);

  if (!PrepareSamples(reader)) return false;
  picture.Channels = png_get_channels(reader.Png, reader.Info);
  picture.SampleBytes = png_get_bit_depth(reader.Png, reader.Info) / 8;
  const std::size_t rowBytes = png_get_rowbytes(reader.Png, reader.Info);
  picture.Samples.resize(rowBytes * static_cast<std::size_t>(height));
  std::vector<png_bytep> rows;
  for (std::size_t start = 0; start < picture.Samples.size(); start += rowBytes) {
    rows.push_back(picture.Samples.data() + start);
  }
  return ReadRows(reader, rows.data());
}

bool EncodePng(const PngPicture& picture, QIODevice& device) {
  const Writer writer;
  return writer.Info != nullptr && !picture.Samples.empty() && WriteRows(writer, picture, &device);
}

}  // namespace pelorin::picture
