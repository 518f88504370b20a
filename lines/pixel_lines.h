#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "swath/ground_track.h"
#include "swath/pixel_geometry.h"
#include "swath/recording.h"

/// Lines on the ground as lines in a picture.
namespace pelorin::lines {

/// Where the ground lies in a picture, and what of the picture shows it.
struct PictureView {
  /// Should reach some 30 pixels beyond the edges: a line is cut at an edge only where both sides of it have
  /// a pixel, and ends at the last that it has otherwise. Nothing for what is not seen.
  std::function<std::optional<swath::PixelPoint>(const swath::GroundPoint&)> PixelOf;
  /// Nothing where no ground is seen.
  std::function<std::optional<swath::GroundPoint>(swath::PixelPoint)> GroundOf;
  /// The edges, in pixels: a whole picture's are −0.5, −0.5, columns − 0.5 and rows − 0.5.
  double Left = 0, Top = 0, Right = 0, Bottom = 0;
};

/// Of a recording, without what its picture has beside the scanner's columns. `geometry` is the recording's
/// own, and must outlive the view.
PictureView ViewOf(const swath::Recording& recording, const swath::PixelGeometry& geometry);

using PixelLine = std::vector<swath::PixelPoint>;

/// Adds what is seen of a ground line, straight in latitude and longitude from point to point (longitudes may
/// go beyond 180°). The pixel lines lie within the edges and within 0.3 pixels of where the ground line runs.
/// Each goes on without a jump: where the picture does jump, as between lines that a gap parts, it ends.
void AddPixelLines(const PictureView& view, std::span<const swath::GroundPoint> line,
                   std::vector<PixelLine>& lines);

}  // namespace pelorin::lines
