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

/// An interlaced picture comes in seven passes over all lines, and takes so many times as long as one in
/// order.
constexpr int kInterlaceWork = 3;

constexpr int kDeepest = 16;

/// How much of a file is read at once.
constexpr qint64 kPieceBytes = 1 << 18;

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
  std::size_t Unread = 0;  ///< bytes of the piece that ends the header, behind it
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
bool FeedBytes(const Reader& reader, png_bytep bytes, std::size_t count) {
  if (setjmp(png_jmpbuf(reader.Png)) != 0) return false;
  png_process_data(reader.Png, reader.Info, bytes, count);
  return true;
}

/// Feeds the last `count` bytes of a piece.
bool Feed(const Reader& reader, QByteArray& piece, std::size_t count) {
  // libpng only reads the bytes, whatever their type says.
  auto* end = reinterpret_cast<png_bytep>(piece.data()) + piece.size();
  return FeedBytes(reader, end - count, count);
}

bool Feed(const Reader& reader, QByteArray& piece) {
  return Feed(reader, piece, static_cast<std::size_t>(piece.size()));
}

bool WriteRows(const Writer& writer, const PngPicture& picture, QIODevice* device) {
  if (setjmp(png_jmpbuf(writer.Png)) != 0) return false;
  const int bitDepth = 8 * picture.Samples.SampleBytes();
  const int colourType = (picture.Samples.Channels() > 2 ? PNG_COLOR_MASK_COLOR : 0) |
                         (picture.Samples.HasAlpha() ? PNG_COLOR_MASK_ALPHA : 0);
  png_set_write_fn(writer.Png, device, WriteBytes, FlushNothing);
  png_set_IHDR(writer.Png, writer.Info, static_cast<png_uint_32>(picture.Width),
               static_cast<png_uint_32>(picture.Height), bitDepth, colourType, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(writer.Png, writer.Info);
  png_set_invert_alpha(writer.Png);
  SwapDeepSamples(writer.Png, bitDepth);
  for (int row = 0; row < picture.Height; ++row) png_write_row(writer.Png, picture.Samples.Row(row));
  png_write_end(writer.Png, nullptr);
  return true;
}

}  // namespace

bool DecodePng(QIODevice& file, PngPicture& picture) {
  const Reader reader;
  if (reader.Info == nullptr) return false;
  // Texts and colour profiles can be packed a thousandfold like the pixels, and nobody reads them.
  png_set_keep_unknown_chunks(reader.Png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
  Lines lines;
  png_set_progressive_read_fn(reader.Png, &lines, OnHeader, OnRow, OnEnd);
  const qint64 fileBytes = file.size() - file.pos();
  QByteArray piece;
  while (!lines.HasHeader) {
    piece = file.read(kPieceBytes);
    if (piece.isEmpty() || !Feed(reader, piece)) return false;
  }
  const std::int64_t width = png_get_image_width(reader.Png, reader.Info);
  const std::int64_t height = png_get_image_height(reader.Png, reader.Info);
  const bool isInterlaced = png_get_interlace_type(reader.Png, reader.Info) != PNG_INTERLACE_NONE;
  CheckCost({fileBytes, width, height, lines.PackedRowBytes * height * (isInterlaced ? kInterlaceWork : 1),
             kMaxInflation * (isInterlaced ? kInterlaceWork : 1)});
  picture.Width = static_cast<int>(width);
  picture.Height = static_cast<int>(height);
  picture.BitDepth = lines.BitDepth;
  picture.ColourType = lines.ColourType;
  picture.Samples = SampleRows(picture.Width, picture.Height, png_get_channels(reader.Png, reader.Info),
                               png_get_bit_depth(reader.Png, reader.Info) / 8);
  for (int row = 0; row < picture.Height; ++row) lines.Rows.push_back(picture.Samples.Row(row));
  bool isSound = Feed(reader, piece, lines.Unread);
  while (isSound && !(piece = file.read(kPieceBytes)).isEmpty()) isSound = Feed(reader, piece);
  picture.LinesRead = lines.Read;
  picture.IsWhole = isSound && (lines.IsEnded || (!isInterlaced && lines.Read == height));
  return lines.Read > 0;
}

bool EncodePng(const PngPicture& picture, QIODevice& device) {
  const Writer writer;
  return writer.Info != nullptr && !picture.Samples.IsEmpty() && WriteRows(writer, picture, &device);
}

}  // namespace pelorin::picture
