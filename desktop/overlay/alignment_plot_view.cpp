#include "desktop/overlay/alignment_plot_view.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "align/alignment_table.h"

namespace pelorin::desktop {
namespace {

constexpr double kRadius = 3.5, kReach = 8;
constexpr int kGap = 6;

/// Well apart from each other, also for most of those who see fewer colours.
constexpr int kHues[] = {210, 28, 130, 320, 55, 275, 0, 180};

QSize TextSize(const QFontMetrics& metrics, const QString& text) {
  return {metrics.horizontalAdvance(text), metrics.height()};
}

}  // namespace

TAlignmentPlotView::TAlignmentPlotView(QWidget* parent) : QWidget(parent) {
  setAccessibleName(QStringLiteral("Clock correction, roll and yaw over time"));
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
}

void TAlignmentPlotView::SetRows(std::vector<align::LoggedAlignment> rows) {
  rows_ = std::move(rows);
  chosen_.clear();
  Lay();
}

void TAlignmentPlotView::SetChosen(std::vector<std::size_t> rows) {
  chosen_ = std::move(rows);
  update();
}

QSize TAlignmentPlotView::minimumSizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  return {metrics.horizontalAdvance(QStringLiteral("-0.00 2022 Feb 22 2022 Feb 22")), metrics.height() * 10};
}

QSize TAlignmentPlotView::sizeHint() const { return minimumSizeHint() * 1.5; }

void TAlignmentPlotView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Lay();
}

void TAlignmentPlotView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) Lay();
}

void TAlignmentPlotView::Lay() {
  const QFontMetrics metrics = fontMetrics();
  const int line = metrics.height();
  const double left = metrics.horizontalAdvance(QStringLiteral("-00.00")) + 2 * kGap;
  const double width = std::max(this->width() - left - kGap, 20.0);
  const int timeTicks =
      static_cast<int>(width / (metrics.horizontalAdvance(QStringLiteral("2022 Feb 22")) * 1.3));

  // The names stand above the plots, in as many lines as they need.
  plot_ = align::PlotOf(rows_, std::max(timeTicks, 1), 0);
  legend_.clear();
  double x = left, y = kGap;
  for (const QString& satellite : plot_.Satellites) {
    const double needed = TextSize(metrics, satellite).width() + line;
    if (x > left && x + needed > left + width) {
      x = left;
      y += line;
    }
    legend_.emplace_back(x, y, needed, line);
    x += needed + kGap;
  }
  const double top = y + line, bottom = height() - line - kGap;
  const double each = (bottom - top) / 3;
  const int valueTicks = std::clamp(static_cast<int>((each - line) / (line * 1.6)), 2, 8);
  plot_ = align::PlotOf(rows_, std::max(timeTicks, 1), valueTicks);
  boxes_.clear();
  for (std::size_t panel = 0; panel < plot_.Panels.size(); ++panel) {
    boxes_.emplace_back(left, top + static_cast<double>(panel) * each + line, width,
                        std::max(each - line - kGap, 10.0));
  }
  update();
}

QColor TAlignmentPlotView::ColourOf(int satellite) const {
  if (satellite < 0) return palette().color(QPalette::Text);
  const bool isDark = palette().color(QPalette::Base).lightness() < 128;
  return QColor::fromHsl(kHues[static_cast<std::size_t>(satellite) % std::size(kHues)], 200,
                         isDark ? 160 : 95);
}

QPointF TAlignmentPlotView::PlaceOf(std::size_t panel, double days, double value) const {
  const QRectF& box = boxes_[panel];
  const align::PlotAxis &time = plot_.Time, &values = plot_.Panels[panel].Values;
  return {box.left() + (days - time.From) / (time.To - time.From) * box.width(),
          box.bottom() - (value - values.From) / (values.To - values.From) * box.height()};
}

void TAlignmentPlotView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintLegend(painter);
  for (std::size_t panel = 0; panel < boxes_.size(); ++panel) PaintPanel(painter, panel);
  if (!boxes_.empty()) PaintTimes(painter);
}

void TAlignmentPlotView::PaintLegend(QPainter& painter) const {
  for (std::size_t at = 0; at < legend_.size(); ++at) {
    const QRectF& box = legend_[at];
    const int satellite = static_cast<int>(at);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColourOf(satellite));
    painter.drawEllipse(QPointF(box.left() + box.height() / 2, box.center().y()), kRadius, kRadius);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(box.adjusted(box.height(), 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     plot_.Satellites[satellite]);
  }
}

void TAlignmentPlotView::PaintPanel(QPainter& painter, std::size_t at) const {
  const align::PlotPanel& panel = plot_.Panels[at];
  const QRectF& box = boxes_[at];
  const double line = fontMetrics().height();
  const QColor text = palette().color(QPalette::Text);
  QColor grid = text;
  grid.setAlphaF(0.2F);

  painter.setPen(text);
  painter.drawText(QRectF(box.left(), box.top() - line, box.width(), line), Qt::AlignLeft | Qt::AlignVCenter,
                   panel.Title);
  double free = HUGE_VAL;
  for (const align::AxisTick& tick : panel.Values.Ticks) {
    const double y = PlaceOf(at, plot_.Time.From, tick.At).y();
    painter.setPen(QPen(grid, 0));
    painter.drawLine(QPointF(box.left(), y), QPointF(box.right(), y));
    // In a low box numbers would lie over each other.
    if (y + line / 2 > free) continue;
    free = y - line / 2;
    painter.setPen(text);
    painter.drawText(QRectF(0, free, box.left() - kGap, line), Qt::AlignRight | Qt::AlignVCenter, tick.Text);
  }
  painter.setPen(QPen(grid, 0));
  for (const align::AxisTick& tick : plot_.Time.Ticks) {
    const double x = PlaceOf(at, tick.At, panel.Values.From).x();
    painter.drawLine(QPointF(x, box.top()), QPointF(x, box.bottom()));
  }
  for (const align::PlotMedian& median : panel.Medians) {
    const double y = PlaceOf(at, plot_.Time.From, median.Value).y();
    painter.setPen(QPen(ColourOf(median.Satellite), 1.5, Qt::DashLine));
    painter.drawLine(QPointF(box.left(), y), QPointF(box.right(), y));
  }
  for (const align::PlotPoint& point : panel.Points) {
    const QPointF place = PlaceOf(at, point.Days, point.Value);
    const QColor colour = ColourOf(point.Satellite);
    painter.setPen(QPen(colour, 1.5));
    painter.setBrush(point.Counts ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter.drawEllipse(place, kRadius, kRadius);
    if (std::ranges::find(chosen_, point.Row) == chosen_.end()) continue;
    painter.setPen(QPen(text, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(place, 2 * kRadius, 2 * kRadius);
  }
}

void TAlignmentPlotView::PaintTimes(QPainter& painter) const {
  const QRectF& box = boxes_.back();
  painter.setPen(palette().color(QPalette::Text));
  for (const align::AxisTick& tick : plot_.Time.Ticks) {
    const QSize size = TextSize(fontMetrics(), tick.Text);
    const double x = PlaceOf(boxes_.size() - 1, tick.At, 0).x() - size.width() / 2.0;
    painter.drawText(QRectF(std::clamp(x, 0.0, std::max(0.0, double(width() - size.width()))),
                            box.bottom() + kGap / 2.0, size.width() + 1, size.height()),
                     Qt::AlignCenter, tick.Text);
  }
}

const align::PlotPoint* TAlignmentPlotView::PointAt(QPointF place) const {
  const align::PlotPoint* nearest = nullptr;
  double least = kReach;
  for (std::size_t panel = 0; panel < boxes_.size(); ++panel) {
    for (const align::PlotPoint& point : plot_.Panels[panel].Points) {
      const QPointF away = PlaceOf(panel, point.Days, point.Value) - place;
      const double distance = std::hypot(away.x(), away.y());
      if (distance > least) continue;
      least = distance;
      nearest = &point;
    }
  }
  return nearest;
}

bool TAlignmentPlotView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const align::PlotPoint* point = PointAt(help->pos());
  if (point == nullptr) {
    QToolTip::hideText();
  } else {
    const QString tip = align::PointTip(rows_[point->Row]);
    QToolTip::showText(help->globalPos(), Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip, this);
  }
  return true;
}

void TAlignmentPlotView::mousePressEvent(QMouseEvent* event) {
  const align::PlotPoint* point = PointAt(event->position());
  if (point != nullptr) Q_EMIT PointChosen(point->Row);
}

}  // namespace pelorin::desktop
