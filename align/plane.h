#pragma once

#include <QImage>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "swath/recording.h"

/// Rasters of numbers, and what is done with them before pictures and maps are compared.
namespace pelorin::align {

/// Rows of values, the first row first.
template <class Value>
struct Raster {
  Raster() = default;
  Raster(int columns, int rows, Value value = {})
      : Columns(columns),
        Rows(rows),
        Values(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), value) {}

  Value* Row(int row) { return Values.data() + Start(row); }
  const Value* Row(int row) const { return Values.data() + Start(row); }

  int Columns = 0, Rows = 0;
  std::vector<Value> Values;

 private:
  std::size_t Start(int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(Columns);
  }
};

using Plane = Raster<float>;
using GreyPlane = Raster<std::uint8_t>;

/// A picture's grey, 0 … 255, in the order of reception: the first line is row 0, its first column column 0.
GreyPlane ReceivedGrey(const QImage& picture, const swath::Recording& recording);

/// The median of each value and its eight neighbours: single wrong values are gone, edges stay. The values at
/// the edges stay as they are.
GreyPlane MedianOfNine(const GreyPlane& grey);

/// Gaussian, `sigma` in samples; what lies beyond the edges is like them.
Plane Blurred(const Plane& plane, double sigma);

/// The same of what was seen alone; what was not (0 in `seen`) has no part in what is beside it.
Plane BlurredWhereSeen(const Plane& plane, const GreyPlane& seen, double sigma);

/// How far each value stands out from the mean of the box round it, in standard deviations that are taken to
/// be `leastSd` at least; beyond some one and a half deviations it saturates, so that clouds and noise count
/// no more than coasts do. The box reaches `half` to each side. Where nothing was seen (0 in `seen`) the
/// result is 0, and the values there count for nothing.
Plane LocalContrast(const Plane& plane, const GreyPlane& seen, int half, double leastSd);

}  // namespace pelorin::align
