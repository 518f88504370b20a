#include "picture/indexed_bitmap.h"

#include <QIODevice>

#include "files/atomic_file.h"
#include "picture/bitmap_header.h"
#include "picture/picture_error.h"
#include "picture/picture_size.h"

namespace pelorin::picture {
namespace {

constexpr std::uint16_t kBitCount = 8;

QByteArray ColourBytes(const ColourTable& colours) {
  QByteArray bytes;
  for (const std::uint32_t colour : colours) {
    for (const int shift : {0, 8, 16}) bytes.append(static_cast<char>(colour >> shift & 0xFF));
    bytes.append('\0');
  }
  return bytes;
}

}  // namespace

void SaveIndexedBitmap(const IndexedImage& image, const ColourTable& colours, const QString& path,
                       std::uint32_t tag) {
  const std::int64_t pixelCount = std::int64_t{image.Width} * image.Height;
  if (!IsPossibleSize(image.Width, image.Height) ||
      static_cast<std::int64_t>(image.Pixels.size()) != pixelCount) {
    throw PictureError(QStringLiteral("Cannot write %1: no picture of %2 x %3 pixels")
                           .arg(path)
                           .arg(image.Width)
                           .arg(image.Height));
  }
  const QByteArray colourBytes = ColourBytes(colours);
  const std::int64_t rowBytes = BitmapRowBytes(image.Width, kBitCount);
  BitmapHeader header;
  header.Reserved = tag;
  header.PixelOffset = BitmapHeader::kSize + static_cast<std::uint32_t>(colourBytes.size());
  header.FileSize = header.PixelOffset + static_cast<std::uint32_t>(rowBytes * image.Height);
  header.Width = image.Width;
  header.Height = image.Height;
  header.BitCount = kBitCount;
  files::ReplaceFile(path, [&](QIODevice& file) {
    // Large pieces: every write is a call into the system.
    constexpr qsizetype pieceBytes = 1 << 20;
    QByteArray piece = WriteBitmapHeader(header) + colourBytes;
    piece.reserve(pieceBytes + rowBytes);
    for (int row = image.Height - 1; row >= 0; --row) {
      piece.append(reinterpret_cast<const char*>(image.Row(row)), image.Width);
      piece.append(rowBytes - image.Width, '\0');
      if (piece.size() < pieceBytes && row > 0) continue;
      file.write(piece);
      piece.resize(0);
    }
  });
}

}  // namespace pelorin::picture
