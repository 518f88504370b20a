#pragma once

#include <string>
#include <vector>

#include "tools/rings.h"

/// Shorelines and borders of the GSHHG collection in its binned netCDF form (P. Wessel and W. H. F. Smith,
/// "A global, self-consistent, hierarchical, high-resolution shoreline database", J. Geophys. Res. 101,
/// 1996).
namespace pelorin::tools {

/// What a ring encloses, as the collection numbers it.
enum class Level { Land = 1, Lake = 2, IslandInLake = 3, PondOnIsland = 4 };

struct Shoreline {
  Level Kind = Level::Land;
  double AreaKm2 = 0;
  Ring Coast;
};

/// All shorelines, lands first, then lakes, islands in them, ponds on those: in this order each may be
/// painted over the one before. Antarctica is bounded by the front of its ice, where a scanner sees the
/// land end, not by the rock below it. Throws std::runtime_error when the file is missing or garbled.
std::vector<Shoreline> ReadShorelines(const std::string& path);

/// National borders as open lines, cut at the source's bin edges; longitude −10800 … 10800 minutes.
/// Throws std::runtime_error when the file is missing or garbled.
std::vector<Points> ReadNationalBorders(const std::string& path);

}  // namespace pelorin::tools
