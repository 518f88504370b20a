#include "picture/picture_file.h"

#include <QFileInfo>
#include <QPainter>

#include "files/atomic_file.h"
#include "picture/ext_bitmap.h"
#include "picture/jpeg_image.h"
#include "picture/picture_error.h"
#include "picture/picture_size.h"
#include "picture/png_codec.h"
#include "picture/png_graphic.h"

namespace pelorin::picture {
namespace {

QImage LoadPng(const QString& path) {
  TPngGraphic graphic;
  graphic.LoadFromFile(path);
  QImage page = NewImage(graphic.Width(), graphic.Height(), QImage::Format_RGB32);
  page.fill(Qt::white);
  QPainter painter(&page);
  graphic.Draw(painter, page.rect());
  return page;
}

void SavePng(const QImage& picture, const QString& path) {
  const QImage rows = picture.convertToFormat(QImage::Format_RGB888);
  PngPicture png{rows.width(), rows.height(), 8, 2, 3, 1, {}};
  for (int y = 0; y < rows.height(); ++y) {
    png.Samples.insert(png.Samples.end(), rows.constScanLine(y),
                       rows.constScanLine(y) + std::ptrdiff_t{3} * rows.width());
  }
  files::ReplaceFile(path, [&](QIODevice& device) {
    if (!EncodePng(png, device)) throw PictureError(QStringLiteral("Error Writing File!"));
  });
}

}  // namespace

bool IsPictureName(const QString& path) {
  const QStringList kinds{QStringLiteral("bmp"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
                          QStringLiteral("png")};
  return kinds.contains(QFileInfo(path).suffix().toLower());
}

QImage LoadPicture(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  if (extension == u"png") return LoadPng(path);
  if (extension == u"jpg" || extension == u"jpeg") return LoadJpeg(path);
  TExtBitmap bitmap;
  bitmap.LoadFromFile(path);
  return bitmap.Image();
}

void SavePicture(const QImage& picture, const QString& path) {
  constexpr int highQuality = 92;
  if (QFileInfo(path).suffix().toLower() == u"png") {
    SavePng(picture, path);
  } else {
    SaveJpeg(picture, path, highQuality);
  }
}

}  // namespace pelorin::picture
