#pragma once

#include <QImage>
#include <cstdint>

#include "picture/sample_rows.h"

namespace pelorin::picture {

/// The values of 16 bits that become black and white. Decoders write counts of 10 or 12 bits as they are or
/// scaled up, so that the darkest and the brightest possible value say nothing of what is in the picture.
struct ToneRange {
  int Black = 0;
  int White = 65535;  ///< greater than Black

  /// 0 … 255: in between it is linear and rounded to the nearest; what lies beyond is black or white.
  std::uint8_t Tone(int value) const;
};

/// The range that shows a picture of 16 bits well: of the samples that are not 0, which stands for lost
/// lines, a thousandth lies below Black and a thousandth above White. All colour channels have one range, so
/// that hues stay; alpha does not count, nor do the rows from `lines` on. A picture of one value is white,
/// one of zeros has the whole range.
ToneRange FindToneRange(const SampleRows& samples, int lines);

/// The picture with 8 bits a sample: Format_ARGB32 (not premultiplied) when it has an alpha channel and
/// Format_RGB32 otherwise; null when there are no samples. 16 bits are shown in the tones of FindToneRange
/// over the first `lines` rows, alpha in the whole range.
QImage MakeImage(const SampleRows& samples, int lines);

/// The same; the samples are given back row by row as they are used.
QImage MakeImage(SampleRows&& samples, int lines);

/// Fills what is transparent in a Format_ARGB32 image with white, like an empty page; the result is
/// Format_RGB32 in the same memory. An image of Format_RGB32 is returned as it is.
QImage LayOnWhite(QImage image);

}  // namespace pelorin::picture
