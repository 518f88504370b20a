#include "map/backdrop.h"

#include <QFileInfo>
#include <cstring>

#include "files/file_error.h"
#include "picture/picture_file.h"

namespace pelorin::map {

Backdrop LoadBackdrop(bool hasTopography, const FindFile& findFile) {
  const QString bitmap = QStringLiteral("UserMap.bmp");
  const QString small = QStringLiteral("SmallUserMap.jpg"), large = QStringLiteral("LargeUserMap.jpg");
  QStringList names{QStringLiteral("UserMap.jpg"), hasTopography ? small : large,
                    hasTopography ? large : small, bitmap};
  Backdrop backdrop;
  QString bitmapError;
  while (backdrop.Picture.isNull()) {
    const QString path = findFile(names);
    const QString name = QFileInfo(path).fileName();
    if (path.isEmpty() || !names.removeOne(name)) break;
    const bool isBitmap = name == bitmap;
    if (!isBitmap) backdrop.Tried.append(name);
    try {
      backdrop.Picture = picture::LoadPicture(path);
      backdrop.IsUserBitmap = isBitmap;
    } catch (const files::FileError& error) {
      (isBitmap ? bitmapError : backdrop.Messages.emplaceBack()) = error.Text();
    }
  }
  // Without any backdrop the advice says all there is to say about the bitmap.
  if (backdrop.Picture.isNull()) {
    backdrop.Messages.append(QStringLiteral(
        "You can provide a file named UserMap.bmp, UserMap.jpg, SmallUserMap.jpg or LargeUserMap.jpg as a "
        "backdrop to the world map display.  For best results this bitmap should be 2:1 aspect ratio, and "
        "about "
        "900 x 450 pixels or more in size."));
  } else if (!bitmapError.isEmpty()) {
    backdrop.Messages.append(bitmapError);
  }
  return backdrop;
}

QImage TurnedByHalf(const QImage& picture) {
  QImage turned(picture.size(), picture.format());
  const qsizetype pixel = picture.depth() / 8;
  const qsizetype left = picture.width() / 2 * pixel, right = picture.width() * pixel - left;
  for (int row = 0; row < picture.height(); ++row) {
    std::memcpy(turned.scanLine(row), picture.constScanLine(row) + left, static_cast<std::size_t>(right));
    std::memcpy(turned.scanLine(row) + right, picture.constScanLine(row), static_cast<std::size_t>(left));
  }
  return turned;
}

}  // namespace pelorin::map
