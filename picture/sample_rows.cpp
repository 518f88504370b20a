#include "picture/sample_rows.h"

#include <algorithm>
#include <new>

#include "picture/picture_error.h"

namespace pelorin::picture {
namespace {

constexpr std::size_t kBandBytes = 1 << 20;
constexpr std::uint8_t kMidGrey = 0x80;

}  // namespace

SampleRows::SampleRows(int width, int height, int channels, int sampleBytes)
    : width_(width), height_(height), channels_(channels), sampleBytes_(sampleBytes) {
  rowBytes_ = static_cast<std::size_t>(width) * static_cast<std::size_t>(channels * sampleBytes);
  bandRows_ = static_cast<int>(std::max<std::size_t>(kBandBytes / std::max<std::size_t>(rowBytes_, 1), 1));
  try {
    for (int row = 0; row < height; row += bandRows_) {
      bands_.emplace_back(static_cast<std::size_t>(std::min(bandRows_, height - row)) * rowBytes_, kMidGrey);
    }
  } catch (const std::bad_alloc&) {
    throw PictureError(
        QStringLiteral("there is not enough memory for %1 x %2 pixels").arg(width).arg(height));
  }
}

void SampleRows::DropAbove(int row) {
  for (std::size_t band = Band(row); band > 0 && !bands_[band - 1].empty(); --band) {
    std::vector<std::uint8_t>().swap(bands_[band - 1]);
  }
}

}  // namespace pelorin::picture
