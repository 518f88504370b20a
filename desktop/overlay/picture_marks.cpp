#include "desktop/overlay/picture_marks.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QRect>
#include <QSize>
#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace pelorin::desktop {
namespace {

constexpr QRgb kEdge = 0xC0000000, kShore = 0xFFFFE94A, kBorder = 0xFFFF9A3C, kPoint = 0xFF38E8FF,
               kLeftOut = 0xFFB4B4B4;
constexpr QRgb kGood = 0xFF4CE05A, kFair = 0xFFFFE94A, kPoor = 0xFFFF5A4A;

/// The parts of lines that are seen, in the view's pixels, without points that no screen tells apart.
class SeenParts {
 public:
  SeenParts(const std::vector<lines::PixelLine>& lines, const ViewScale& scale, const QRectF& seen) {
    for (const lines::PixelLine& line : lines) Add(line, scale, seen);
  }

  void Paint(QPainter& painter) const {
    std::size_t begin = 0;
    for (const std::size_t end : ends_) {
      painter.drawPolyline(&places_[begin], static_cast<int>(end - begin));
      begin = end;
    }
  }

 private:
  void Add(const lines::PixelLine& line, const ViewScale& scale, const QRectF& seen) {
    constexpr double leastStep = 0.7;
    QPointF last = scale.OnView(line.front());
    places_.push_back(last);
    for (std::size_t i = 1; i < line.size(); ++i) {
      const QPointF place = scale.OnView(line[i]);
      const bool isBeside =
          std::max(last.x(), place.x()) < seen.left() || std::min(last.x(), place.x()) > seen.right() ||
          std::max(last.y(), place.y()) < seen.top() || std::min(last.y(), place.y()) > seen.bottom();
      const double step = std::abs(place.x() - last.x()) + std::abs(place.y() - last.y());
      if (isBeside) {
        End();
      } else if (step < leastStep && i + 1 < line.size()) {
        continue;
      }
      places_.push_back(place);
      last = place;
    }
    End();
  }

  void End() {
    const std::size_t begin = ends_.empty() ? 0 : ends_.back();
    if (places_.size() < begin + 2) {
      places_.resize(begin);
    } else {
      ends_.push_back(places_.size());
    }
  }

  std::vector<QPointF> places_;
  std::vector<std::size_t> ends_;  ///< of the parts
};

void PaintLines(QPainter& painter, const SeenParts& parts, QRgb colour) {
  // Lines of one pixel, several times, are many times quicker than broad ones.
  const double ratio = painter.device()->devicePixelRatioF(), pixel = 1 / ratio;
  const bool isDense = ratio >= 1.5;
  painter.setRenderHint(QPainter::Antialiasing, false);
  const auto paint = [&](QRgb with, std::initializer_list<QPointF> places) {
    painter.setPen(QPen(QColor::fromRgba(with), 0));
    for (const QPointF& place : places) {
      painter.translate(place * pixel);
      parts.Paint(painter);
      painter.translate(-place * pixel);
    }
  };
  if (isDense) {
    paint(kEdge, {{-1, 0}, {2, 0}, {0, -1}, {0, 2}});
    paint(colour, {{0, 0}, {1, 0}, {0, 1}});
  } else {
    paint(kEdge, {{1, 0}, {-1, 1}, {-1, -1}});
    paint(colour, {{0, 0}});
  }
}

void PaintPoint(QPainter& painter, const PictureMarks::Point& point, QPointF at) {
  const double radius = point.IsChosen ? 6 : 4;
  const QColor colour = QColor::fromRgba(point.IsLeftOut ? kLeftOut : kPoint), edge = QColor::fromRgba(kEdge);
  painter.setBrush(Qt::NoBrush);
  for (const auto& [pen, width] : {std::pair{edge, 4.0}, std::pair{colour, point.IsChosen ? 2.5 : 1.6}}) {
    painter.setPen(QPen(pen, width));
    painter.drawEllipse(at, radius, radius);
  }
  if (point.Text.isEmpty()) return;
  const QSizeF size = painter.fontMetrics().size(Qt::TextSingleLine, point.Text) + QSizeF(6, 2);
  const QRectF box(at + QPointF(radius + 4, -size.height() / 2), size);
  painter.setPen(Qt::NoPen);
  painter.setBrush(edge);
  painter.drawRoundedRect(box, 3, 3);
  painter.setPen(colour);
  painter.drawText(box, Qt::AlignCenter, point.Text);
}

QRgb ColourOf(double misfitPixels) {
  constexpr double good = 0.5, fair = 1;
  return misfitPixels < good ? kGood : misfitPixels < fair ? kFair : kPoor;
}

/// From one place to another, with a head; a short one is a dot.
QPainterPath Arrow(QPointF from, QPointF to) {
  constexpr double head = 5, dot = 1.5;
  QPainterPath path;
  const QLineF along(from, to);
  path.addEllipse(from, dot, dot);
  if (along.length() < head) return path;
  path.moveTo(from);
  path.lineTo(to);
  for (const double turnDeg : {150.0, -150.0}) {
    QLineF side = along.translated(to - from);
    side.setAngle(along.angle() + turnDeg);
    side.setLength(head);
    path.moveTo(to);
    path.lineTo(side.p2());
  }
  return path;
}

void PaintWindow(QPainter& painter, const PictureMarks::Window& window, const ViewScale& scale) {
  const QPointF middle = scale.OnView(window.Middle);
  const QPointF half(window.HalfColumns * scale.Across(), window.HalfRows * scale.Down());
  const QPointF end = scale.OnView({window.Middle.Column + kMisfitEnlarged * window.MisfitColumns,
                                    window.Middle.Row + kMisfitEnlarged * window.MisfitRows});
  QColor colour = QColor::fromRgba(ColourOf(std::hypot(window.MisfitColumns, window.MisfitRows)));
  const QPainterPath arrow = Arrow(middle, end);
  painter.setBrush(Qt::NoBrush);
  for (const auto& [pen, width] : {std::pair{QColor::fromRgba(kEdge), 3.5}, std::pair{colour, 1.5}}) {
    painter.setPen(QPen(pen, width));
    painter.drawPath(arrow);
  }
  // Windows overlap: faint, or nothing is seen through them.
  constexpr double faint = 0.45;
  colour.setAlphaF(faint);
  painter.setPen(QPen(colour, 1));
  painter.drawRect(QRectF(middle - half, middle + half));
}

}  // namespace

ViewScale::ViewScale(const QSize& picture, const QSize& view)
    : across_(static_cast<double>(view.width()) / std::max(1, picture.width())),
      down_(static_cast<double>(view.height()) / std::max(1, picture.height())) {}

void PaintMarks(QPainter& painter, const PictureMarks& marks, const ViewScale& scale, const QRect& seen) {
  const QRectF near = QRectF(seen).adjusted(-2, -2, 2, 2);
  if (marks.Lines) {
    PaintLines(painter, SeenParts(marks.Lines->Borders, scale, near), kBorder);
    PaintLines(painter, SeenParts(marks.Lines->Shores, scale, near), kShore);
  }
  painter.setRenderHint(QPainter::Antialiasing);
  for (const PictureMarks::Window& window : marks.Windows) PaintWindow(painter, window, scale);
  for (const PictureMarks::Point& point : marks.Points) PaintPoint(painter, point, scale.OnView(point.At));
}

}  // namespace pelorin::desktop
