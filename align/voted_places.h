#pragma once

#include "align/fine_fit.h"
#include "align/sample_mesh.h"

namespace pelorin::align {

/// Where windows of samples have voted for their place: there coasts are seen, and not clouds or noise.
class VotedPlaces {
 public:
  /// `windows` are of the mesh's samples, `rows` by `columns` of them large.
  VotedPlaces(const SampleMesh& mesh, const std::vector<WindowResidual>& windows, int rows, int columns);

  /// The votes of the windows that show a moment and a place across the line; a little where there are none.
  double At(double secondsAfterFirstLine, double scannerColumn) const;

 private:
  SampleMesh mesh_;
  Plane votes_;
};

}  // namespace pelorin::align
