#include "picture/png_graphic.h"

#include <QPainter>
#include <cstring>
#include <utility>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "picture/picture_error.h"
#include "picture/picture_size.h"

namespace pelorin::picture {
namespace {

constexpr int kOpaque = 255;

QString OpeningError(const QString& path) { return QStringLiteral("Error Opening File %1!").arg(path); }

[[noreturn]] void Refuse(const char16_t* deed) { throw PictureError(QString::fromUtf16(deed)); }

/// 16 bits to the nearest of 8.
int ReadDeepSample(const std::uint8_t* sample) {
  std::uint16_t value = 0;
  std::memcpy(&value, sample, sizeof value);
  return (value + 128) / 257;
}

}  // namespace

void TPngGraphic::LoadFromFile(const QString& path) {
  QByteArray file;
  try {
    file = files::ReadFile(path, files::kMostPictureBytes);
  } catch (const files::FileError&) {
    throw PictureError(OpeningError(path));
  }
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

QImage TPngGraphic::Image() const {
  if (picture_.Samples.empty()) return {};
  const bool hasAlpha = picture_.Channels % 2 == 0;
  const bool isColour = picture_.Channels > 2;
  const int step = picture_.SampleBytes;
  QImage image =
      NewImage(picture_.Width, picture_.Height, hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  const std::uint8_t* samples = picture_.Samples.data();
  for (int y = 0; y < picture_.Height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < picture_.Width; ++x, samples += std::ptrdiff_t{picture_.Channels} * step) {
      const auto sample = [&](int channel) {
        const std::uint8_t* at = samples + std::ptrdiff_t{channel} * step;
        return step == 1 ? int{*at} : ReadDeepSample(at);
      };
      const int alpha = hasAlpha ? kOpaque - sample(picture_.Channels - 1) : kOpaque;
      row[x] = qRgba(sample(0), sample(isColour ? 1 : 0), sample(isColour ? 2 : 0), alpha);
    }
  }
  return image;
}

}  // namespace pelorin::picture
