#include "desktop/map/rimmed_pictures.h"

#include <QFontMetrics>
#include <QPainter>

namespace pelorin::desktop {
namespace {

constexpr int kFontPixels = 9;
/// Width of the rim, logical pixels.
constexpr int kRim = 1;
constexpr int kTextRimOpacity = 150, kSignRimOpacity = 170;
/// Brighter colours than this have a dark rim.
constexpr int kBrightFrom = 128;

QFont LayerFont() {
  QFont font;
  font.setFamilies({QStringLiteral("Small Fonts"), QStringLiteral("DejaVu Sans")});
  font.setPixelSize(kFontPixels);
  font.setHintingPreference(QFont::PreferFullHinting);
  return font;
}

QPixmap TransparentPixmap(QSize size) {
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  return pixmap;
}

QPixmap TextPicture(const QString& text, QRgb colour, const QFont& font, double ratio) {
  const QFontMetrics metrics(font);
  const QSize size(metrics.horizontalAdvance(text) + 2 * kRim, metrics.height() + 2 * kRim);
  QPixmap picture = TransparentPixmap(DevicePixels(ratio).Size(size));
  QPainter painter(&picture);
  painter.scale(ratio, ratio);
  painter.setFont(font);
  const QPoint baseline(kRim, kRim + metrics.ascent());
  painter.setPen(RimmedPictures::RimOf(colour, kTextRimOpacity));
  for (const int down : {-kRim, 0, kRim}) {
    for (const int right : {-kRim, 0, kRim}) painter.drawText(baseline + QPoint(right, down), text);
  }
  painter.setPen(QColor(colour));
  painter.drawText(baseline, text);
  return picture;
}

/// In lines of `line` device pixels.
QPixmap SignPicture(RimmedPictures::Sign sign, QRgb colour, int line) {
  const bool isMark = sign == RimmedPictures::Sign::Mark;
  const int side = (isMark ? 5 : 3) * line, rim = kRim * line, third = line;
  QPixmap picture = TransparentPixmap({side + 2 * rim, side + 2 * rim});
  QPainter painter(&picture);
  painter.translate(rim, rim);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  const QColor rimColour = RimmedPictures::RimOf(colour, kSignRimOpacity), body(colour);
  if (isMark) {
    painter.fillRect(-rim, -rim, side + 2 * rim, side + 2 * rim, rimColour);
    painter.fillRect(0, 0, side, side, body);
    painter.fillRect(line, line, side - 2 * line, side - 2 * line, rimColour);
  } else {
    for (const bool isRim : {true, false}) {
      const int grown = isRim ? rim : 0;
      const QColor& fill = isRim ? rimColour : body;
      painter.fillRect(-grown, third - grown, side + 2 * grown, line + 2 * grown, fill);
      painter.fillRect(third - grown, -grown, line + 2 * grown, side + 2 * grown, fill);
    }
  }
  return picture;
}

}  // namespace

QColor RimmedPictures::RimOf(QRgb colour, int opacity) {
  QColor rim(qGray(colour) < kBrightFrom ? Qt::white : Qt::black);
  rim.setAlpha(opacity);
  return rim;
}

RimmedPictures::RimmedPictures() : font_(LayerFont()) {}

map::MeasureText RimmedPictures::Measure() const {
  return [metrics = QFontMetrics(font_)](const QString& text) {
    return QSize(metrics.horizontalAdvance(text), metrics.height());
  };
}

void RimmedPictures::DrawText(QPainter& painter, const DevicePixels& pixels, const map::PlacedText& text,
                              QRgb colour) {
  UseRatio(pixels.Ratio());
  QPixmap& picture = texts_[{text.Text, colour}];
  if (picture.isNull()) picture = TextPicture(text.Text, colour, font_, ratio_);
  painter.drawPixmap(pixels.Corner(text.TopLeft - QPoint(kRim, kRim)), picture);
}

void RimmedPictures::DrawSign(QPainter& painter, const DevicePixels& pixels, Sign sign, QPoint middle,
                              QRgb colour) {
  UseRatio(pixels.Ratio());
  QPixmap& picture = signs_[{static_cast<int>(sign), colour}];
  if (picture.isNull()) picture = SignPicture(sign, colour, pixels.LineWidth());
  painter.drawPixmap(pixels.Centred(middle, picture.size()), picture);
}

void RimmedPictures::Clear() {
  texts_.clear();
  signs_.clear();
}

void RimmedPictures::UseRatio(double ratio) {
  if (ratio == ratio_) return;
  Clear();
  ratio_ = ratio;
}

}  // namespace pelorin::desktop
