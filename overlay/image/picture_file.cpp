#include "overlay/image/picture_file.h"

#include <QFileInfo>
#include <QPainter>

#include "overlay/image/ext_bitmap.h"
#include "overlay/image/jpeg_image.h"
#include "overlay/image/picture_size.h"
#include "overlay/image/png_graphic.h"

namespace pelorin::image {
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

}  // namespace

QImage LoadPicture(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  if (extension == u"png") return LoadPng(path);
  if (extension == u"jpg" || extension == u"jpeg") return LoadJpeg(path);
  TExtBitmap bitmap;
  bitmap.LoadFromFile(path);
  return bitmap.Image();
}

}  // namespace pelorin::image
