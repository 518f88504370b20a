#include "desktop/overlay/tab_sheet_ground_path_layout.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>

#include "desktop/overlay/align_bar.h"
#include "desktop/overlay/attitude_box.h"
#include "desktop/overlay/hand_fit_bar.h"
#include "desktop/overlay/overlay_choices.h"
#include "desktop/overlay/picture_panes.h"
#include "desktop/overlay/time_correction_box.h"
#include "session/controls.h"
#include "session/doubt_label.h"
#include "session/picker_time.h"
#include "session/time_picker.h"

namespace pelorin::desktop {
namespace {

using session::Hinted;
using session::Named;

QPushButton* NewPageButton(const QString& caption, const char* name, const QString& hint, QWidget* page) {
  auto* button = Hinted(Named(new QPushButton(caption, page), name), hint);
  button->setAutoDefault(true);
  return button;
}

QCheckBox* NewPageCheck(const QString& caption, const char* name, const QString& hint, QWidget* page) {
  return Hinted(Named(new QCheckBox(caption, page), name), hint);
}

QTimer* NewOneShot(const char* name, int intervalMs, QWidget* page) {
  auto* timer = Named(new QTimer(page), name);
  timer->setSingleShot(true);
  timer->setInterval(intervalMs);
  return timer;
}

/// What the map is made for, and its making.
QHBoxLayout* BuildPassRow(TabSheetGroundPathLayout& ui, QWidget* page) {
  ui.ComboBoxSatForPic = Hinted(Named(new QComboBox(page), "ComboBoxSatForPic"),
                                QStringLiteral("The satellite that sent the picture"));
  ui.ComboBoxSatForPic->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  ui.ComboBoxSatForPic->setMinimumContentsLength(11);
  ui.DateTimePickerDate = Hinted(Named(new QDateTimeEdit(page), "DateTimePickerDate"),
                                 QStringLiteral("The day on which the pass began, UTC"));
  session::SetUpPicker(ui.DateTimePickerDate, QStringLiteral("yyyy MMM dd"));
  ui.DateTimePickerTime = Hinted(Named(new session::TTimePicker(page), "DateTimePickerTime"),
                                 QStringLiteral("The minute at which the pass began, UTC"));
  session::SetUpPicker(ui.DateTimePickerTime, QStringLiteral("HH:mm"));
  for (QDateTimeEdit* picker : {ui.DateTimePickerDate, static_cast<QDateTimeEdit*>(ui.DateTimePickerTime)}) {
    picker->setKeyboardTracking(false);
  }
  ui.SpinEditPassDuration = Hinted(Named(new QSpinBox(page), "SpinEditPassDuration"),
                                   QStringLiteral("Length of the map, 1 to 30 minutes"));
  ui.SpinEditPassDuration->setRange(1, 30);
  ui.SpinEditPassDuration->setValue(15);
  ui.SpinEditPassDuration->setSuffix(QStringLiteral(" min"));
  ui.ButtonPassDirection = NewPageButton(
      DirectionCaption(false), "ButtonPassDirection",
      QStringLiteral("Whether the satellite moved north or south; press to turn the map"), page);
  ui.ButtonGenTopo =
      NewPageButton(QStringLiteral("Make map"), "ButtonGenTopo",
                    QStringLiteral("Make the map that belongs to the picture of the pass"), page);
  ui.ButtonGenTopo->setDefault(true);
  ui.ProgressBarMakeMap = Named(new QProgressBar(page), "ProgressBarMakeMap");
  ui.ProgressBarMakeMap->setTextVisible(false);
  ui.ProgressBarMakeMap->setMinimumWidth(60);
  ui.ProgressBarMakeMap->setValue(0);

  auto* row = new QHBoxLayout;
  row->addWidget(session::LabelFor(QStringLiteral("Sa&tellite:"), ui.ComboBoxSatForPic, page));
  row->addWidget(ui.ComboBoxSatForPic);
  row->addSpacing(6);
  row->addWidget(ui.DateTimePickerDate);
  row->addWidget(ui.DateTimePickerTime);
  row->addWidget(new QLabel(QStringLiteral("UTC"), page));
  row->addSpacing(6);
  row->addWidget(session::LabelFor(QStringLiteral("D&uration:"), ui.SpinEditPassDuration, page));
  row->addWidget(ui.SpinEditPassDuration);
  row->addWidget(ui.ButtonPassDirection);
  row->addSpacing(6);
  row->addWidget(ui.ButtonGenTopo);
  row->addWidget(ui.ProgressBarMakeMap, 1);
  return row;
}

/// Which picture, and what is to be said of it.
QHBoxLayout* BuildPictureRow(TabSheetGroundPathLayout& ui, QWidget* page) {
  ui.RadioGroupPrefPicChannel =
      Hinted(Named(new QGroupBox(QStringLiteral(" Channel "), page), "RadioGroupPrefPicChannel"),
             QStringLiteral("Choose preferred picture source"));
  ui.Channels = new QButtonGroup(page);
  auto* channels = new QHBoxLayout(ui.RadioGroupPrefPicChannel);
  const QString captions[] = {QStringLiteral("Chan 2 (vis)"), QStringLiteral("Chan 4 (IR)"),
                              QStringLiteral("Base (plain)")};
  int id = 0;
  for (const QString& caption : captions) {
    auto* button = new QRadioButton(caption, ui.RadioGroupPrefPicChannel);
    button->setObjectName(QStringLiteral("RadioButtonChannel%1").arg(id));
    ui.Channels->addButton(button, id++);
    channels->addWidget(button);
  }
  ui.Channels->button(0)->setChecked(true);
  ui.ButtonReload =
      NewPageButton(QStringLiteral("Load picture"), "ButtonReload",
                    QStringLiteral("Look for the picture of the pass in the picture folders"), page);
  ui.ComboBoxPictureChannel =
      Hinted(Named(new QComboBox(ui.RadioGroupPrefPicChannel), "ComboBoxPictureChannel"),
             QStringLiteral("The pictures that were opened together"));
  ui.ComboBoxPictureChannel->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  ui.ComboBoxPictureChannel->setMinimumContentsLength(24);
  ui.ComboBoxPictureChannel->hide();
  channels->addWidget(ui.ComboBoxPictureChannel);
  channels->addSpacing(6);
  channels->addWidget(ui.ButtonReload);
  ui.ButtonDetails =
      NewPageButton(QStringLiteral("Details..."), "ButtonDetails",
                    QStringLiteral("What the picture is of: satellite, begin, scanner, how it is "
                                   "stored"),
                    page);
  channels->addWidget(ui.ButtonDetails);
  ui.RadioGroupPrefPicChannel->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
  ui.LabelElementAge = new session::TDoubtLabel(page);
  ui.ButtonMinuteMarks = NewPageButton(
      {}, "ButtonMinuteMarks",
      QStringLiteral("The satellite marks its minutes at the edge of the picture; press to take the time "
                     "correction that they mean"),
      page);
  ui.ButtonAlignedBefore = NewPageButton({}, "ButtonAlignedBefore", {}, page);
  ui.ButtonClockMedian = NewPageButton({}, "ButtonClockMedian", {}, page);
  ui.ButtonAttitudeMedian = NewPageButton({}, "ButtonAttitudeMedian", {}, page);

  auto* row = new QHBoxLayout;
  row->addWidget(ui.RadioGroupPrefPicChannel);
  // One above the other: side by side, a small window would have words in a column.
  auto* remarks = new QVBoxLayout;
  remarks->addStretch(1);
  for (QPushButton* offer :
       {ui.ButtonMinuteMarks, ui.ButtonAlignedBefore, ui.ButtonClockMedian, ui.ButtonAttitudeMedian}) {
    offer->hide();
    remarks->addWidget(offer, 0, Qt::AlignRight);
  }
  remarks->addWidget(ui.LabelElementAge);
  row->addLayout(remarks, 1);
  return row;
}

/// Where exactly the map lies on it.
QHBoxLayout* BuildFitRow(TabSheetGroundPathLayout& ui, QWidget* page) {
  ui.GroupBoxAttitude = new TAttitudeBox(page);
  ui.ButtonAlign = Named(new QPushButton(QStringLiteral("Align (F6)"), page), "ButtonAlign");
  ui.ButtonAlign->setAutoDefault(false);
  ui.ButtonFitByHand = Named(new QPushButton(QStringLiteral("Fit by hand (F7)"), page), "ButtonFitByHand");
  ui.ButtonFitByHand->setCheckable(true);
  ui.ButtonFitByHand->setAutoDefault(false);
  auto* fitByHand = new QShortcut(Qt::Key_F7, page);
  QObject::connect(fitByHand, &QShortcut::activated, ui.ButtonFitByHand, &QPushButton::click);
  ui.GroupBoxTimeCorrection = new TTimeCorrectionBox(page);
  auto* beside = new QVBoxLayout;
  beside->setSpacing(2);
  beside->addStretch(1);
  beside->addWidget(ui.ButtonAlign);
  beside->addWidget(ui.ButtonFitByHand);
  beside->addStretch(1);
  auto* row = new QHBoxLayout;
  row->addWidget(ui.GroupBoxAttitude);
  row->addStretch(1);
  row->addLayout(beside);
  row->addWidget(ui.GroupBoxTimeCorrection);
  return row;
}

/// How both are shown.
QHBoxLayout* BuildViewRow(TabSheetGroundPathLayout& ui, QWidget* page) {
  ui.CheckBoxZoom = NewPageCheck(QStringLiteral("&Zoom"), "CheckBoxZoom",
                                 QStringLiteral("Show map and picture pixel by pixel"), page);
  ui.CheckBoxScrollBoth = NewPageCheck(QStringLiteral("Scroll &both"), "CheckBoxScrollBoth",
                                       QStringLiteral("Check to scroll map and picture together"), page);
  ui.CheckBoxScrollBoth->setChecked(true);
  ui.CheckBoxNorthUp =
      NewPageCheck(QStringLiteral("&North up"), "CheckBoxNorthUp",
                   QStringLiteral("Turn north-bound pictures and their maps, so that north is "
                                  "up; otherwise they are seen as received"),
                   page);
  ui.CheckBoxNorthUp->setChecked(true);
  ui.CheckBoxOverlaid = NewPageCheck(QStringLiteral("&Map over picture"), "CheckBoxOverlaid",
                                     QStringLiteral("Lay the map over the picture, line for line"), page);
  ui.SliderOpacity = Hinted(Named(new QSlider(Qt::Horizontal, page), "SliderOpacity"),
                            QStringLiteral("How much of the map covers the picture, 0 to 100 %"));
  ui.SliderOpacity->setRange(0, 100);
  ui.SliderOpacity->setValue(50);
  ui.SliderOpacity->setPageStep(10);
  ui.SliderOpacity->setMinimumWidth(80);
  ui.SliderOpacity->setMaximumWidth(220);
  ui.ButtonFlicker = NewPageButton(
      QStringLiteral("Flicker (F8)"), "ButtonFlicker",
      QStringLiteral("Take the map off the picture and put it back; hold F8 to let it flicker"), page);
  ui.ButtonFlicker->setCheckable(true);
  // The button's own shortcut would wait until the key is let go.
  auto* flicker = new QShortcut(Qt::Key_F8, page);
  QObject::connect(flicker, &QShortcut::activated, ui.ButtonFlicker, &QPushButton::click);
  ui.ButtonSaveBlend = NewPageButton(QStringLiteral("Save blended picture..."), "ButtonSaveBlend",
                                     QStringLiteral("Save the picture with the map over it"), page);

  auto* row = new QHBoxLayout;
  row->addWidget(ui.CheckBoxZoom);
  row->addWidget(ui.CheckBoxScrollBoth);
  row->addWidget(ui.CheckBoxNorthUp);
  row->addStretch(1);
  row->addWidget(ui.CheckBoxOverlaid);
  row->addWidget(ui.SliderOpacity, 2);
  row->addWidget(ui.ButtonFlicker);
  row->addWidget(ui.ButtonSaveBlend);
  return row;
}

}  // namespace

void TabSheetGroundPathLayout::Build(QWidget* page) {
  auto* rows = new QVBoxLayout(page);
  rows->setContentsMargins(6, 6, 6, 4);
  rows->setSpacing(4);
  rows->addLayout(BuildPassRow(*this, page));
  rows->addLayout(BuildPictureRow(*this, page));
  rows->addLayout(BuildFitRow(*this, page));
  rows->addLayout(BuildViewRow(*this, page));
  HandFitBar = new THandFitBar(page);
  rows->addWidget(HandFitBar);
  AlignBar = new TAlignBar(page);
  rows->addWidget(AlignBar);
  Panes = new TPicturePanes(page);
  rows->addWidget(Panes, 1);
  TimerLoad = NewOneShot("TimerLoad", 500, page);
  TimerSaveResults = NewOneShot("TimerSaveResults", 500, page);
}

void TabSheetGroundPathLayout::ShowChannelButtons(bool areSeen) {
  for (QAbstractButton* button : Channels->buttons()) button->setVisible(areSeen);
}

}  // namespace pelorin::desktop
