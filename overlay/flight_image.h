#pragma once

#include <QImage>
#include <cstdint>
#include <span>

namespace pelorin::overlay {

/// The picture of a flight, which lines enter one by one: south-bound from the top down, north-bound from the
/// bottom up, so that north is up. When it is full, the lines give way by a few rows at a time.
class FlightImage {
 public:
  static constexpr int kRowsGivenWay = 8;

  FlightImage(int width, int height, bool southBound);

  /// Where the next line goes; what is there is overwritten. Moves the image if it is full.
  std::span<std::uint32_t> NextRow();

  /// Turns the picture by 180°; lines enter from the other side from now on.
  void Turn();

  /// Row that the next line goes to; −1 or the height when the image is full.
  int Row() const { return row_; }
  bool SouthBound() const { return southBound_; }
  /// Format_RGB32; black where there is no line yet. It is written to in place: copies see nothing new.
  const QImage& Image() const { return image_; }

 private:
  void GiveWay();
  std::uint32_t* Pixels(int row);

  QImage image_;
  bool southBound_;
  int row_;
};

}  // namespace pelorin::overlay
