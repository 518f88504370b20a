#include "align/coarse_search.h"

#include <algorithm>
#include <cmath>

#include "align/moves.h"
#include "orbit/scalar_math.h"

namespace pelorin::align {
namespace {

/// The strip is so long at least, since what is far from the peak tells how high chance's peaks are.
constexpr double kLeastStripS = 600;
/// A peak's own neighbourhood.
constexpr double kPeakS = 16;

constexpr int kMostYawCells = 6;
constexpr int kMostUniformCells = 3;
constexpr double kMostRollCells = 12;

CellPlane Mirrored(CellPlane strip) {
  for (int row = 0; row < strip.Rows; ++row) std::reverse(strip.Row(row), strip.Row(row) + strip.Columns);
  return strip;
}

CellPlane Reversed(const CellPlane& strip) {
  CellPlane reversed = strip;
  for (int row = 0; row < strip.Rows; ++row) {
    std::copy_n(strip.Row(strip.Rows - 1 - row), strip.Columns, reversed.Row(row));
  }
  return reversed;
}

/// How many peaks of a height chance brings forth in a number of places, by the tail of a sample of them.
double ChancePeaksOf(double height, std::vector<float> sample, int places) {
  constexpr double quantile = 0.9;
  if (sample.empty()) return places;
  const auto at =
      sample.begin() + static_cast<std::ptrdiff_t>(quantile * static_cast<double>(sample.size() - 1));
  std::nth_element(sample.begin(), at, sample.end());
  const double high{*at};
  double above = 0;
  int count = 0;
  for (const double votes : sample) {
    if (votes > high) {
      above += votes - high;
      ++count;
    }
  }
  if (count == 0 || !(above > 0)) return height > high ? 0 : places;
  // Neighbouring places are one peak.
  constexpr double placesInPeak = 3;
  return std::min<double>(
      places, places / placesInPeak * (1 - quantile) * std::exp(-(height - high) / (above / count)));
}

/// Where between its neighbours a peak is highest, in cells, by the parabola through them.
double Between(const std::vector<float>& votes, int peak) {
  if (peak < 1 || peak + 1 >= static_cast<int>(votes.size())) return 0;
  const auto at = [&](int shift) { return static_cast<double>(votes[static_cast<std::size_t>(shift)]); };
  const double before = at(peak - 1), after = at(peak + 1), bend = before - 2 * at(peak) + after;
  return bend < 0 ? std::clamp(0.5 * (before - after) / bend, -0.5, 0.5) : 0;
}

}  // namespace

bool CoarsePlace::IsSure() const {
  const bool isFarAcross = std::fabs(Across.UniformCells) >= 2;
  const double most = isFarAcross ? 1e-4 : std::pow(10, -2.5);
  return ChancePeaks <= most && HalvesAgree && !IsAtEnd;
}

VoteGrid GridFor(const swath::Recording& recording, const SampleMesh& mesh) {
  constexpr int perCell = SampleMesh::kPerCell;
  const int cells = mesh.Columns() / perCell;
  const auto middleOf = [](int cell) { return (cell + 0.5) * perCell - 0.5; };
  VoteGrid grid;
  std::vector<AcrossMove> uniform;
  for (int move = -kMostUniformCells; move <= kMostUniformCells; ++move) {
    uniform.push_back(
        {static_cast<double>(move), 0, std::vector<double>(static_cast<std::size_t>(cells), move)});
  }
  grid.Across.push_back(uniform);
  const bool turns = TurnsWithAttitude(recording);
  for (int yaw = turns ? -kMostYawCells : 0; yaw <= (turns ? kMostYawCells : 0); ++yaw) {
    grid.YawCells.push_back(yaw);
  }
  if (!turns) return grid;
  const swath::LineShape& line = recording.SeenBy.Line;
  for (const double sign : {-1.0, 1.0}) {
    std::vector<AcrossMove> rolls;
    for (const double rollDeg : {0.35, 0.7, 1.05}) {
      AcrossMove move{0, sign * rollDeg, {}};
      double farthest = 0;
      for (int cell = 0; cell < cells; ++cell) {
        const double x = middleOf(cell);
        const double angle = swath::ColumnAngle(line, mesh.ScannerColumn(x)) + orbit::Radians(move.RollDeg);
        move.CellsOfColumn.push_back((mesh.X(swath::ColumnAtAngle(line, angle)) - x) / perCell);
        farthest = std::max(farthest, std::fabs(move.CellsOfColumn.back()));
      }
      // From very high up a degree is half of the line: no such roll is looked for.
      if (farthest <= kMostRollCells) rolls.push_back(move);
    }
    if (!rolls.empty()) grid.Across.push_back(rolls);
  }
  return grid;
}

std::optional<CoarsePlace> SearchAlong(const SampleMesh& mesh, std::span<const PictureCells> pictures,
                                       const swath::SurfaceOfLine& surfacesOf, double rangeS,
                                       const AfterStep& afterStep) {
  // A peak at the end may be the slope of one beyond: the end lies as much farther out.
  constexpr int near = 2;
  const int allowed = static_cast<int>(std::ceil(rangeS / kCellS)) + near;
  const int reach = std::max(static_cast<int>(std::ceil(kLeastStripS / kCellS)), allowed);
  const int rows = pictures.front().Contrast.Rows;
  const CellPlane strip = CoastStrip(mesh, surfacesOf, -reach * SampleMesh::kPerCell, rows + 2 * reach);
  if (!afterStep(0.25)) return std::nullopt;
  const VoteGrid grid = GridFor(mesh.Evenly(0, 1), mesh);
  const auto votesIn = [&](const CellPlane& ground, double from) {
    return VotesInStrip(pictures, ground, grid, reach - allowed, reach + allowed,
                        [&](double share) { return afterStep(from + share / 4); });
  };
  const auto votes = votesIn(strip, 0.25);
  if (!votes) return std::nullopt;
  const VotePeak& peak = votes->Peak;
  std::vector<float> chance;
  for (int shift = 0; shift < static_cast<int>(votes->Best.size()); ++shift) {
    if (std::abs(shift - peak.Shift) * kCellS > kPeakS) {
      chance.push_back(votes->Best[static_cast<std::size_t>(shift)]);
    }
  }
  // The ground as it is nowhere: what is found there is chance.
  for (const auto& decoy : {votesIn(Mirrored(strip), 0.5), votesIn(Reversed(strip), 0.75)}) {
    if (!decoy) return std::nullopt;
    chance.insert(chance.end(), decoy->Best.begin(), decoy->Best.end());
  }
  CoarsePlace place;
  place.TimeS = (peak.Shift - reach + Between(votes->Best, peak.Shift)) * kCellS;
  place.YawCells = peak.YawCells;
  place.Across = peak.Across;
  place.ChancePeaks = ChancePeaksOf(peak.Votes, std::move(chance), 2 * allowed + 1);
  place.HalvesAgree = std::abs(votes->HalfShifts[0] - peak.Shift) <= near &&
                      std::abs(votes->HalfShifts[1] - peak.Shift) <= near;
  place.IsAtEnd = std::abs(peak.Shift - reach) > allowed - near;
  place.CoastWindows = votes->CoastWindows;
  return place;
}

}  // namespace pelorin::align
