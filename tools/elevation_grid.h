#pragma once

#include <QByteArray>
#include <vector>

namespace pelorin::tools {

/// The heights of `etopo5.elev`: metres, 2160 rows from 90° N southwards to 5′ above the south pole, 4321
/// columns from Greenwich eastwards to Greenwich again, every 5′; in the file little-endian 16-bit values.
class ElevationGrid {
 public:
  static constexpr int kRows = 2160;
  static constexpr int kColumns = 4321;

  /// Throws std::runtime_error when the size is not that of such a file.
  explicit ElevationGrid(const QByteArray& bytes);

  /// Between the four nodes round a place; `longitudeDeg` in any turn.
  float HeightM(double latitudeDeg, double longitudeDeg) const;

 private:
  std::vector<float> heights_;
};

}  // namespace pelorin::tools
