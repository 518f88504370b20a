#include "picture/png_codec.h"

#include <png.h>

#include <QIODevice>
#include <algorithm>
#include <bit>
#include <csetjmp>

#include "picture/picture_size.h"

// libpng leaves a failing call by longjmp, which skips destructors. So each setjmp stands in a function
// of its own that has no objects; what must be released belongs to its caller.

namespace pelorin::picture {
namespace {

/// Deflate makes at most this many bytes out of one.
constexpr std::int64_t kMaxInflation = 1032;

constexpr int kDeepest = 16;

constexpr std::uint8_t kMidGrey = 0x80;

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

void WriteBytes(png_structp png, png_bytep from, std::size_t count) {
  static_cast<QIODevice*>(png_get_io_ptr(png))
      ->write(reinterpret_cast<const char*>(from), static_cast<qint64>(count));
}

void FlushNothing(png_structp) {}

/// PNG has the high byte first.
void SwapDeepSamples(png_structp png, int bitDepth) {
  if (bitDepth == kDeepest && std::endian::native == std::endian::little) png_set_swap(png);
}

/// What libpng's callbacks work on while a file is fed to it: all that has come of a line is handed out at
/// once, so that no line is lost when the file breaks off.
struct Lines {
  // As the file has them:
  std::int64_t PackedRowBytes = 0;
  int BitDepth = 0, ColourType = 0;
  std::size_t Unread = 0;  ///< bytes of the file behind the header
  bool HasHeader = false;
  std::vector<png_bytep> Rows;
  int Read = 0;
  bool IsEnded = false;
};

Lines& LinesOf(png_structp png) { return *static_cast<Lines*>(png_get_progressive_ptr(png)); }

void OnHeader(png_structp png, png_infop info) {
  Lines& lines = LinesOf(png);
  lines.PackedRowBytes = static_cast<std::int64_t>(png_get_rowbytes(png, info));
  lines.BitDepth = png_get_bit_depth(png, info);
  lines.ColourType = png_get_color_type(png, info);
  png_set_invert_alpha(png);
  if (lines.ColourType == PNG_COLOR_TYPE_PALETTE ||
      (lines.ColourType == PNG_COLOR_TYPE_GRAY && lines.BitDepth < 8) ||
      png_get_valid(png, info, PNG_INFO_tRNS) != 0) {
    png_set_expand(png);
  }
  png_set_packing(png);
  SwapDeepSamples(png, lines.BitDepth);
  png_set_interlace_handling(png);
  png_read_update_info(png, info);
  lines.HasHeader = true;
  lines.Unread = png_process_data_pause(png, 0);
}

void OnRow(png_structp png, png_bytep row, png_uint_32 number, int) {
  if (row == nullptr) return;
  Lines& lines = LinesOf(png);
  png_progressive_combine_row(png, lines.Rows[number], row);
  lines.Read = std::max(lines.Read, static_cast<int>(number) + 1);
}

void OnEnd(png_structp png, png_infop) { LinesOf(png).IsEnded = true; }

/// Feeds bytes until they end, or the header does; false at damage.
bool Feed(const Reader& reader, png_bytep bytes, std::size_t count) {
  if (setjmp(png_jmpbuf(reader.Png)) != 0) return false;
  png_process_data(reader.Png, reader.Info, bytes, count);
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
  Lines lines;
  // libpng only reads the bytes, whatever their type says.
  auto* bytes = reinterpret_cast<png_bytep>(const_cast<char*>(file.data()));
  const auto size = static_cast<std::size_t>(file.size());
  png_set_progressive_read_fn(reader.Png, &lines, OnHeader, OnRow, OnEnd);
  if (!Feed(reader, bytes, size) || !lines.HasHeader) return false;
  const std::int64_t width = png_get_image_width(reader.Png, reader.Info);
  const std::int64_t height = png_get_image_height(reader.Png, reader.Info);
  if (!IsPossibleSize(width, height) || lines.PackedRowBytes * height > file.size() * kMaxInflation) {
    return false;
  }
  picture.Width = static_cast<int>(width);
  picture.Height = static_cast<int>(height);
  picture.BitDepth = lines.BitDepth;
  picture.ColourType = lines.ColourType;
  picture.Channels = png_get_channels(reader.Png, reader.Info);
  picture.SampleBytes = png_get_bit_depth(reader.Png, reader.Info) / 8;
  const std::size_t rowBytes = png_get_rowbytes(reader.Png, reader.Info);
  picture.Samples.assign(rowBytes * static_cast<std::size_t>(height), kMidGrey);
  for (std::size_t start = 0; start < picture.Samples.size(); start += rowBytes) {
    lines.Rows.push_back(picture.Samples.data() + start);
  }
  const bool isSound = Feed(reader, bytes + size - lines.Unread, lines.Unread);
  picture.LinesRead = lines.Read;
  const bool isInterlaced = png_get_interlace_type(reader.Png, reader.Info) != PNG_INTERLACE_NONE;
  picture.IsWhole = isSound && (lines.IsEnded || (!isInterlaced && lines.Read == height));
  return lines.Read > 0;
}

bool EncodePng(const PngPicture& picture, QIODevice& device) {
  const Writer writer;
  return writer.Info != nullptr && !picture.Samples.empty() && WriteRows(writer, picture, &device);
}

}  // namespace pelorin::picture
