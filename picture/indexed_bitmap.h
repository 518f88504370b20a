#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace pelorin::picture {

/// A picture of one byte per pixel, an index into a colour table. Row 0 is the top row; rows follow
/// each other without padding.
struct IndexedImage {
  int Width = 0;
  int Height = 0;
  std::vector<std::uint8_t> Pixels;  ///< Width × Height

  std::uint8_t* Row(int row) { return Pixels.data() + Start(row); }
  const std::uint8_t* Row(int row) const { return Pixels.data() + Start(row); }

 private:
  std::size_t Start(int row) const { return static_cast<std::size_t>(row) * static_cast<std::size_t>(Width); }
};

/// The colour of each index as 0x00RRGGBB.
using ColourTable = std::array<std::uint32_t, 256>;

/// Replaces `path` by an 8-bit Windows bitmap: 14-byte file header, 40-byte information header, all 256
/// colours, then the rows, bottom row first, each padded to a multiple of 4 bytes. The number of colours
/// is never reduced: the file's size says whether it is whole, and the pixels start at byte 1078. `tag` goes
/// into the reserved bytes of the file header.
///
/// Throws PictureError when the image is empty or its pixels do not match its size, and FileError when
/// the file cannot be written; an earlier file is then left as it was.
void SaveIndexedBitmap(const IndexedImage& image, const ColourTable& colours, const QString& path,
                       std::uint32_t tag = 0);

}  // namespace pelorin::picture
