#pragma once

#include <QString>
#include <vector>

#include "lines/fine_lines.h"
#include "lines/pixel_lines.h"

/// The map of a picture as lines in its pixels: for the window, for saved pictures, for finding the picture's
/// place by its coasts.
namespace pelorin::lines {

/// A place that is marked by its name, such as the station.
struct NamedPlace {
  QString Name;
  swath::GroundPoint Ground;
};

struct MapLinesRequest {
  bool Coasts = true, Lakes = true, Borders = true;
  int GridStepDeg = 0;  ///< 1, 2, 5 or 10; 0 for no grid
  std::vector<NamedPlace> Places;
};

enum class PictureEdge { Left, Top, Right, Bottom };

/// Where a line of the grid meets the picture's edge.
struct GridLabel {
  QString Text;  ///< "50°N", "10°W", "0°", "180°"
  swath::PixelPoint At;
  PictureEdge Edge;
};

struct MarkedPlace {
  QString Name;
  swath::PixelPoint At;
};

/// All within the picture's edges.
struct MapLines {
  std::vector<PixelLine> Coasts, Lakes, Borders, Grid;
  std::vector<GridLabel>
      Labels;  ///< of all grid lines and edges; who draws them leaves out what is too close
  std::vector<MarkedPlace> Places;  ///< those that are seen
};

/// The tiles that a picture may show something of; some of their neighbours may be among them.
LineTiles TilesSeen(const PictureView& view);

/// Without a file (null) there are grid and places alone. A tile that is damaged raises FileError.
MapLines MapLinesOf(const PictureView& view, const FineLines* file, const MapLinesRequest& request);
/// Of a recording that has its size, scanner and elements.
MapLines MapLinesOf(const swath::Recording& recording, const FineLines* file, const MapLinesRequest& request);

}  // namespace pelorin::lines
