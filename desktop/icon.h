#pragma once

#include <QIcon>
#include <QPixmap>

class QPainter;

namespace pelorin::desktop {

/// The program's mark, a satellite before the Sun, drawn into a square of `side` at the painter's origin.
void DrawIcon(QPainter& painter, double side);

/// The mark as a picture with nothing around it, `side` logical pixels wide and high.
QPixmap IconPicture(int side, double devicePixelRatio = 1);

/// The mark in the sizes that windows ask for, 16 to 128 pixels. To be given to the application once; drawing
/// it takes a while.
QIcon ApplicationIcon();

}  // namespace pelorin::desktop
