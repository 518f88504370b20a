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

LoadedPicture LoadPng(const QString& path) {
  TPngGraphic graphic;
  try {
    graphic.LoadFromFile(path);
  } catch (const PictureError& error) {
    const bool isNamed = error.Text().contains(path);
    throw isNamed ? error : PictureError(path + QStringLiteral(": ") + error.Text());
  }
  const int height = graphic.Height(), lines = graphic.LinesRead();
  LoadedPicture loaded{NewImage(graphic.Width(), height, QImage::Format_RGB32), {}};
  loaded.Image.fill(Qt::white);
  QPainter painter(&loaded.Image);
  graphic.Draw(painter, loaded.Image.rect());
  painter.fillRect(0, lines, graphic.Width(), height - lines, QColor(kMissingLine));
  if (!graphic.IsWhole()) loaded.Damage = DamageText(path, kReadingError, lines, height);
  return loaded;
}

void SavePng(const QImage& picture, const QString& path) {
  const QImage rows = picture.convertToFormat(QImage::Format_RGB888);
  PngPicture png{rows.width(), rows.height(), 8, 2, rows.height(), true, 3, 1, {}};
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

LoadedPicture LoadRecording(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  if (extension == u"png") return LoadPng(path);
  if (extension == u"jpg" || extension == u"jpeg") return LoadJpeg(path);
  TExtBitmap bitmap;
  bitmap.LoadFromFile(path);
  return {bitmap.Image(), {}};
}

QImage LoadPicture(const QString& path) {
  const LoadedPicture loaded = LoadRecording(path);
  if (!loaded.Damage.isEmpty()) throw PictureError(loaded.Damage);
  return loaded.Image;
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
