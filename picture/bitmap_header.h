#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>

namespace pelorin::picture {

/// The 14-byte file header and the information header of a Windows bitmap, as far as we use them.
struct BitmapHeader {
  static constexpr std::uint32_t kFileHeaderSize = 14;
  static constexpr std::uint32_t kInfoSize = 40;
  static constexpr std::uint32_t kSize = kFileHeaderSize + kInfoSize;

  std::uint32_t FileSize = 0;          ///< often wrong in files found in the wild
  std::uint32_t Reserved = 0;          ///< four bytes that no reader of bitmaps looks at
  std::uint32_t PixelOffset = 0;       ///< from the start of the file; sometimes 0 or wrong
  std::uint32_t InfoSize = kInfoSize;  ///< 40; longer in later versions, 12 in the oldest
  std::int32_t Width = 0;
  std::int32_t Height = 0;  ///< negative: the top row comes first
  std::uint16_t BitCount = 0;
  std::uint32_t Compression = 0;
  std::uint32_t ColoursUsed = 0;  ///< 0: as many as BitCount can tell apart
  std::uint32_t ColoursImportant = 0;
};

enum BitmapCompression : std::uint32_t {
  kPlainRows = 0,
  kRuns8 = 1,
  kRuns4 = 2,
  kBitFields = 3,
  kAlphaBitFields = 6,
};

/// The header at the start of a file. Nothing when the signature "BM" is not there or the header is
/// cut short. The fields are as they stand: nothing is checked.
std::optional<BitmapHeader> ReadBitmapHeader(QByteArrayView file);

/// The 54 bytes of a header; `InfoSize` is taken to be 40.
QByteArray WriteBitmapHeader(const BitmapHeader& header);

/// Corrects the place of the pixels in the header of a file that has one.
void SetPixelOffset(QByteArray& file, std::uint32_t offset);

/// Bytes of an uncompressed row: rows start at multiples of 4 bytes.
constexpr std::int64_t BitmapRowBytes(std::int64_t width, int bitCount) {
  return (width * bitCount + 31) / 32 * 4;
}

}  // namespace pelorin::picture
