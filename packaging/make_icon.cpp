// Draws the program's mark into the files that desktops look for: make_icon FILE.png SIDE, or make_icon
// FILE.svg

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <cstdio>

#include "desktop/icon.h"

namespace {

constexpr int kSvgSide = 128;

bool WritePng(const QString& path, int side) {
  QImage image(side, side, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  pelorin::desktop::DrawIcon(painter, side);
  painter.end();
  return image.save(path, "PNG");
}

bool WriteSvg(const QString& path) {
  QSvgGenerator file;
  file.setFileName(path);
  file.setSize({kSvgSide, kSvgSide});
  file.setViewBox(QRect(0, 0, kSvgSide, kSvgSide));
  file.setTitle(QStringLiteral("Pelorin"));
  QPainter painter(&file);
  if (!painter.isActive()) return false;
  pelorin::desktop::DrawIcon(painter, kSvgSide);
  return painter.end();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  const int side = arguments.value(2).toInt();
  if (arguments.size() < 2 || (arguments.size() == 3 && side <= 0)) {
    std::fputs("Usage: make_icon FILE.png SIDE | make_icon FILE.svg\n", stderr);
    return 2;
  }
  const QString path = arguments[1];
  if (arguments.size() == 3 ? WritePng(path, side) : WriteSvg(path)) return 0;
  std::fprintf(stderr, "Cannot write %s\n", qPrintable(path));
  return 1;
}
