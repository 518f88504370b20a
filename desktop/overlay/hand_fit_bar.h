#pragma once

#include <QWidget>

#include "align/dragged_points.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace pelorin::desktop {

/// What a fit by hand has found, and what can be done with it.
class THandFitBar : public QWidget {
  Q_OBJECT

 public:
  explicit THandFitBar(QWidget* parent);

  /// Tells nobody.
  void ShowOf(const align::DraggedPoints& points);

 Q_SIGNALS:
  void ThirdWanted(align::Third third);
  void TakeWanted();
  void UndoWanted();
  void RemoveWanted();
  void CancelWanted();

 private:
  QPushButton* NewButton(const QString& caption, const char* name, const QString& hint,
                         void (THandFitBar::*wanted)());

  QLabel* LabelHandFit;
  QComboBox* ComboBoxThird;  ///< yaw, drift
  QPushButton *ButtonHandTake, *ButtonHandUndo, *ButtonHandRemove, *ButtonHandCancel;
};

}  // namespace pelorin::desktop
