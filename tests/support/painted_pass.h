#pragma once

#include <QImage>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "orbit/julian_date.h"
#include "overlay/countries.h"
#include "overlay/overlay_master.h"
#include "overlay/palette.h"
#include "swath/ground_line.h"
#include "swath/recording.h"
#include "swath/surface.h"

/// Pictures of passes over the ground of the overlay master, whose shores are drawn from other data than
/// the fine ones.
namespace pelorin::tests {

/// The master in memory.
class PaintedEarth {
 public:
  PaintedEarth()
      : master_(
            overlay::DrawMaster(overlay::LoadPolygons(QStringLiteral(PELORIN_BUILT_DATA "/Countries.dat")),
                                [](const QString&) {})) {}

  swath::Surface At(int southMin, int eastMin) const {
    const int row = overlay::MasterPixels(southMin);
    const int column = overlay::MasterPixels(swath::MinutesFromDateLine(eastMin));
    // A line of the grid is like what lies beside it.
    for (const int beside : {0, 1, 2}) {
      switch (Index(row + beside, column + beside)) {
        case overlay::kLand:
          return swath::Surface::Land;
        case overlay::kBackground:
          return swath::Surface::Water;
        case overlay::kBoundary:
          return swath::Surface::Unsure;
        default:
          break;
      }
    }
    return swath::Surface::Unsure;
  }

  swath::SurfaceOfLine Surfaces() const {
    return [this](const swath::GroundLine& line, std::span<swath::Surface> surfaces) {
      for (std::size_t i = 0; i < surfaces.size(); ++i) surfaces[i] = At(line.SouthMin[i], line.EastMin[i]);
    };
  }

 private:
  std::uint8_t Index(int row, int column) const {
    return master_.Row(std::min(row, overlay::kMasterHeight - 1))[column % overlay::kMasterWidth];
  }

  picture::IndexedImage master_;
};

struct Weather {
  double CloudCover = 0;  ///< share of the picture, about
  double Noise = 0;       ///< grey levels, standard deviation
  bool IsInfrared = false;
  unsigned Seed = 1;
};

/// Clouds of several sizes, each value the share of how dense they are.
class Clouds {
 public:
  explicit Clouds(unsigned seed) : random_(seed) {
    for (double& knot : knots_) knot = std::uniform_real_distribution(0.0, 1.0)(random_);
  }
  double At(double x, double y) const {
    double sum = 0, weight = 0.5;
    for (double size = 170; size > 12; size /= 2.3, weight *= 0.62)
      sum += weight * Smooth(x / size, y / size);
    return sum / 1.2;
  }

 private:
  static constexpr int kSide = 64;
  double Knot(int x, int y) const {
    return knots_[static_cast<std::size_t>((y & (kSide - 1)) * kSide + (x & (kSide - 1)))];
  }
  double Smooth(double x, double y) const {
    const int left = static_cast<int>(std::floor(x)), top = static_cast<int>(std::floor(y));
    const double u = x - left, v = y - top, s = u * u * (3 - 2 * u), t = v * v * (3 - 2 * v);
    return (Knot(left, top) * (1 - s) + Knot(left + 1, top) * s) * (1 - t) +
           (Knot(left, top + 1) * (1 - s) + Knot(left + 1, top + 1) * s) * t;
  }

  std::mt19937 random_;
  std::vector<double> knots_ = std::vector<double>(kSide * kSide);
};

/// What a recording's scanner would have seen, as it is stored.
inline QImage PaintedPass(const swath::Recording& recording, const PaintedEarth& earth,
                          const Weather& weather) {
  QImage picture(recording.Columns, recording.Rows, QImage::Format_Grayscale8);
  picture.fill(0);
  std::mt19937 random(weather.Seed);
  std::normal_distribution<double> noise(0, 1);
  const Clouds clouds(weather.Seed);
  // Clouds are of one size in all pictures: in half seconds of flight.
  const double scale = 2 / recording.SeenBy.RowsPerSecond;
  swath::GroundLineFinder finder(recording);
  swath::GroundLine ground;
  for (int line = 0; line < recording.Rows; ++line) {
    const double seconds = recording.SecondsOfLine(line);
    if (std::isnan(seconds)) continue;
    finder.Find(orbit::JulianDateOfMoment({recording.FirstLine().Days + seconds / orbit::kSecondsPerDay}),
                ground);
    uchar* row = picture.scanLine(recording.RowOfLine(line));
    for (std::size_t i = 0; i < ground.SouthMin.size(); ++i) {
      const int column = static_cast<int>(i) + recording.FirstColumn;
      if (column < 0 || column >= recording.Columns) continue;
      const swath::Surface surface = earth.At(ground.SouthMin[i], ground.EastMin[i]);
      double grey = surface == swath::Surface::Land ? 110 : surface == swath::Surface::Water ? 60 : 85;
      const double cover = clouds.At(column * scale, line * scale) - (1 - weather.CloudCover);
      if (cover > 0) grey += (230 - grey) * std::min(1.0, 5 * cover);
      if (weather.IsInfrared) grey = 255 - grey;
      grey += weather.Noise * noise(random);
      row[recording.RunsLeft() ? recording.Columns - 1 - column : column] =
          static_cast<uchar>(std::min(255.0, std::max(0.0, grey)));
    }
  }
  return picture;
}

}  // namespace pelorin::tests
