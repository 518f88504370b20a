#include "picture/ext_bitmap.h"

#include <QIODevice>
#include <cstdlib>
#include <utility>

#include "files/read_file.h"
#include "picture/bitmap_header.h"
#include "picture/picture_error.h"
#include "picture/picture_size.h"

namespace pelorin::picture {
namespace {

constexpr std::uint32_t kFullPalette = 256;
constexpr std::uint32_t kEntrySize = 4;
constexpr qsizetype kShortestMended = 55;

/// No bound: whether a file has all its pixels is found out by its own length, and told as cut short.
constexpr std::int64_t kMostPixelsPerByte = 1 << 20;

/// Whether the pixels follow the counted colours: the header says so, and behind a full palette the file
/// would not have room for them. How much room runs need, nobody says.
bool HasOnlyCountedColours(const BitmapHeader& header, qsizetype fileSize, std::uint32_t endOfCounted) {
  if (header.PixelOffset != endOfCounted) return false;
  if (header.Compression != kPlainRows) return true;
  const std::int64_t endOfFull = BitmapHeader::kSize + kFullPalette * kEntrySize;
  const std::int64_t rows = std::abs(std::int64_t{header.Height});
  return endOfFull + rows * BitmapRowBytes(header.Width, header.BitCount) > fileSize;
}

/// Takes the palette entries out that the header does not count, so that the pixels follow the counted
/// ones. The header's own word on where the pixels start is set to match.
void MendPalette(QByteArray& file) {
  if (file.size() < kShortestMended) return;
  const auto header = ReadBitmapHeader(file);
  if (!header || header->InfoSize < BitmapHeader::kInfoSize) return;
  const std::uint32_t used = header->ColoursUsed;
  if (header->ColoursImportant != used || (used != 200 && used != 224)) return;
  const std::uint32_t endOfPalette = BitmapHeader::kSize + used * kEntrySize;
  if (HasOnlyCountedColours(*header, file.size(), endOfPalette)) return;
  file.remove(endOfPalette, qsizetype{kFullPalette - used} * kEntrySize);
  SetPixelOffset(file, endOfPalette);
}

/// First byte behind headers, colour masks and palette: pixels cannot start earlier.
std::int64_t EndOfPalette(const BitmapHeader& header) {
  std::int64_t end = BitmapHeader::kFileHeaderSize + header.InfoSize;
  if (header.InfoSize == BitmapHeader::kInfoSize) {
    if (header.Compression == kBitFields) end += 12;
    if (header.Compression == kAlphaBitFields) end += 16;
  }
  if (header.BitCount > 8) return end;
  const std::int64_t entries = header.ColoursUsed != 0 ? header.ColoursUsed : 1 << header.BitCount;
  return end + entries * (header.InfoSize < BitmapHeader::kInfoSize ? 3 : kEntrySize);
}

/// Whether run-length coded rows come to their end mark, or at least to the end of the last row.
bool RunsAreComplete(QByteArrayView runs, bool isFourBit, std::int64_t rows) {
  std::int64_t endedRows = 0;
  for (qsizetype i = 0; i + 1 < runs.size();) {
    const auto count = static_cast<std::uint8_t>(runs[i]);
    const auto code = static_cast<std::uint8_t>(runs[i + 1]);
    i += 2;
    if (count > 0) continue;
    if (code == 0) {
      ++endedRows;
    } else if (code == 1) {
      return true;
    } else if (code == 2) {
      i += 2;
    } else {
      const int literalBytes = isFourBit ? (code + 1) / 2 : code;
      i += literalBytes + (literalBytes & 1);
      if (i > runs.size()) return false;
    }
  }
  return endedRows >= rows;
}

/// Checks the header against the file before anything of its size is allocated: the codec takes it at
/// its word and fills what is missing with nothing.
void CheckAndMendOffset(QByteArray& file) {
  const auto header = ReadBitmapHeader(file);
  if (!header) throw PictureError(QStringLiteral("not a Windows bitmap"));
  const std::int64_t rows = std::abs(std::int64_t{header->Height});
  if (!IsPossibleSize(header->Width, rows)) {
    throw PictureError(QStringLiteral("impossible size %1 x %2").arg(header->Width).arg(header->Height));
  }
  if (header->BitCount == 0 || header->BitCount > 32) {
    throw PictureError(QStringLiteral("%1 bits per pixel are not possible").arg(header->BitCount));
  }
  CheckCost({file.size(), header->Width, rows, rows * BitmapRowBytes(header->Width, header->BitCount),
             kMostPixelsPerByte});
  const bool isRuns = header->Compression == kRuns8 || header->Compression == kRuns4;
  // A row of nothing still takes its end mark, and a run of 255 pixels two bytes.
  const std::int64_t needed =
      isRuns ? rows * header->Width / 128 : rows * BitmapRowBytes(header->Width, header->BitCount);
  const std::int64_t earliest = EndOfPalette(*header);
  std::int64_t start = header->PixelOffset;
  if (start < earliest || start + needed > file.size()) start = earliest;
  const QString tooShort = QStringLiteral("the file is cut short");
  if (start + needed > file.size()) throw PictureError(tooShort);
  if (isRuns && !RunsAreComplete(QByteArrayView(file).sliced(start), header->Compression == kRuns4, rows)) {
    throw PictureError(tooShort);
  }
  SetPixelOffset(file, static_cast<std::uint32_t>(start));
}

QImage Decode(QByteArray file, bool isWholeFile) {
  if (isWholeFile) MendPalette(file);
  CheckAndMendOffset(file);
  const QImage image = QImage::fromData(file, "BMP");
  if (image.isNull()) throw PictureError(QStringLiteral("not a Windows bitmap that can be shown"));
  return image.convertToFormat(QImage::Format_RGB32);
}

}  // namespace

void TExtBitmap::LoadFromStream(QIODevice& stream) {
  const bool isAtStart = stream.pos() == 0;
  image_ = Decode(stream.readAll(), isAtStart);
}

void TExtBitmap::LoadFromFile(const QString& path) {
  try {
    image_ = Decode(files::ReadFile(path, files::kMostPictureBytes), true);
  } catch (const PictureError& error) {
    throw PictureError(QStringLiteral("Cannot read %1: %2").arg(path, error.Text()));
  }
}

}  // namespace pelorin::picture
