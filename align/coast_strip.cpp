#include "align/coast_strip.h"

#include <algorithm>
#include <cmath>

#include "orbit/julian_date.h"

namespace pelorin::align {
namespace {

double Square(double value) { return value * value; }

}  // namespace

CellPlane CoastStrip(const SampleMesh& mesh, const swath::SurfaceOfLine& surfaceOf, int firstRow,
                     int cellRows) {
  constexpr int perCell = SampleMesh::kPerCell;
  const int rows = cellRows * perCell;
  const swath::Recording even = mesh.Evenly(firstRow, rows);
  swath::GroundLineFinder finder(even);
  swath::GroundLine line;
  std::vector<swath::Surface> surfaces(static_cast<std::size_t>(even.Columns));
  std::vector<std::size_t> columns;
  for (int x = 0; x < mesh.Columns(); ++x) {
    columns.push_back(static_cast<std::size_t>(
        std::clamp(static_cast<int>(std::lround(mesh.ScannerColumn(x))), 0, even.Columns - 1)));
  }
  CellPlane strip(mesh.Columns() / perCell, cellRows);
  for (int row = 0; row < rows; ++row) {
    finder.Find(
        orbit::JulianDateOfMoment({even.FirstLine().Days + even.SecondsOfLine(row) / orbit::kSecondsPerDay}),
        line);
    surfaceOf(line, surfaces);
    std::int16_t* cells = strip.Row(row / perCell);
    for (std::size_t x = 0; x < columns.size(); ++x) {
      cells[x / perCell] = static_cast<std::int16_t>(cells[x / perCell] +
                                                     (surfaces[columns[x]] == swath::Surface::Land ? 1 : 0));
    }
  }
  return strip;
}

PictureCells CellsOf(const SampleMesh::Samples& samples) {
  constexpr int perCell = SampleMesh::kPerCell, half = 40;
  constexpr double leastSd = 2;
  const Plane contrast = LocalContrast(samples.Grey, samples.Seen, half, leastSd);
  PictureCells picture{CellPlane(contrast.Columns / perCell, contrast.Rows / perCell), 0};
  constexpr float scale = kMostContrast / 1.5F / (perCell * perCell);
  double all = 0, sudden = 0;
  for (int y = 0; y < picture.Contrast.Rows; ++y) {
    std::int16_t* cells = picture.Contrast.Row(y);
    for (int x = 0; x < picture.Contrast.Columns; ++x) {
      float sum = 0;
      for (int i = 0; i < perCell; ++i) {
        const float* row = contrast.Row(y * perCell + i) + x * perCell;
        for (int j = 0; j < perCell; ++j) {
          sum += row[j];
          all += Square(row[j]);
          if (j > 0) sudden += Square(row[j] - row[j - 1]);
        }
      }
      cells[x] = static_cast<std::int16_t>(std::lround(sum * scale));
    }
  }
  // Values that have nothing to do with their neighbours differ from them by twice their variance.
  constexpr double pairs = (perCell - 1.0) / perCell;
  if (all > 0) picture.NoiseShare = std::min(1.0, sudden / pairs / (2 * all));
  return picture;
}

}  // namespace pelorin::align
