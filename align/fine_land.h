#pragma once

#include <functional>

#include "align/plane.h"
#include "align/sample_mesh.h"
#include "lines/fine_lines.h"
#include "swath/pixel_geometry.h"
#include "swath/recording.h"
#include "swath/surface.h"

namespace pelorin::align {

/// Where a picture is compared with the ground sample by sample: a recording in the order of reception, and
/// the samples' places in it. A whole number is a sample's middle.
struct Frame {
  /// Of a picture's own pixels.
  static Frame OfPixels(const swath::Recording& recording);
  /// Of the mesh's samples.
  static Frame OfSamples(const SampleMesh& mesh);

  swath::Recording Recording;  ///< stored as received
  int Columns = 0, Rows = 0;
  std::function<double(double x)> PixelColumn;
  std::function<double(double pixelColumn)> X;
  double ScannerColumn(double x) const {
    return PixelColumn(x) - Recording.FirstColumn - Recording.ShiftColumns;
  }
};

/// The share of land in each sample, 0 … 1, and in so many beyond the frame's edges: sample (0, 0) is at
/// (`margin`, `margin`). The shores of seas and lakes are those of `shores`; which side of them is land is
/// what most of `surfaceOf` says, which alone counts where the shores make no sense.
Plane LandIn(const Frame& frame, int margin, const lines::FineLines& shores,
             const swath::SurfaceOfLine& surfaceOf);

}  // namespace pelorin::align
