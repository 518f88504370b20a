#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <functional>
#include <vector>

/// What the map's layers draw, worked out beforehand, in logical pixels with 0, 0 at the map's upper left.
namespace pelorin::map {

/// A line from point to point, its last pixel included.
using Stroke = std::vector<QPoint>;

struct PlacedText {
  QString Text;
  QPoint TopLeft;
};

/// Width and height of a text in the layers' font.
using MeasureText = std::function<QSize(const QString&)>;

}  // namespace pelorin::map
