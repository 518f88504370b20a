#pragma once

#include <QWidget>

#include "desktop/map/rimmed_pictures.h"
#include "map/satellite_plot.h"

namespace pelorin::desktop {

/// The map's upper layer: satellites, footprints, Sun and terminator, over what lies below.
class TPaintBoxSats : public QWidget {
  Q_OBJECT

 public:
  explicit TPaintBoxSats(QWidget* parent);

  /// What is drawn from now on, for this widget's size. It borrows the satellites.
  void SetPlot(map::SatellitePlot plot);
  const map::SatellitePlot& Plot() const { return plot_; }
  /// The satellites are gone.
  void Clear();

  /// For labels of the plot.
  map::MeasureText Measure() const { return pictures_.Measure(); }

 Q_SIGNALS:
  void MouseUp(QPoint position);
  /// The mouse has come, or gone: the status tip is to be said, or no longer. The main window does not hear
  /// of it, which would say it in the place of everything else.
  void TipAsked();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void DrawSatellite(QPainter& painter, const DevicePixels& pixels, const map::SatelliteDrawing& drawing);
  void DrawSun(QPainter& painter, const DevicePixels& pixels) const;

  map::SatellitePlot plot_;
  RimmedPictures pictures_;
};

}  // namespace pelorin::desktop
