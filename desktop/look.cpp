#include "desktop/look.h"

#include <QApplication>
#include <QFontInfo>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace pelorin::desktop {
namespace {

constexpr int kDarkBelow = 128;

QPalette DarkPalette() {
  QPalette palette;
  const QColor window(45, 45, 48), base(30, 30, 32), button(58, 58, 62), text(230, 230, 230),
      dim(130, 130, 130), accent(38, 110, 190);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                         QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, dim);
  }
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Button, button);
  palette.setColor(QPalette::ToolTipBase, button);
  palette.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
  palette.setColor(QPalette::Light, QColor(82, 82, 88));
  palette.setColor(QPalette::Midlight, QColor(70, 70, 75));
  palette.setColor(QPalette::Mid, QColor(38, 38, 41));
  palette.setColor(QPalette::Dark, QColor(24, 24, 26));
  palette.setColor(QPalette::Shadow, Qt::black);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, button);
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, dim);
  palette.setColor(QPalette::Link, QColor(110, 175, 240));
  palette.setColor(QPalette::LinkVisited, QColor(180, 150, 230));
  return palette;
}

/// In dark colours the style's own outlines of check boxes and radio buttons are as dark as their
/// surroundings.
class OutlinedStyle : public QProxyStyle {
 public:
  OutlinedStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    if (!isBox && element != PE_IndicatorRadioButton) return;
    if (option->palette.color(QPalette::Window).lightness() >= kDarkBelow) return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::Disabled, QPalette::WindowText));
    painter->setBrush(Qt::NoBrush);
    if (isBox) {
      painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    } else {
      painter->setRenderHint(QPainter::Antialiasing);
      painter->drawEllipse(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5));
    }
    painter->restore();
  }
};

QPalette LightPalette() {
  QPalette palette = QApplication::style()->standardPalette();
  palette.setColor(QPalette::PlaceholderText, QColor(105, 105, 105));
  return palette;
}

}  // namespace

bool SetUpStyle(QApplication& application) {
  const bool desktopIsDark = QApplication::palette().color(QPalette::Window).lightness() < kDarkBelow;
  application.setStyle(new OutlinedStyle);
  // Where only monospaced fonts are installed beside the wanted one, the system's answer would be one of
  // them.
  if (QFontInfo(QApplication::font()).fixedPitch()) {
    QFont font = QApplication::font();
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans")});
    QApplication::setFont(font);
  }
  return desktopIsDark;
}

void ApplyLook(QApplication& application, Look look, bool desktopIsDark) {
  const bool dark = look == Look::Dark || (look == Look::AsDesktop && desktopIsDark);
  application.setPalette(dark ? DarkPalette() : LightPalette());
}

}  // namespace pelorin::desktop
