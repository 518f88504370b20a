#include "lines/map_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "lines/grid_lines.h"
#include "lines/pixel_mesh.h"
#include "orbit/scalar_math.h"

namespace pelorin::lines {
namespace {

using swath::GroundPoint;
using swath::PixelPoint;

/// Degrees of arc on the sphere (haversine).
double ArcDeg(const GroundPoint& a, const GroundPoint& b) {
  const auto half = [](double from, double to) { return std::sin(orbit::Radians(to - from) / 2); };
  const double along = half(a.LatitudeDeg, b.LatitudeDeg), across = half(a.LongitudeDeg, b.LongitudeDeg);
  const double square = along * along + across * across * std::cos(orbit::Radians(a.LatitudeDeg)) *
                                            std::cos(orbit::Radians(b.LatitudeDeg));
  return orbit::Degrees(2 * std::asin(std::min(1.0, std::sqrt(square))));
}

/// Ground points of a mesh of pixels over the whole picture, its edges included.
class GroundMesh {
 public:
  explicit GroundMesh(const PictureView& view) {
    const double width = view.Right - view.Left, height = view.Bottom - view.Top;
    const double mesh = std::max(width / 32, 1.0);
    columns_ = static_cast<int>(std::ceil(width / mesh)) + 1;
    rows_ = static_cast<int>(std::ceil(height / mesh)) + 1;
    for (int row = 0; row < rows_; ++row) {
      for (int column = 0; column < columns_; ++column) {
        points_.push_back(view.GroundOf(
            {view.Left + width * column / (columns_ - 1), view.Top + height * row / (rows_ - 1)}));
      }
    }
  }

  int Columns() const { return columns_; }
  int Rows() const { return rows_; }
  /// Nothing where no ground is seen.
  const std::optional<GroundPoint>& At(int column, int row) const {
    return points_[static_cast<std::size_t>(row * columns_ + column)];
  }

 private:
  int columns_ = 0, rows_ = 0;
  std::vector<std::optional<GroundPoint>> points_;
};

/// How far round a point of the mesh its part of the picture reaches: half a mesh is at most half as far as
/// the farthest neighbour; some more for meshes that are no parallelograms. Neighbours that are not seen may
/// hide some that would be.
double ReachDeg(const GroundMesh& mesh, int column, int row, const GroundPoint& point) {
  constexpr double usual = 0.7, besideUnseen = 1.5;
  constexpr double most = 10, alone = 2;
  double farthest = 0;
  bool allSeen = true;
  for (int y = std::max(row - 1, 0); y <= std::min(row + 1, mesh.Rows() - 1); ++y) {
    for (int x = std::max(column - 1, 0); x <= std::min(column + 1, mesh.Columns() - 1); ++x) {
      const auto& neighbour = mesh.At(x, y);
      allSeen = allSeen && neighbour;
      if (neighbour) farthest = std::max(farthest, ArcDeg(point, *neighbour));
    }
  }
  if (farthest == 0) return alone;
  return std::min(most, farthest * (allSeen ? usual : besideUnseen));
}

PictureEdge NearestEdge(const PictureView& view, const PixelPoint& pixel) {
  const std::pair<double, PictureEdge> distances[] = {{pixel.Column - view.Left, PictureEdge::Left},
                                                      {pixel.Row - view.Top, PictureEdge::Top},
                                                      {view.Right - pixel.Column, PictureEdge::Right},
                                                      {view.Bottom - pixel.Row, PictureEdge::Bottom}};
  return std::min_element(std::begin(distances), std::end(distances),
                          [](const auto& a, const auto& b) { return a.first < b.first; })
      ->second;
}

bool IsOnEdge(const PictureView& view, const PixelPoint& pixel) {
  return pixel.Column == view.Left || pixel.Column == view.Right || pixel.Row == view.Top ||
         pixel.Row == view.Bottom;
}

void AddGrid(const PictureView& view, const LineTiles& tiles, int stepDeg, MapLines& map) {
  for (const GridLine& line : GridLinesIn(tiles, stepDeg)) {
    const std::size_t first = map.Grid.size();
    AddPixelLines(view, std::array{line.From, line.To}, map.Grid);
    for (std::size_t i = first; i < map.Grid.size(); ++i) {
      for (const PixelPoint& end : {map.Grid[i].front(), map.Grid[i].back()}) {
        if (IsOnEdge(view, end)) map.Labels.push_back({line.Text, end, NearestEdge(view, end)});
      }
    }
  }
}

void AddFileLines(const PictureView& view, const LineTiles& tiles, const FineLines& file,
                  const MapLinesRequest& request, MapLines& map) {
  PixelMesh mesh(view);
  PictureView meshed = view;
  meshed.PixelOf = [&mesh](const GroundPoint& ground) { return mesh.PixelOf(ground); };
  for (const FineLine& line : file.Lines(tiles)) {
    switch (line.Kind) {
      case LineKind::Coast:
        if (request.Coasts) AddPixelLines(meshed, line.Points, map.Coasts);
        break;
      case LineKind::Lake:
        if (request.Lakes) AddPixelLines(meshed, line.Points, map.Lakes);
        break;
      case LineKind::Border:
        if (request.Borders) AddPixelLines(meshed, line.Points, map.Borders);
        break;
    }
  }
}

void AddPlaces(const PictureView& view, const std::vector<NamedPlace>& places, MapLines& map) {
  for (const NamedPlace& place : places) {
    const auto pixel = view.PixelOf(place.Ground);
    if (pixel && pixel->Column >= view.Left && pixel->Column <= view.Right && pixel->Row >= view.Top &&
        pixel->Row <= view.Bottom) {
      map.Places.push_back({place.Name, *pixel});
    }
  }
}

}  // namespace

LineTiles TilesSeen(const PictureView& view) {
  const GroundMesh mesh(view);
  LineTiles tiles;
  for (int row = 0; row < mesh.Rows(); ++row) {
    for (int column = 0; column < mesh.Columns(); ++column) {
      const auto& point = mesh.At(column, row);
      if (point) tiles.AddCircle(*point, ReachDeg(mesh, column, row, *point));
    }
  }
  return tiles;
}

MapLines MapLinesOf(const PictureView& view, const FineLines* file, const MapLinesRequest& request) {
  MapLines map;
  const LineTiles tiles = TilesSeen(view);
  const bool wantsFile = request.Coasts || request.Lakes || request.Borders;
  if (file != nullptr && wantsFile) AddFileLines(view, tiles, *file, request, map);
  if (request.GridStepDeg > 0) AddGrid(view, tiles, request.GridStepDeg, map);
  AddPlaces(view, request.Places, map);
  return map;
}

MapLines MapLinesOf(const swath::Recording& recording, const FineLines* file,
                    const MapLinesRequest& request) {
  const swath::PixelGeometry geometry(recording);
  return MapLinesOf(ViewOf(recording, geometry), file, request);
}

}  // namespace pelorin::lines
