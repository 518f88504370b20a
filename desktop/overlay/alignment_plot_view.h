#pragma once

#include <QWidget>
#include <vector>

#include "align/alignment_plot.h"

namespace pelorin::desktop {

/// The log over time: clock correction, roll and yaw above each other, a colour a satellite.
class TAlignmentPlotView : public QWidget {
  Q_OBJECT

 public:
  explicit TAlignmentPlotView(QWidget* parent);

  void SetRows(std::vector<align::LoggedAlignment> rows);
  /// Rings the points of these rows.
  void SetChosen(std::vector<std::size_t> rows);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The user wants to see the row of a point.
  void PointChosen(std::size_t row);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void Lay();
  void PaintLegend(QPainter& painter) const;
  void PaintPanel(QPainter& painter, std::size_t panel) const;
  void PaintTimes(QPainter& painter) const;
  QColor ColourOf(int satellite) const;
  QPointF PlaceOf(std::size_t panel, double days, double value) const;
  /// The point under the mouse; null for none.
  const align::PlotPoint* PointAt(QPointF place) const;

  std::vector<align::LoggedAlignment> rows_;
  std::vector<std::size_t> chosen_;
  align::AlignmentPlot plot_;
  std::vector<QRectF> boxes_;   ///< of the panels, without their labels
  std::vector<QRectF> legend_;  ///< of the satellites' names
};

}  // namespace pelorin::desktop
