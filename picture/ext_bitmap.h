#pragma once

#include <QImage>
#include <QString>

class QIODevice;

namespace pelorin::picture {

/// A Windows bitmap (".bmp") that also reads what some picture software writes: 8-bit bitmaps whose
/// header says 200 or 224 colours while the file carries all 256. One that has as many as it says, told by
/// where its pixels start and where the file ends, is read as it is.
///
/// 1, 4, 8, 16, 24 and 32 bits, plain or run-length coded, either row first. Loading throws
/// PictureError when the bitmap is damaged, cut short, or no bitmap; the earlier image then stays.
class TExtBitmap {
 public:
  /// Reads from where the stream stands to its end; the palette is mended only in a stream that stands
  /// at its start.
  void LoadFromStream(QIODevice& stream);

  /// The error's text names the file. Throws FileError when the file cannot be read.
  void LoadFromFile(const QString& path);

  /// Format_RGB32, top row first; null before anything is loaded.
  const QImage& Image() const { return image_; }

 private:
  QImage image_;
};

}  // namespace pelorin::picture
