#include "picture/bitmap_header.h"

namespace pelorin::picture {
namespace {

// Where the fields stand in the file; numbers are little-endian.
constexpr qsizetype kFileSizeAt = 2;
constexpr qsizetype kReservedAt = 6;
constexpr qsizetype kPixelOffsetAt = 10;
constexpr qsizetype kInfoSizeAt = 14;
constexpr qsizetype kWidthAt = 18;
constexpr qsizetype kHeightAt = 22;
constexpr qsizetype kPlanesAt = 26;
constexpr qsizetype kBitCountAt = 28;
constexpr qsizetype kCompressionAt = 30;
constexpr qsizetype kColoursUsedAt = 46;
constexpr qsizetype kColoursImportantAt = 50;

constexpr std::uint32_t kOldestInfoSize = 12;
constexpr qsizetype kOldestHeightAt = 20;
constexpr qsizetype kOldestBitCountAt = 24;

std::uint16_t Read16(QByteArrayView bytes, qsizetype at) {
  const auto byte = [&](qsizetype i) { return static_cast<std::uint8_t>(bytes[at + i]); };
  return static_cast<std::uint16_t>(byte(0) | byte(1) << 8);
}

std::uint32_t Read32(QByteArrayView bytes, qsizetype at) {
  return Read16(bytes, at) | static_cast<std::uint32_t>(Read16(bytes, at + 2)) << 16;
}

void Write(QByteArray& bytes, qsizetype at, std::uint32_t value, int count = 4) {
  for (int i = 0; i < count; ++i) bytes[at + i] = static_cast<char>(value >> 8 * i & 0xFF);
}

}  // namespace

std::optional<BitmapHeader> ReadBitmapHeader(QByteArrayView file) {
  if (file.size() < kInfoSizeAt + 4 || !file.startsWith("BM")) return std::nullopt;
  BitmapHeader header;
  header.InfoSize = Read32(file, kInfoSizeAt);
  if (header.InfoSize < kOldestInfoSize || file.size() - BitmapHeader::kFileHeaderSize < header.InfoSize) {
    return std::nullopt;
  }
  header.FileSize = Read32(file, kFileSizeAt);
  header.Reserved = Read32(file, kReservedAt);
  header.PixelOffset = Read32(file, kPixelOffsetAt);
  if (header.InfoSize < BitmapHeader::kInfoSize) {
    header.Width = Read16(file, kWidthAt);
    header.Height = Read16(file, kOldestHeightAt);
    header.BitCount = Read16(file, kOldestBitCountAt);
    return header;
  }
  header.Width = static_cast<std::int32_t>(Read32(file, kWidthAt));
  header.Height = static_cast<std::int32_t>(Read32(file, kHeightAt));
  header.BitCount = Read16(file, kBitCountAt);
  header.Compression = Read32(file, kCompressionAt);
  header.ColoursUsed = Read32(file, kColoursUsedAt);
  header.ColoursImportant = Read32(file, kColoursImportantAt);
  return header;
}

QByteArray WriteBitmapHeader(const BitmapHeader& header) {
  QByteArray bytes(BitmapHeader::kSize, '\0');
  bytes[0] = 'B';
  bytes[1] = 'M';
  Write(bytes, kFileSizeAt, header.FileSize);
  Write(bytes, kReservedAt, header.Reserved);
  Write(bytes, kPixelOffsetAt, header.PixelOffset);
  Write(bytes, kInfoSizeAt, BitmapHeader::kInfoSize);
  Write(bytes, kWidthAt, static_cast<std::uint32_t>(header.Width));
  Write(bytes, kHeightAt, static_cast<std::uint32_t>(header.Height));
  Write(bytes, kPlanesAt, 1, 2);
  Write(bytes, kBitCountAt, header.BitCount, 2);
  Write(bytes, kCompressionAt, header.Compression);
  Write(bytes, kColoursUsedAt, header.ColoursUsed);
  Write(bytes, kColoursImportantAt, header.ColoursImportant);
  return bytes;
}

void SetPixelOffset(QByteArray& file, std::uint32_t offset) { Write(file, kPixelOffsetAt, offset); }

}  // namespace pelorin::picture
