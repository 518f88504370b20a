#include "desktop/map/tab_sheet_map_layout.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "desktop/map/paint_box_grid.h"
#include "desktop/map/paint_box_sats.h"
#include "session/controls.h"
#include "session/picker_time.h"
#include "session/time_picker.h"

namespace pelorin::desktop {
namespace {

using session::Hinted;
using session::LabelFor;
using session::Named;

constexpr int kPageMargin = 4;
constexpr int kStripGap = 12;
constexpr QSize kLeastMap(360, 180);
constexpr int kLayoutStepMs = 5000;
/// Longer names are cut in the chooser's box, though not in its list.
constexpr int kNameCharacters = 18;
constexpr int kNamesShown = 24;

}  // namespace

void TabSheetMapLayout::Build(QWidget* page) {
  TimerStep = Named(new QTimer(page), "TimerStep");
  TimerStep->setInterval(kLayoutStepMs);
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
  column->addWidget(BuildMap(page), 1);
  column->addLayout(BuildStrip(page));
}

QFrame* TabSheetMapLayout::BuildMap(QWidget* page) {
  PanelWorldMap = Named(new QFrame(page), "PanelWorldMap");
  PanelWorldMap->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  PanelWorldMap->setLineWidth(1);
  PanelWorldMap->setMinimumSize(kLeastMap);
  PaintBoxGrid = Named(new TPaintBoxGrid(PanelWorldMap), "PaintBoxGrid");
  PaintBoxSats = Named(new TPaintBoxSats(PanelWorldMap), "PaintBoxSats");
  PaintBoxSats->setAccessibleName(QStringLiteral("World map"));
  return PanelWorldMap;
}

QWidget* TabSheetMapLayout::BuildTimeframe(QWidget* page) {
  auto* box = Named(new QGroupBox(QStringLiteral(" Timeframe "), page), "GroupBoxTimeframe");
  RadioGroupTimeframe = Named(new QButtonGroup(page), "RadioGroupTimeframe");
  auto* row = new QHBoxLayout(box);
  int id = 0;
  for (const auto& text :
       {QStringLiteral("Real-time"), QStringLiteral("From file"), QStringLiteral("Manual")}) {
    auto* button = new QRadioButton(text, box);
    button->setObjectName(QStringLiteral("RadioGroupTimeframe%1").arg(id));
    RadioGroupTimeframe->addButton(button, id++);
    row->addWidget(button);
  }
  RadioGroupTimeframe->button(0)->setChecked(true);
  return box;
}

QBoxLayout* TabSheetMapLayout::BuildStrip(QWidget* page) {
  QWidget* timeframe = BuildTimeframe(page);
  DateTimePickerMapDate = Named(new QDateEdit(page), "DateTimePickerMapDate");
  session::SetUpPicker(DateTimePickerMapDate, QStringLiteral("yyyy MMM dd"));
  DateTimePickerMapTime = Named(new session::TTimePicker(page), "DateTimePickerMapTime");
  session::SetUpPicker(DateTimePickerMapTime, QStringLiteral("HH:mm:ss"));
  ComboBoxSatForMap = Named(new QComboBox(page), "ComboBoxSatForMap");
  ComboBoxSatForMap->setPlaceholderText(QStringLiteral("(none)"));
  ComboBoxSatForMap->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  ComboBoxSatForMap->setMinimumContentsLength(kNameCharacters);
  ComboBoxSatForMap->setMaxVisibleItems(kNamesShown);
  ButtonMapToPicture =
      Hinted(Named(new QPushButton(QStringLiteral("Make picture..."), page), "ButtonMapToPicture"),
             QStringLiteral("Show the ground path of the satellite at the map's time"));

  auto* pickers = new QGridLayout;
  pickers->setVerticalSpacing(2);
  pickers->addWidget(LabelFor(QStringLiteral("&Date (UTC)"), DateTimePickerMapDate, page), 1, 0);
  pickers->addWidget(LabelFor(QStringLiteral("&Time (UTC)"), DateTimePickerMapTime, page), 1, 1);
  pickers->addWidget(LabelFor(QStringLiteral("&Satellite"), ComboBoxSatForMap, page), 1, 2);
  pickers->addWidget(DateTimePickerMapDate, 2, 0);
  pickers->addWidget(DateTimePickerMapTime, 2, 1);
  pickers->addWidget(ComboBoxSatForMap, 2, 2);
  pickers->setRowStretch(0, 1);
  auto* strip = new QHBoxLayout;
  strip->setSpacing(kStripGap);
  strip->addWidget(timeframe);
  strip->addLayout(pickers);
  strip->addStretch();
  strip->addWidget(ButtonMapToPicture, 0, Qt::AlignBottom);
  return strip;
}

}  // namespace pelorin::desktop
