#include "overlay/flight_image.h"

#include <algorithm>
#include <cstring>

#include "picture/picture_size.h"

namespace pelorin::overlay {

FlightImage::FlightImage(int width, int height, bool southBound)
    : image_(picture::NewImage(width, std::max(height, kRowsGivenWay), QImage::Format_RGB32)),
      southBound_(southBound),
      row_(southBound ? 0 : image_.height() - 1) {
  image_.fill(Qt::black);
}

std::uint32_t* FlightImage::Pixels(int row) { return reinterpret_cast<std::uint32_t*>(image_.scanLine(row)); }

std::span<std::uint32_t> FlightImage::NextRow() {
  if (row_ < 0 || row_ >= image_.height()) GiveWay();
  const std::span<std::uint32_t> row(Pixels(row_), static_cast<std::size_t>(image_.width()));
  row_ += southBound_ ? 1 : -1;
  return row;
}

void FlightImage::GiveWay() {
  const int kept = image_.height() - kRowsGivenWay;
  const auto bytes = [this](int rows) {
    return static_cast<std::size_t>(rows) * static_cast<std::size_t>(image_.bytesPerLine());
  };
  const int from = southBound_ ? kRowsGivenWay : 0, to = southBound_ ? 0 : kRowsGivenWay;
  std::memmove(image_.scanLine(to), image_.scanLine(from), bytes(kept));
  const int firstFreed = southBound_ ? kept : 0;
  std::fill_n(Pixels(firstFreed), bytes(kRowsGivenWay) / sizeof(std::uint32_t), 0xFF000000U);
  row_ = southBound_ ? kept : kRowsGivenWay - 1;
}

void FlightImage::Turn() {
  // Rows of 32-bit pixels have no padding, so the picture is one run of pixels.
  std::reverse(Pixels(0), Pixels(0) + std::ptrdiff_t{image_.width()} * image_.height());
  southBound_ = !southBound_;
  row_ = image_.height() - 1 - row_;
}

}  // namespace pelorin::overlay
