#pragma once

#include "align/sample_mesh.h"
#include "swath/surface.h"

/// The coarse view of picture and ground: cells of four by four samples, 2 s by 13 km.
namespace pelorin::align {

inline constexpr double kCellS = SampleMesh::kPerCell * SampleMesh::kRowS;

/// Land in a cell, 0 … kAllLand.
using CellPlane = Raster<std::int16_t>;
inline constexpr int kAllLand = 16;

/// What the satellite would have seen from row `firstRow` of the mesh on, for so many cells.
CellPlane CoastStrip(const SampleMesh& mesh, const swath::SurfaceOfLine& surfaceOf, int firstRow,
                     int cellRows);

/// A picture as cells: its local contrast, ±kMostContrast.
struct PictureCells {
  CellPlane Contrast;
  /// How much of a picture's local contrast is noise from sample to sample, 0 … 1.
  double NoiseShare = 0;
};
inline constexpr int kMostContrast = 120;
PictureCells CellsOf(const SampleMesh::Samples& samples);

}  // namespace pelorin::align
