#include "align/sample_mesh.h"

#include <algorithm>
#include <cmath>

#include "orbit/julian_date.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "swath/ground_track.h"

namespace pelorin::align {
namespace {

constexpr int kMostRows = 3600;

/// Along the ground of a sphere, km, at an angle (radians) from straight down; signed like the angle. Past
/// the Earth it means nothing.
double GroundKm(double angle, double heightKm) {
  const double sine = std::sin(std::fabs(angle)) * (orbit::XKMPER + heightKm) / orbit::XKMPER;
  const double arc = std::asin(std::min(sine, 1.0)) - std::fabs(angle);
  return std::copysign(arc * orbit::XKMPER, angle);
}

}  // namespace

SampleMesh::SampleMesh(const swath::Recording& recording) : recording_(recording), edges_(1) {
  const double middleS = recording.LengthS() / 2;
  const auto track = swath::TrackAt(
      *recording.Elements,
      orbit::JulianDateOfMoment({recording.FirstLine().Days + middleS / orbit::kSecondsPerDay}));
  const double heightKm = track.Below.Altitude;
  const swath::LineShape& shape = recording.SeenBy.Line;
  if (!(heightKm > 0) || shape.Columns < 2) return;
  const auto kmAt = [&](double column) { return GroundKm(swath::ColumnAngle(shape, column), heightKm); };
  const double beginKm = kmAt(-0.5), endKm = kmAt(shape.Columns - 0.5);
  const int cells = static_cast<int>((endKm - beginKm) / (kColumnKm * kPerCell));
  const int samples = cells * kPerCell;
  if (samples < 1) return;
  edges_.clear();
  int column = 0;
  for (int i = 0; i <= samples; ++i) {
    const double km = beginKm + (endKm - beginKm) * i / samples;
    while (column < shape.Columns - 1 && kmAt(column + 0.5) < km) ++column;
    const double from = kmAt(column - 0.5), to = kmAt(column + 0.5);
    edges_.push_back(column - 0.5 + std::clamp((km - from) / (to - from), 0.0, 1.0));
  }
  const double rows = recording.LengthS() / kRowS + 1;
  rows_ = static_cast<int>(std::min<double>(rows, kMostRows));
}

double SampleMesh::ScannerColumn(double x) const {
  const double edge = x + 0.5;
  const auto left = static_cast<std::size_t>(std::clamp(std::floor(edge), 0.0, Columns() - 1.0));
  return edges_[left] + (edge - static_cast<double>(left)) * (edges_[left + 1] - edges_[left]);
}

double SampleMesh::X(double scannerColumn) const {
  const auto above = std::upper_bound(edges_.begin() + 1, edges_.end() - 1, scannerColumn);
  const double from = *(above - 1);
  return static_cast<double>(above - 1 - edges_.begin()) + (scannerColumn - from) / (*above - from) - 0.5;
}

swath::Recording SampleMesh::Evenly(int firstRow, int rows) const {
  swath::Recording even = recording_;
  even.Start.Days += firstRow * kRowS / orbit::kSecondsPerDay;
  even.LineTimesS = nullptr;
  even.DriftPpm = 0;
  even.SeenBy.RowsPerSecond = 1 / kRowS;
  even.Rows = rows;
  even.Columns = recording_.SeenBy.Line.Columns;
  even.FirstColumn = 0;
  even.ShiftColumns = 0;
  even.Lies = {};
  return even;
}

SampleMesh::Samples SampleMesh::Resampled(const GreyPlane& received) const {
  const int columns = Columns();
  // What of which columns goes into a sample.
  struct Part {
    int Column, To;
    float Weight;
  };
  std::vector<Part> parts;
  const double begin = recording_.FirstColumn + recording_.ShiftColumns;
  for (int x = 0; x < columns; ++x) {
    const double from = begin + edges_[static_cast<std::size_t>(x)] + 0.5,
                 to = begin + edges_[static_cast<std::size_t>(x) + 1] + 0.5;
    for (int column = static_cast<int>(std::floor(from)); column < to; ++column) {
      const double share = std::min(to, column + 1.0) - std::max(from, 1.0 * column);
      if (column >= 0 && column < received.Columns && share > 1e-6) {
        parts.push_back({column, x, static_cast<float>(share)});
      }
    }
  }
  Plane sums(columns, rows_), weights(columns, rows_);
  for (int line = 0; line < received.Rows; ++line) {
    const double row = recording_.SecondsOfLine(line) / kRowS;
    if (!(row > -0.5 && row < rows_ - 0.5)) continue;
    const int to = static_cast<int>(std::lround(row));
    const std::uint8_t* values = received.Row(line);
    float *sum = sums.Row(to), *weight = weights.Row(to);
    for (const Part& part : parts) {
      sum[part.To] += part.Weight * values[part.Column];
      weight[part.To] += part.Weight;
    }
  }
  Samples samples{std::move(sums), GreyPlane(columns, rows_)};
  for (std::size_t i = 0; i < weights.Values.size(); ++i) {
    // A sample at the edge of the picture may have a sliver of it alone.
    constexpr float least = 0.25F;
    samples.Seen.Values[i] = weights.Values[i] > least;
    samples.Grey.Values[i] = samples.Seen.Values[i] ? samples.Grey.Values[i] / weights.Values[i] : 0;
  }
  return samples;
}

}  // namespace pelorin::align
