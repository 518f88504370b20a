#pragma once

#include <QImage>
#include <QString>

namespace pelorin::picture {

/// A picture file as far as it could be read.
struct LoadedPicture {
  QImage Image;    ///< Format_RGB32, top row first; lines that are not there are kMissingLine all over
  QString Damage;  ///< what the user should know of it, with the file's name; empty when the picture is whole
};

inline constexpr QRgb kMissingLine = 0xFF808080;

/// Fills the rows of a Format_RGB32 image from `lines` on with kMissingLine.
void FillMissing(QImage& image, int lines);

/// What is wrong with a file of which only `lines` from the top could be read, or all of them, but not well.
QString DamageText(const QString& path, const QString& reason, int lines, int height);

}  // namespace pelorin::picture
