#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

#include "desktop/map/rimmed_pictures.h"
#include "map/map_projection.h"

namespace pelorin::desktop {

/// The map's lower layer: the backdrop, stretched over all of it, and the grid. Both are drawn once for a
/// size and then copied.
class TPaintBoxGrid : public QWidget {
  Q_OBJECT

 public:
  explicit TPaintBoxGrid(QWidget* parent);

  /// Plate carrée, turned already where the map is Pacific-centred; null for none.
  void SetBackdrop(const QImage& picture);
  /// The frame of this widget's size.
  void SetFrame(const map::MapFrame& frame);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Redraw();
  QPixmap DrawLayer(double ratio);

  QImage backdrop_;
  map::MapFrame frame_;
  RimmedPictures pictures_;
  QPixmap layer_;  ///< in device pixels; null when it must be drawn anew
  double layerRatio_ = 0;
};

}  // namespace pelorin::desktop
