#include "picture/png_graphic.h"

#include <QFile>
#include <QPainter>
#include <utility>

#include "files/atomic_file.h"
#include "picture/picture_error.h"
#include "picture/sample_image.h"

namespace pelorin::picture {
namespace {

QString OpeningError(const QString& path) { return QStringLiteral("Error Opening File %1!").arg(path); }

[[noreturn]] void Refuse(const char16_t* deed) { throw PictureError(QString::fromUtf16(deed)); }

}  // namespace

void TPngGraphic::LoadFromFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) throw PictureError(OpeningError(path));
  PngPicture picture;
  if (!DecodePng(file, picture)) throw PictureError(kReadingError);
  picture_ = std::move(picture);
}

void TPngGraphic::SaveToFile(const QString& path) const {
  const PictureError writingError(QStringLiteral("Error Writing File!"));
  bool isOpen = false;
  try {
    files::ReplaceFile(path, [&](QIODevice& device) {
      isOpen = true;
      if (!EncodePng(picture_, device)) throw writingError;
    });
  } catch (const files::FileError&) {
    throw isOpen ? writingError : PictureError(OpeningError(path));
  }
}

void TPngGraphic::LoadFromStream(QIODevice&) { Refuse(u"Cannot load a TPngGraphic from a Stream"); }
void TPngGraphic::SaveToStream(QIODevice&) const { Refuse(u"Cannot save a TPngGraphic to a Stream"); }
void TPngGraphic::LoadFromClipboard() { Refuse(u"Cannot load a TPngGraphic from the Clipboard"); }
void TPngGraphic::SaveToClipboard() const { Refuse(u"Cannot save a TPngGraphic to the Clipboard"); }
void TPngGraphic::SetWidth(int) { Refuse(u"Cannot set width on a TPngGraphic"); }
void TPngGraphic::SetHeight(int) { Refuse(u"Cannot set height on a TPngGraphic"); }

void TPngGraphic::Draw(QPainter& painter, const QRect& target) const { painter.drawImage(target, Image()); }

QImage TPngGraphic::Image() const { return MakeImage(picture_.Samples, picture_.LinesRead); }

QImage TPngGraphic::TakeImage() && { return MakeImage(std::move(picture_.Samples), picture_.LinesRead); }

}  // namespace pelorin::picture
