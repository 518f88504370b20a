#pragma once

#include <QPoint>

/// From degrees to map pixels: the whole Earth in plate carrée.
namespace pelorin::map {

/// The map's drawable size in logical pixels, and what stands in its middle: the Greenwich meridian, or 180°
/// when it is Pacific-centred.
struct MapFrame {
  int Width = 0, Height = 0;
  bool PacificCentred = false;

  bool IsEmpty() const { return Width <= 0 || Height <= 0; }
  bool operator==(const MapFrame&) const = default;
};

/// Whether a station's map is centred on 180°: its longitude, however it is given, lies between 150° and 210°
/// east.
bool IsPacificCentred(double stationLongitudeDeg);

/// Column of a longitude, −180 … 180 east positive, and row of a latitude, rounded to the nearest pixel, ties
/// to even. Nothing is clipped: a longitude below −180 lies left of the map.
int MapX(const MapFrame& frame, double longitudeDeg);
int MapY(const MapFrame& frame, double latitudeDeg);

QPoint MapPoint(const MapFrame& frame, double latitudeDeg, double longitudeDeg);

}  // namespace pelorin::map
