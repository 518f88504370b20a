#include "align/voted_places.h"

#include <algorithm>
#include <cmath>

namespace pelorin::align {
namespace {

/// Of a place that no window has voted at: such places go last, and among themselves by their coasts.
constexpr float kNoVotes = 0.02F;

int Inside(double at, int count) { return std::clamp(static_cast<int>(std::floor(at)), 0, count - 1); }

}  // namespace

VotedPlaces::VotedPlaces(const SampleMesh& mesh, const std::vector<WindowResidual>& windows, int rows,
                         int columns)
    : mesh_(mesh), votes_(mesh.Columns(), mesh.Rows(), kNoVotes) {
  for (const WindowResidual& window : windows) {
    const int top = static_cast<int>(window.Middle.Row) - rows / 2;
    const int left = static_cast<int>(window.Middle.Column) - columns / 2;
    for (int row = std::max(top, 0); row < std::min(top + rows, votes_.Rows); ++row) {
      for (int column = std::max(left, 0); column < std::min(left + columns, votes_.Columns); ++column) {
        votes_.Row(row)[column] += static_cast<float>(window.Votes);
      }
    }
  }
}

double VotedPlaces::At(double secondsAfterFirstLine, double scannerColumn) const {
  if (votes_.Values.empty() || !std::isfinite(secondsAfterFirstLine)) return double{kNoVotes};
  const int row = Inside(secondsAfterFirstLine / SampleMesh::kRowS, votes_.Rows);
  return double{votes_.Row(row)[Inside(mesh_.X(scannerColumn), votes_.Columns)]};
}

}  // namespace pelorin::align
