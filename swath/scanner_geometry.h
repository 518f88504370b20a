#pragma once

#include <array>
#include <string_view>

#include "orbit/satellite.h"

/// Where the scanner looks: pixels of a half line to ground distances.
namespace pelorin::swath {

/// Pixels of half an image line, left and right of the track.
inline constexpr int kHalfLinePixels = 454;

/// Positions of a line, −454 … 454.
inline constexpr int kScanPositions = 2 * kHalfLinePixels + 1;

enum class ScannerFamily { Other, Noaa, Resurs, Meteor };

/// From the upper-cased name's beginning: "NOAA 1", "NOAA-1", "RESURS", "METEOR".
ScannerFamily ScannerFamilyOf(std::string_view name);

/// Scan half-angle of a family, degrees.
double FamilyHalfAngle(ScannerFamily family);

/// Index of a position of a line, −454 … 454, in arrays of all of them.
constexpr std::size_t ScanIndex(int position) { return static_cast<std::size_t>(position + kHalfLinePixels); }

/// The signed distances in km of a line's pixels from the track, by ScanIndex.
///
/// A distance is measured along the orbit normal at the satellite's own height: the point seen lies below the
/// point that far from the satellite (PointAlong), not that far along the ground.
using ScanDistances = std::array<double, kScanPositions>;

/// For a satellite `heightKm` above the sphere of 6378.135 km, and for any half-angle in degrees.
ScanDistances ScanDistancesOf(ScannerFamily family, double heightKm);
ScanDistances ScanDistancesFor(double halfAngleDeg, double heightKm);

/// Of the described interface; the program itself calls ScanDistancesOf. Fills the satellite's ScanTable with
/// the distances of pixels 0 … n from the track. n is 454 or more; beyond 454 the angle is the plain share of
/// the half-angle.
void BuildScanTable(orbit::TSatellite& satellite, int n, double heightKm);

/// Signed distance of pixel i, −n … n, in km, from the satellite's ScanTable; see there.
double CrossTrackOffset(const orbit::TSatellite& satellite, int i);

/// Distance for one scan angle (radians, not 0). A ray beyond the horizon gives the horizon's distance.
double ScanAngleToGroundDistance(double angle, double heightKm);

}  // namespace pelorin::swath
