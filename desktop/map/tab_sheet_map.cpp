#include "desktop/map/tab_sheet_map.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDateEdit>
#include <QFocusEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QTimer>
#include <algorithm>

#include "desktop/map/paint_box_grid.h"
#include "desktop/map/paint_box_sats.h"
#include "map/map_clock.h"
#include "map/satellite_info.h"
#include "map/satellite_plot.h"
#include "orbit/time_stamp.h"
#include "session/controls.h"
#include "session/picker_time.h"
#include "session/time_picker.h"

namespace pelorin::desktop {
namespace {

using session::Handle;
using session::Page;
using session::Timeframe;

const QString kMapTitle = QStringLiteral("Pelorin - map");

}  // namespace

TTabSheetMap::TTabSheetMap(session::Session& session, QWidget* parent) : TTabSheet(session, parent) {
  ui_.Build(this);
  ConnectHandlers();
}

void TTabSheetMap::ConnectHandlers() {
  Handle(this, &TTabSheet::Shown, this, &TTabSheetMap::TabSheetMapShow);
  Handle(this, &TTabSheet::Hidden, this, &TTabSheetMap::TabSheetMapHide);
  Handle(ui_.RadioGroupTimeframe, &QButtonGroup::idClicked, this, &TTabSheetMap::RadioGroupTimeframeClick);
  Handle(ui_.TimerStep, &QTimer::timeout, this, &TTabSheetMap::TimerStepTimer);
  Handle(ui_.DateTimePickerMapDate, &QDateTimeEdit::dateTimeChanged, this,
         &TTabSheetMap::DateTimePickerMapDateChange);
  Handle(ui_.DateTimePickerMapTime, &QDateTimeEdit::dateTimeChanged, this,
         &TTabSheetMap::DateTimePickerMapDateChange);
  Handle(ui_.ComboBoxSatForMap, &QComboBox::currentIndexChanged, this,
         &TTabSheetMap::ComboBoxSatForMapChange);
  Handle(ui_.ButtonMapToPicture, &QPushButton::clicked, this, &TTabSheetMap::ButtonMapToPictureClick);
  Handle(ui_.PaintBoxSats, &TPaintBoxSats::MouseUp, this, &TTabSheetMap::PaintBoxSatsMouseUp);
  Handle(&session_, &session::Session::ActiveSatellitesChanged, this, &TTabSheetMap::ActiveSatellitesChanged);
  Handle(&session_, &session::Session::SatelliteChosen, this, &TTabSheetMap::SatelliteChosen);
  Handle(ui_.PaintBoxSats, &TPaintBoxSats::TipAsked, this, &TTabSheetMap::RepaintSatellites);
  session::OnEvent(ui_.PanelWorldMap, QEvent::Resize, Boxes(),
                   [this](const QEvent&) { PanelWorldMapResize(); });
  for (QDateTimeEdit* picker : {static_cast<QDateTimeEdit*>(ui_.DateTimePickerMapTime),
                                static_cast<QDateTimeEdit*>(ui_.DateTimePickerMapDate)}) {
    session::OnEvent(picker, QEvent::KeyPress, Boxes(), [this](const QEvent& event) {
      if (session::TypesDigit(static_cast<const QKeyEvent&>(event))) DateTimePickerMapKeyPress();
    });
  }
  QDateEdit* date = ui_.DateTimePickerMapDate;
  for (QWidget* part : {static_cast<QWidget*>(date), static_cast<QWidget*>(date->findChild<QLineEdit*>())}) {
    session::OnEvent(part, QEvent::MouseButtonPress, Boxes(),
                     [this](const QEvent&) { DateTimePickerMapDateClick(); });
  }
  // An open calendar is part of the picker: closed, it gives the focus back.
  for (const bool isLeft : {false, true}) {
    session::OnEvent(
        date, isLeft ? QEvent::FocusOut : QEvent::FocusIn, Boxes(), [=, this](const QEvent& event) {
          const bool isCalendar = static_cast<const QFocusEvent&>(event).reason() == Qt::PopupFocusReason;
          if (isLeft != isCalendar) DateTimePickerMapDateExit();
        });
  }
}

// ------------------------------------------------------------------------------------ the page

void TTabSheetMap::TabSheetMapShow() {
  session_.Window.SetTitle(kMapTitle);
  SelectTimeframe(session_.Map.ModeToRestore);
  TurnTo(session_.Map.CurrentTime);
  RepaintSatellites();
}

void TTabSheetMap::TabSheetMapHide() {
  if (session_.Run.Closing) return;
  session_.Map.ModeToRestore = session_.Map.Mode;
  if (session_.Window.CurrentPage() == Page::GroundPath) SelectTimeframe(Timeframe::Manual);
}

void TTabSheetMap::SetBackdrop(const QImage& picture) { ui_.PaintBoxGrid->SetBackdrop(picture); }

void TTabSheetMap::PanelWorldMapResize() {
  const QRect inside = ui_.PanelWorldMap->contentsRect();
  frame_ = {inside.width(), inside.height(), session_.Map.PacificCentred};
  ui_.PaintBoxGrid->setGeometry(inside);
  ui_.PaintBoxGrid->SetFrame(frame_);
  ui_.PaintBoxSats->setGeometry(inside);
  RepaintSatellites();
}

void TTabSheetMap::FocusMakePicture() { ui_.ButtonMapToPicture->setFocus(); }

void TTabSheetMap::ButtonMapToPictureClick() {
  session_.Window.ShowGroundPath(session_.Map.CurrentTime, ui_.ComboBoxSatForMap->currentIndex());
}

// ------------------------------------------------------------------------------------- its time

void TTabSheetMap::SetTimeframe(Timeframe mode) {
  SelectTimeframe(mode);
  if (mode == Timeframe::FromFile) AskForFile();
}

void TTabSheetMap::SelectTimeframe(Timeframe mode) {
  session_.Map.Mode = mode;
  if (mode == Timeframe::RealTime) {
    ui_.TimerStep->start(map::kFirstStepMs);
  } else {
    ui_.TimerStep->stop();
  }
  ui_.RadioGroupTimeframe->button(static_cast<int>(mode))->setChecked(true);
}

void TTabSheetMap::AskForFile() {
  const QStringList filters{QStringLiteral("Picture files (*.bmp *.jpg *.jpeg *.png)"),
                            QStringLiteral("All files (*)")};
  const QStringList folders = app::FromCommaText(session_.Settings.ImagePathList.Value);
  const auto path = Boxes().OpenFile(QStringLiteral("Choose a satellite image to take the map's time from"),
                                     folders.value(0), filters, 0);
  if (!path) return;
  TurnTo(map::MapTimeOfPicture(*path));
  RepaintSatellites();
}

void TTabSheetMap::RadioGroupTimeframeClick(int item) { SetTimeframe(static_cast<Timeframe>(item)); }

void TTabSheetMap::IntervalChanged() {
  ui_.TimerStep->setInterval(map::StepIntervalMs(session_.Settings.UpdateInterval.Value));
}

void TTabSheetMap::TimerStepTimer() {
  ui_.TimerStep->stop();
  IntervalChanged();
  TurnTo(session_.Now());
  RepaintSatellites();
  ui_.TimerStep->start();
}

void TTabSheetMap::TurnTo(orbit::TDateTime moment) {
  session_.Map.CurrentTime = moment;
  const QString hint = app::LocalTimeHint(moment, session_.TimeZone);
  for (QDateTimeEdit* picker : {static_cast<QDateTimeEdit*>(ui_.DateTimePickerMapDate),
                                static_cast<QDateTimeEdit*>(ui_.DateTimePickerMapTime)}) {
    // What is half typed stays.
    if (picker->hasAcceptableInput()) session::TurnPicker(picker, moment);
    session::Hinted(picker, hint);
  }
}

void TTabSheetMap::DateTimePickerMapDateChange() {
  SetManualTime(
      session::ChangedMoment(ui_.DateTimePickerMapDate, ui_.DateTimePickerMapTime, session_.Map.CurrentTime));
}

void TTabSheetMap::SetMapTime(orbit::TDateTime moment) { SetManualTime(orbit::CutToMinute(moment)); }

void TTabSheetMap::SetManualTime(orbit::TDateTime moment) {
  SetTimeframe(Timeframe::Manual);
  TurnTo(moment);
  RepaintSatellites();
}

void TTabSheetMap::DateTimePickerMapDateClick() { ui_.TimerStep->stop(); }

void TTabSheetMap::DateTimePickerMapKeyPress() {
  // Seconds that went back to 0 at the second digit would take the cursor along, and so would the clock.
  if (session_.Map.Mode == Timeframe::RealTime) SetManualTime(orbit::CutToMinute(session_.Map.CurrentTime));
}

void TTabSheetMap::DateTimePickerMapDateExit() {
  const bool stands = session_.Map.Mode == Timeframe::RealTime && !ui_.TimerStep->isActive();
  if (stands && !session_.Run.Closing) SelectTimeframe(Timeframe::RealTime);
}

// ------------------------------------------------------------------------------- its satellites

void TTabSheetMap::ActiveSatellitesChanged() {
  setsDay_.reset();
  ui_.PaintBoxSats->Clear();
  session::FillChooser(ui_.ComboBoxSatForMap, session_.Active(), session_.SelectedIndex());
}

void TTabSheetMap::ComboBoxSatForMapChange() {
  session_.ChooseSatellite(ui_.ComboBoxSatForMap->currentIndex());
}

void TTabSheetMap::SatelliteChosen() {
  session::SelectQuietly(ui_.ComboBoxSatForMap, session_.SelectedIndex());
  RepaintSatellites();
}

void TTabSheetMap::PaintBoxSatsMouseUp(QPoint position) {
  const orbit::TSatellite* found = map::SatelliteAt(ui_.PaintBoxSats->Plot(), frame_, position);
  if (found == nullptr) return;
  session_.ChooseSatellite(static_cast<int>(found - SetsOfDay().data()));
}

void TTabSheetMap::FootprintLevelChanged() { RepaintSatellites(); }

const std::vector<orbit::TSatellite>& TTabSheetMap::SetsOfDay() {
  const orbit::TDateTime day = DatePart(session_.Map.CurrentTime);
  if (!setsDay_ || setsDay_->Days != day.Days) {
    sets_ = session_.ActiveSetsFor(day, 1);
    setsDay_ = day;
    keeper_.Forget();
  }
  return sets_;
}

const orbit::TSatellite* TTabSheetMap::SelectedOfDay() {
  const int index = session_.SelectedIndex();
  return index < 0 ? nullptr : &SetsOfDay()[static_cast<std::size_t>(index)];
}

void TTabSheetMap::RepaintSatellites() {
  if (!isVisible()) return;
  const int level = session_.Settings.FootprintShowLevel.Value;
  std::vector<const orbit::TSatellite*> satellites;
  for (const orbit::TSatellite& set : SetsOfDay()) satellites.push_back(&set);
  const map::Sky& sky = keeper_.At(satellites, session_.Map.CurrentTime, map::TrailMinutes(level));
  ui_.PaintBoxSats->SetPlot(
      map::PlotSatellites(sky, frame_, SelectedOfDay(), level, ui_.PaintBoxSats->Measure()));
  const QString tip = map::NotDrawableTip(sky.NotDrawable);
  // Names come from files and are no markup.
  ui_.PaintBoxSats->setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
  ui_.PaintBoxSats->setStatusTip(tip);
  ShowInfo(sky);
}

void TTabSheetMap::ShowInfo(const map::Sky& sky) {
  const orbit::TSatellite* selected = SelectedOfDay();
  if (selected == nullptr) return;
  const map::TrackedSatellite* tracked = sky.Find(selected);
  if (tracked == nullptr) {
    session_.Window.SetStatus(map::NotDrawableTip({QString::fromStdString(selected->Name)}));
    session_.Window.SetTitle(kMapTitle);
    return;
  }
  const map::SatelliteInfo info = map::InfoOf(*selected, tracked->State, sky.Jd, session_.Station.Place);
  const QString tip = ui_.PaintBoxSats->underMouse() ? ui_.PaintBoxSats->statusTip() : QString();
  session_.Window.SetStatus(tip.isEmpty() ? info.StatusText : info.StatusText + QStringLiteral("  ") + tip);
  session_.Window.SetTitle(info.Title);
}

}  // namespace pelorin::desktop
