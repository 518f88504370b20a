#pragma once

#include <string_view>

#include "orbit/satellite.h"

/// Where the scanner looks: pixels of a half line to ground distances.
namespace pelorin::swath {

/// Pixels of half an image line, left and right of the track.
inline constexpr int kHalfLinePixels = 454;

enum class ScannerFamily { Other, Noaa, Resurs, Meteor };

/// From the upper-cased name's beginning: "NOAA 1", "NOAA-1", "RESURS", "METEOR".
ScannerFamily ScannerFamilyOf(std::string_view name);

/// Scan half-angle of a family, degrees.
double FamilyHalfAngle(ScannerFamily family);

/// Fills the satellite's ScanTable with n + 1 distances in km for a satellite `heightKm` above the sphere of
/// 6378.135 km: entry i belongs to the i-th pixel from the track. n is 454 or more.
///
/// A distance is measured along the orbit normal at the satellite's own height: the point seen lies below the
/// point that far from the satellite (PointAlong), not that far along the ground.
void BuildScanTable(orbit::TSatellite& satellite, int n, double heightKm);

/// Signed distance of pixel i, −n … n, in km.
double CrossTrackOffset(const orbit::TSatellite& satellite, int i);

/// Distance for one scan angle (radians, not 0). A ray beyond the horizon gives the horizon's distance.
double ScanAngleToGroundDistance(double angle, double heightKm);

}  // namespace pelorin::swath
