#include "picture/picture_file.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstring>
#include <utility>

#include "files/atomic_file.h"
#include "picture/ext_bitmap.h"
#include "picture/jpeg_image.h"
#include "picture/picture_error.h"
#include "picture/png_codec.h"
#include "picture/png_graphic.h"
#include "picture/sample_image.h"
#include "picture/tiff_image.h"

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
  LoadedPicture loaded{LayOnWhite(std::move(graphic).TakeImage()), {}};
  FillMissing(loaded.Image, lines);
  if (!graphic.IsWhole()) loaded.Damage = DamageText(path, kReadingError, lines, height);
  return loaded;
}

void SavePng(const QImage& picture, const QString& path) {
  const int width = picture.width(), height = picture.height();
  PngPicture png{width, height, 8, 2, height, true, SampleRows(width, height, 3, 1)};
  for (int y = 0; y < height; ++y) {
    const QImage row = picture.copy(0, y, width, 1).convertToFormat(QImage::Format_RGB888);
    std::memcpy(png.Samples.Row(y), row.constScanLine(0), png.Samples.RowBytes());
  }
  files::ReplaceFile(path, [&](QIODevice& device) {
    if (!EncodePng(png, device)) throw PictureError(QStringLiteral("Error Writing File!"));
  });
}

LoadedPicture LoadBitmap(const QString& path) {
  TExtBitmap bitmap;
  bitmap.LoadFromFile(path);
  return {bitmap.Image(), {}};
}

/// What a kind of file may be called, and what it begins with.
struct Kind {
  QLatin1StringView Suffix;
  QByteArrayView Beginning;
  LoadedPicture (*Load)(const QString& path);
};

constexpr Kind kKinds[] = {
    {QLatin1StringView("bmp"), "BM", LoadBitmap},     {QLatin1StringView("png"), "\x89PNG", LoadPng},
    {QLatin1StringView("jpg"), "\xFF\xD8", LoadJpeg}, {QLatin1StringView("jpeg"), "\xFF\xD8", LoadJpeg},
    {QLatin1StringView("tif"), "II", LoadTiff},       {QLatin1StringView("tiff"), "MM", LoadTiff},
};

const Kind* KindByName(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](const Kind& row) { return row.Suffix == suffix; });
  return kind != std::end(kKinds) ? kind : nullptr;
}

const Kind* KindByContent(const QString& path) {
  QFile file(path);
  const QByteArray beginning = file.open(QIODevice::ReadOnly) ? file.read(8) : QByteArray();
  const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](const Kind& row) { return beginning.startsWith(row.Beginning); });
  return kind != std::end(kKinds) ? kind : nullptr;
}

}  // namespace

bool IsPictureName(const QString& path) { return KindByName(path) != nullptr; }

LoadedPicture LoadRecording(const QString& path) {
  const Kind* kind = KindByContent(path);
  if (kind == nullptr) kind = KindByName(path);
  return kind != nullptr ? kind->Load(path) : LoadBitmap(path);
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
