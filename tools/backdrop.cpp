#include "tools/backdrop.h"

#include <QPainter>
#include <QPoint>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "tools/relief.h"

namespace pelorin::tools {
namespace {

/// How much of each pixel is covered by records of one kind and not by later ones of the other: 0 … 255.
QImage Coverage(const std::vector<overlay::TPolyObject>& records, std::uint8_t wanted, int width) {
  QImage mask(width, width / 2, QImage::Format_Grayscale8);
  mask.fill(Qt::black);
  QPainter painter(&mask);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const double scale = width / 21600.0;
  for (const overlay::TPolyObject& record : records) {
    if (record.IsOpenLine() || !(record.IsLand() || record.IsWater())) continue;
    std::vector<QPointF> outline;
    for (const overlay::PolyPoint& point : record.Points) {
      outline.emplace_back((point.Longitude + 10800) * scale, (5400 - point.Latitude) * scale);
    }
    painter.setBrush(record.IsWater() == (wanted == overlay::kWaterRecord) ? Qt::white : Qt::black);
    painter.drawPolygon(outline.data(), static_cast<int>(outline.size()));
  }
  return mask;
}

/// One row of heights with a pixel more on either side, at the pixels' centres.
std::vector<float> HeightRow(const ElevationGrid& heights, double latitudeDeg, int width) {
  std::vector<float> row;
  for (int x = -1; x <= width; ++x)
    row.push_back(heights.HeightM(latitudeDeg, (x + 0.5) * 360 / width - 180));
  return row;
}

/// The rows above, at and below the one being drawn.
struct HeightRows {
  std::vector<float> North, Here, South;
};

/// The light on a pixel. Only heights of the same side of the sea level count: the grid's coasts are some
/// minutes off, and a slope from them would follow the true coast as a false shadow.
float ShadeAt(const HeightRows& rows, std::size_t at, float eastM, float northM, bool land) {
  const auto height = [land](float value) { return land ? std::max(value, 0.0F) : std::min(value, 0.0F); };
  constexpr float landExaggeration = 9;
  constexpr float seaExaggeration = 4;
  const float exaggeration = land ? landExaggeration : seaExaggeration;
  return HillShade((height(rows.Here[at + 1]) - height(rows.Here[at - 1])) * exaggeration / (2 * eastM),
                   (height(rows.North[at]) - height(rows.South[at])) * exaggeration / (2 * northM));
}

QRgb Rounded(const Colour& colour) {
  const auto byte = [](float value) { return static_cast<int>(std::clamp(value + 0.5F, 0.0F, 255.0F)); };
  return qRgb(byte(colour.R), byte(colour.G), byte(colour.B));
}

}  // namespace

QImage RenderBackdrop(const std::vector<overlay::TPolyObject>& records, const ElevationGrid& heights,
                      int width) {
  constexpr double kmPerDeg = 111.195;
  const QImage landMask = Coverage(records, overlay::kLandRecord, width);
  const QImage lakeMask = Coverage(records, overlay::kWaterRecord, width);
  QImage picture(width, width / 2, QImage::Format_RGB32);
  const auto latitudeOf = [width](int y) { return 90 - (y + 0.5) * 360 / width; };
  const auto northM = static_cast<float>(kmPerDeg * 1000 * 360 / width);
  HeightRows rows{HeightRow(heights, 90, width), HeightRow(heights, latitudeOf(0), width), {}};
  for (int y = 0; y < picture.height(); ++y) {
    rows.South = HeightRow(heights, latitudeOf(y + 1), width);
    const auto latitude = static_cast<float>(latitudeOf(y));
    // Near the poles a pixel is too narrow for the grid's heights to be believed.
    const float narrowing = std::max(0.2F, std::cos(latitude * std::numbers::pi_v<float> / 180));
    // In Antarctica the grid was put together from coarse squares, and towards the pole it repeats its rows;
    // the steps between them are no mountains.
    const float relief = std::clamp((latitude + 80) / 16, 0.0F, 1.0F);
    const uchar* landRow = landMask.constScanLine(y);
    const uchar* lakeRow = lakeMask.constScanLine(y);
    auto* target = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const auto at = static_cast<std::size_t>(x) + 1;
      const float height = rows.Here[at];
      const auto longitude = static_cast<float>((x + 0.5) * 360 / width - 180);
      const float land = static_cast<float>(landRow[x]) / 255;
      const float lake = std::min(static_cast<float>(lakeRow[x]) / 255, 1 - land);
      const auto light = [&](bool onLand) {
        return 1 + (ShadeAt(rows, at, northM * narrowing, northM, onLand) - 1) * relief;
      };
      Colour colour;
      if (land + lake < 1) colour = Lit(SeaColour(height), light(false));
      if (lake > 0) colour = Mix(colour, LakeColour(), lake / (1 - land));
      if (land > 0) colour = Mix(colour, Lit(LandColour(height, latitude, longitude), light(true)), land);
      target[x] = Rounded(colour);
    }
    rows.North = std::exchange(rows.Here, std::move(rows.South));
  }
  return picture;
}

}  // namespace pelorin::tools
