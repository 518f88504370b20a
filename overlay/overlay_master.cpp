#include "overlay/overlay_master.h"

#include <QFile>
#include <QFileInfo>
#include <cstdlib>

#include "overlay/indexed_raster.h"
#include "overlay/palette.h"
#include "swath/ground_line.h"

namespace pelorin::overlay {

using swath::kMinutesOfTurn;

namespace {

void DrawGrid(IndexedRaster& raster, const MasterStatus& status) {
  status(QStringLiteral("Overlay master image, generating longitude lines..."));
  for (int k = -18; k <= 18; ++k) {
    const int x = MasterColumn(k * 600);
    raster.Line({x, MasterRow(-5400)}, {x, MasterRow(5400)}, kGrid);
  }
  status(QStringLiteral("Overlay master image, generating latitude lines..."));
  for (int k = -9; k <= 9; ++k) {
    const int y = MasterRow(k * 600);
    raster.Line({MasterColumn(-10800), y}, {MasterColumn(10800), y}, kGrid);
  }
}

/// A polygon's pixels, those left out that are no 2 pixels from the last one kept.
void ThinnedPixels(const TPolyObject& polygon, std::vector<PixelPoint>& kept) {
  kept.clear();
  PixelPoint last{-1, -1};
  for (const PolyPoint point : polygon.Points) {
    const PixelPoint pixel{MasterColumn(point.Longitude), MasterRow(point.Latitude)};
    if (!kept.empty() && std::abs(pixel.X - last.X) < 2 && std::abs(pixel.Y - last.Y) < 2) continue;
    kept.push_back(pixel);
    last = pixel;
  }
}

}  // namespace

QString LowMemoryQuestion(int foundMb) {
  return QStringLiteral(
             "Less than %1 MB physical memory available (%2 MB found).  Generating the master overlay bitmap "
             "on this "
             "PC may take many minutes, so instead you can download the "
             "zipped overlay bitmap from the Web site (404KB).  Click "
             " Help for more information on downloading.\r\r"
             "OK to continue to generate the master overlay, or cancel?")
      .arg(kMasterMemoryMb)
      .arg(foundMb);
}

int MasterColumn(int longitudeMin) {
  if (longitudeMin > kMinutesOfTurn / 2) longitudeMin -= kMinutesOfTurn;
  // Far west of the map the division must round down, too, so it is counted from some turns before.
  constexpr int turns = 2;
  return MasterPixels(longitudeMin + kMinutesOfTurn / 2 + turns * kMinutesOfTurn) - turns * kMasterWidth;
}

int MasterRow(int latitudeMin) { return MasterPixels(kMinutesOfTurn / 4 - latitudeMin); }

picture::IndexedImage DrawMaster(const std::vector<TPolyObject>& polygons, const MasterStatus& status) {
  status(QStringLiteral("Creating overlay master image, please wait..."));
  picture::IndexedImage master{kMasterWidth, kMasterHeight, {}};
  std::vector<PixelPoint> pixels;
  pixels.reserve(kMostPolyPoints);
  status(QStringLiteral("Overlay master image, allocating memory..."));
  master.Pixels.assign(std::size_t{kMasterWidth} * kMasterHeight, kBackground);
  IndexedRaster raster(master);
  DrawGrid(raster, status);
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    const TPolyObject& polygon = polygons[i];
    ThinnedPixels(polygon, pixels);
    if (polygon.IsOpenLine() && (polygon.IsLand() || polygon.IsWater())) {
      raster.Polyline(pixels, kBoundary);
    } else if (polygon.IsLand() || polygon.IsWater()) {
      raster.Polygon(pixels, kBoundary, polygon.IsLand() ? kLand : kBackground);
    }
    const std::size_t percent = i * 100 / polygons.size();
    const bool reached = i == 0 || (i - 1) * 100 / polygons.size() != percent;
    if (reached && percent % 5 == 0) {
      status(QStringLiteral("Overlay master image, generating country bondaries %1%").arg(percent));
    }
  }
  return master;
}

bool GenerateMaster(const QString& countriesPath, const QString& masterPath, const MasterStatus& status,
                    const ConfirmLowMemory& confirm, std::optional<int> availableMb) {
  if (availableMb && *availableMb < kMasterMemoryMb && !confirm(LowMemoryQuestion(*availableMb)))
    return false;
  const std::vector<TPolyObject> polygons = LoadPolygons(countriesPath);
  if (polygons.empty()) return false;
  const picture::IndexedImage master = DrawMaster(polygons, status);
  status(QStringLiteral("Overlay master image, saving image, please wait..."));
  picture::SaveIndexedBitmap(master, OverlayPalette(), masterPath, CountriesTag(countriesPath));
  QFile::setPermissions(masterPath,
                        QFile::permissions(masterPath) &
                            ~(QFile::WriteOwner | QFile::WriteUser | QFile::WriteGroup | QFile::WriteOther));
  return true;
}

bool MasterIsValid(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) && file.size() == kMasterFileSize;
}

}  // namespace pelorin::overlay
