#pragma once

#include <QIcon>

class QPainter;

namespace pelorin::desktop {

/// The program's mark, a satellite before the Sun, drawn into a square of `side` at the painter's origin.
void DrawIcon(QPainter& painter, double side);

/// The mark in the sizes that desktops ask for, 16 to 256 pixels.
QIcon ApplicationIcon();

}  // namespace pelorin::desktop
