#pragma once

#include <QRgb>
#include <vector>

#include "map/drawing_list.h"
#include "map/map_projection.h"
#include "map/sky.h"

/// The satellite layer of the map.
namespace pelorin::map {

inline constexpr QRgb kSelectedColour = 0xFF0000FF;
inline constexpr QRgb kOtherColour = 0xFF000000;
inline constexpr QRgb kOtherFootprintColour = 0xFF808080;
inline constexpr QRgb kTerminatorColour = 0xFFD0B000;

/// Whose footprints are drawn, as the settings hold it.
enum FootprintLevel { kFootprintNone = 0, kFootprintSelected = 1, kFootprintAll = 2 };

/// Minutes of trail behind a satellite: fewer where footprints fill the map.
constexpr int TrailMinutes(int footprintLevel) { return footprintLevel == kFootprintAll ? 2 : 5; }

/// One satellite. What it holds is drawn in the order of the fields.
struct SatelliteDrawing {
  const orbit::TSatellite* Satellite = nullptr;
  QRgb Colour = kOtherColour;  ///< of all but the footprint
  std::vector<QPoint> Trail;   ///< each a pixel with its four neighbours
  QPoint Mark;                 ///< middle of an outline of 5 × 5 pixels
  PlacedText Label;
  QRgb FootprintColour = kOtherFootprintColour;
  std::vector<Stroke> Footprint;
  std::vector<Stroke> ScanLine;  ///< dotted, from the point below the satellite to each side
};

struct SatellitePlot {
  std::vector<SatelliteDrawing> Satellites;
  QPoint Sun;                      ///< middle of the icon; it and the terminator are drawn last
  std::vector<Stroke> Terminator;  ///< dashed
};

/// `selected` may be null. A frame without a size gives an empty plot, which has no terminator either.
SatellitePlot PlotSatellites(const Sky& sky, const MapFrame& frame, const orbit::TSatellite* selected,
                             int footprintLevel, const MeasureText& measure);

/// The satellite whose mark is nearest to a click, of equally near ones the first; null when none is within a
/// tenth of the map's diagonal.
const orbit::TSatellite* SatelliteAt(const SatellitePlot& plot, const MapFrame& frame, QPoint click);

}  // namespace pelorin::map
