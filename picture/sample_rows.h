#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pelorin::picture {

/// A picture's samples as its file has them: 8 bits, or 16 in this machine's byte order; 1 channel grey,
/// 2 grey and alpha, 3 RGB, 4 RGB and alpha, side by side for each pixel. Alpha is inverted: 0 is opaque. Row
/// 0 is the top row. Rows are held in bands of about a megabyte, so that those that have become part of an
/// image can be given back while it grows: together they never take more than the larger of the two.
class SampleRows {
 public:
  SampleRows() = default;

  /// All samples are mid-grey. Throws PictureError when there is no memory for them.
  SampleRows(int width, int height, int channels, int sampleBytes);

  int Width() const { return width_; }
  int Height() const { return height_; }
  int Channels() const { return channels_; }
  int SampleBytes() const { return sampleBytes_; }  ///< 1 or 2
  bool HasAlpha() const { return channels_ % 2 == 0; }
  bool IsEmpty() const { return bands_.empty(); }

  /// Bytes of a row; there is no padding.
  std::size_t RowBytes() const { return rowBytes_; }

  /// Rows that were dropped must not be asked for.
  std::uint8_t* Row(int row) { return bands_[Band(row)].data() + InBand(row); }
  const std::uint8_t* Row(int row) const { return bands_[Band(row)].data() + InBand(row); }

  /// Gives back the bands that lie wholly above `row`.
  void DropAbove(int row);

 private:
  std::size_t Band(int row) const { return static_cast<std::size_t>(row / bandRows_); }
  std::size_t InBand(int row) const { return static_cast<std::size_t>(row % bandRows_) * rowBytes_; }

  int width_ = 0, height_ = 0, channels_ = 0, sampleBytes_ = 0;
  int bandRows_ = 1;
  std::size_t rowBytes_ = 0;
  std::vector<std::vector<std::uint8_t>> bands_;
};

}  // namespace pelorin::picture
