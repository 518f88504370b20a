#pragma once

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDateTimeEdit;
class QGroupBox;
class QProgressBar;
class QPushButton;
class QSlider;
class QSpinBox;
class QTimer;
class QWidget;

namespace pelorin::session {
class TDoubtLabel;
class TTimePicker;
}  // namespace pelorin::session

namespace pelorin::desktop {

class TAlignBar;
class TAttitudeBox;
class THandFitBar;
class TPicturePanes;
class TTimeCorrectionBox;

/// The controls of the ground-path page.
struct TabSheetGroundPathLayout {
  QComboBox* ComboBoxSatForPic;
  QDateTimeEdit* DateTimePickerDate;
  session::TTimePicker* DateTimePickerTime;
  QSpinBox* SpinEditPassDuration;
  QPushButton *ButtonPassDirection, *ButtonGenTopo;
  QProgressBar* ProgressBarMakeMap;

  QGroupBox* RadioGroupPrefPicChannel;
  QButtonGroup* Channels;  ///< ids are the preferences
  QPushButton *ButtonReload, *ButtonDetails;
  QComboBox* ComboBoxPictureChannel;  ///< of an opened picture; seen where it has several
  session::TDoubtLabel* LabelElementAge;
  QPushButton *ButtonMinuteMarks, *ButtonAlignedBefore, *ButtonClockMedian,
      *ButtonAttitudeMedian;  ///< each is seen while there is an offer
  TAttitudeBox* GroupBoxAttitude;
  TTimeCorrectionBox* GroupBoxTimeCorrection;
  QPushButton *ButtonAlign, *ButtonFitByHand;
  THandFitBar* HandFitBar;
  TAlignBar* AlignBar;

  QCheckBox *CheckBoxZoom, *CheckBoxScrollBoth, *CheckBoxNorthUp, *CheckBoxOverlaid;
  QSlider* SliderOpacity;
  QPushButton *ButtonFlicker, *ButtonSaveBlend;

  TPicturePanes* Panes;
  QTimer *TimerLoad, *TimerSaveResults;

  void Build(QWidget* page);
  void ShowChannelButtons(bool areSeen);
};

}  // namespace pelorin::desktop
