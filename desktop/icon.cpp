#include "desktop/icon.h"

#include <QPainter>
#include <QRadialGradient>

namespace pelorin::desktop {
namespace {

// The drawing's own unit: the icon is 64 wide and high, with its centre in the origin.
constexpr double kSide = 64;
constexpr double kSunRadius = 23;
constexpr double kRayTip = 31;
constexpr int kRays = 12;
constexpr double kTiltDeg = -38;
/// From this size in pixels on, a solar panel's cells can be told apart; below it, the satellite is drawn
/// larger.
constexpr double kSideOfCells = 40;
constexpr double kSmallIconScale = 1.15;

constexpr QRgb kSunCentre = qRgb(255, 249, 196), kSunBody = qRgb(255, 213, 64), kSunEdge = qRgb(247, 148, 29);
constexpr QRgb kSatellite = qRgb(27, 42, 82), kCells = qRgb(112, 160, 226);

void DrawSun(QPainter& painter) {
  painter.setBrush(QColor(kSunEdge));
  for (int ray = 0; ray < kRays; ++ray) {
    painter.save();
    painter.rotate(ray * 360.0 / kRays);
    painter.drawPolygon(QPolygonF{{-3.6, -kSunRadius + 1}, {0, -kRayTip}, {3.6, -kSunRadius + 1}});
    painter.restore();
  }
  QRadialGradient glow(QPointF(-5, -7), kSunRadius * 1.45);
  glow.setColorAt(0, QColor(kSunCentre));
  glow.setColorAt(0.55, QColor(kSunBody));
  glow.setColorAt(1, QColor(kSunEdge));
  painter.setBrush(glow);
  painter.drawEllipse(QPointF(0, 0), kSunRadius, kSunRadius);
}

void DrawSatellite(QPainter& painter, bool withCells) {
  painter.rotate(kTiltDeg);
  if (!withCells) painter.scale(kSmallIconScale, kSmallIconScale);
  painter.setBrush(QColor(kSatellite));
  painter.drawRect(QRectF(-20, -1.2, 40, 2.4));
  painter.drawRoundedRect(QRectF(-5, -7.5, 10, 15), 1.5, 1.5);
  painter.drawRect(QRectF(-1, 7, 2, 4));
  painter.drawChord(QRectF(-5, 8, 10, 9), 0, 180 * 16);
  for (const double left : {-21.5, 8.0}) {
    const QRectF panel(left, -5.5, 13.5, 11);
    painter.setBrush(QColor(kSatellite));
    painter.drawRect(panel);
    if (!withCells) continue;
    painter.setBrush(QColor(kCells));
    for (int column = 0; column < 3; ++column) {
      for (int row = 0; row < 2; ++row) {
        painter.drawRect(QRectF(panel.left() + 1.3 + column * 3.9, panel.top() + 1.3 + row * 4.5, 3.1, 3.9));
      }
    }
  }
}

}  // namespace

void DrawIcon(QPainter& painter, double side) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.scale(side / kSide, side / kSide);
  painter.translate(kSide / 2, kSide / 2);
  DrawSun(painter);
  DrawSatellite(painter, side >= kSideOfCells);
  painter.restore();
}

QPixmap IconPicture(int side, double devicePixelRatio) {
  QPixmap picture(QSize(side, side) * devicePixelRatio);
  picture.setDevicePixelRatio(devicePixelRatio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  DrawIcon(painter, side);
  return picture;
}

QIcon ApplicationIcon() {
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 64, 128}) icon.addPixmap(IconPicture(side));
  return icon;
}

}  // namespace pelorin::desktop
