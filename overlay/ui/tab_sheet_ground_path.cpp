#include "overlay/ui/tab_sheet_ground_path.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateTimeEdit>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "app/session/controls.h"
#include "app/session/picker_time.h"
#include "map/satellite_info.h"
#include "orbit/time_stamp.h"
#include "overlay/image/picture_file.h"
#include "overlay/overlay_outputs.h"
#include "overlay/overlay_text.h"
#include "overlay/picture_lookup.h"
#include "overlay/ui/overlay_choices.h"
#include "overlay/ui/picture_panes.h"
#include "overlay/ui/picture_print.h"
#include "overlay/ui/time_correction_box.h"

namespace pelorin::ui {
namespace {

using session::Handle;

/// The hourglass, while this lives.
class Hourglass {
 public:
  Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
};

/// A map has hundreds of lines for each picture that a screen can show: as often as nobody notices a delay.
constexpr int kPumpEveryMs = 12;

orbit::TDateTime ToMinute(orbit::TDateTime moment) {
  const orbit::DateTimeFields fields = orbit::TakeApart(moment);
  return orbit::MakeDateTime(fields.Year, fields.Month, fields.Day, fields.Hour, fields.Minute);
}

QString Stamp(orbit::TDateTime moment) { return QString::fromStdString(orbit::StampOf(moment)); }

QString MomentText(const char* pattern, orbit::TDateTime moment) {
  return QString::fromStdString(orbit::FormatDateTime(pattern, moment));
}

}  // namespace

TTabSheetGroundPath::TTabSheetGroundPath(session::Session& session, QWidget* parent)
    : TTabSheet(session, parent), correction_(session.Settings.ClockCorrections.Value) {
  setObjectName(QStringLiteral("TabSheetGroundPath"));
  ui_.Build(this);
  using Page = TTabSheetGroundPath;
  Handle(this, &TTabSheet::Shown, this, &Page::TabSheetGroundPathShow);
  Handle(this, &TTabSheet::Hidden, this, &Page::TabSheetGroundPathHide);
  Handle(&session, &session::Session::ActiveSatellitesChanged, this, &Page::ActiveSatellitesChanged);
  Handle(&session, &session::Session::PassDirectionChanged, this, &Page::PassDirectionChanged);
  Handle(&session, &session::Session::PassDurationChanged, this, &Page::PassDurationChanged);

  Handle(ui_.DateTimePickerDate, &QDateTimeEdit::dateChanged, this, &Page::DateTimePickerTimeChange);
  Handle(ui_.DateTimePickerTime, &QDateTimeEdit::timeChanged, this, &Page::DateTimePickerTimeChange);
  Handle(ui_.SpinEditPassDuration, &QSpinBox::editingFinished, this, &Page::SpinEditPassDurationExit);
  Handle(ui_.ButtonPassDirection, &QPushButton::clicked, this, &Page::ButtonPassDirectionClick);
  Handle(ui_.ButtonGenTopo, &QPushButton::clicked, this, &Page::ButtonGenTopoClick);
  Handle(ui_.Channels, &QButtonGroup::idClicked, this, &Page::RadioGroupPrefPicChannelClick);
  Handle(ui_.ButtonReload, &QPushButton::clicked, this, &Page::ButtonReloadClick);
  Handle(ui_.GroupBoxTimeCorrection, &TTimeCorrectionBox::Changed, this, &Page::TimeCorrectionChanged);
  Handle(ui_.CheckBoxZoom, &QCheckBox::toggled, this, &Page::CheckBoxZoomClick);
  Handle(ui_.CheckBoxScrollBoth, &QCheckBox::toggled, this, &Page::CheckBoxScrollBothClick);
  Handle(ui_.SliderOpacity, &QSlider::valueChanged, this, &Page::SliderOpacityChange);
  Handle(ui_.CheckBoxOverlaid, &QCheckBox::toggled, this, &Page::CheckBoxOverlaidClick);
  Handle(ui_.ButtonFlicker, &QPushButton::clicked, this, &Page::ButtonFlickerClick);
  Handle(ui_.ButtonSaveBlend, &QPushButton::clicked, this, &Page::ButtonSaveBlendClick);
  Handle(ui_.TimerLoad, &QTimer::timeout, this, &Page::TimerLoadTimer);
  Handle(ui_.TimerSaveResults, &QTimer::timeout, this, &Page::TimerSaveResultsTimer);
  EnableControls();
}

void TTabSheetGroundPath::SetSources(const overlay::OverlaySources& sources) { sources_ = sources; }

void TTabSheetGroundPath::SetPassTime(orbit::TDateTime moment) {
  passTime_ = ToMinute(moment);
  session::TurnPicker(ui_.DateTimePickerDate, passTime_);
  session::TurnPicker(ui_.DateTimePickerTime, passTime_);
}

void TTabSheetGroundPath::ChooseSatellite(int index) { session::SelectQuietly(ui_.ComboBoxSatForPic, index); }

void TTabSheetGroundPath::ShowFor(orbit::TDateTime moment, int satellite) {
  SetPassTime(moment);
  ChooseSatellite(satellite);
  session_.PictureKey = Stamp(passTime_);
  if (session_.Run.CommandLineMode) {
    ui_.TimerLoad->start();
  } else {
    LoadPicture(session_.PictureKey);
  }
}

// ------------------------------------------------------------------------- following the session

void TTabSheetGroundPath::TabSheetGroundPathShow() {
  session_.Window.SetTitle(QStringLiteral("Pelorin - ground path"));
  session_.Window.SetTimeframe(session::Timeframe::Manual);
}

void TTabSheetGroundPath::TabSheetGroundPathHide() {
  if (ui_.TimerSaveResults->isActive()) TimerSaveResultsTimer();
}

void TTabSheetGroundPath::ActiveSatellitesChanged() {
  session::FillChooser(ui_.ComboBoxSatForPic, session_.Active(), session_.Active().empty() ? -1 : 0);
}

void TTabSheetGroundPath::PassDirectionChanged() {
  ui_.ButtonPassDirection->setText(DirectionCaption(session_.Pass.SouthBound));
}

void TTabSheetGroundPath::PassDurationChanged() {
  ui_.SpinEditPassDuration->setValue(session_.Pass.PassDurationMinutes);
}

// ----------------------------------------------------------------------------------- the picture

QString TTabSheetGroundPath::CurrentKey() const {
  return session_.PictureKey.isEmpty() ? Stamp(passTime_) : session_.PictureKey;
}

void TTabSheetGroundPath::LoadPicture(const QString& key) {
  hasPictureOfPass_ = false;
  QString path = openedPath_;
  if (key != openedKey_ || !QFileInfo(path).isFile()) {
    const auto restore =
        qScopeGuard([this, before = session_.Window.Status()] { session_.Window.SetStatus(before); });
    Q_EMIT session_.PictureSearchBegun();
    path = overlay::LookUpPicture(
        key, ui_.Channels->checkedId(), app::FromCommaText(session_.Settings.ImagePathList.Value),
        session_.TimeZone.StandardOffsetMinutes, session_.TimeZone.DaylightOffsetMinutes,
        [this](const QString& baseName) {
          session_.Window.SetStatus(QStringLiteral("Searching your specified folders for: ") + baseName +
                                    QStringLiteral(".*"));
          Q_EMIT session_.PictureSearched(baseName);
        });
  }
  if (path.isEmpty()) {
    BeginCorrection(key);
    const QString shown = QFileInfo(shownPath_).fileName();
    ui_.Panes->SetPictureTitle(QStringLiteral("No picture was found for ") + key +
                               (shown.isEmpty() ? QString() : QStringLiteral("; this is still ") + shown));
    return;
  }
  ShowPictureFile(path);
}

void TTabSheetGroundPath::ShowPictureFile(const QString& path) {
  const Hourglass hourglass;
  ui_.Panes->SetPicture(image::LoadPicture(path), path);
  hasPictureOfPass_ = true;
  shownPath_ = path;
  const QString name = QFileInfo(path).fileName();
  ui_.Panes->SetPictureTitle(QStringLiteral("Picture: ") + name);
  BeginCorrection(name);
  EnableControls();
}

void TTabSheetGroundPath::BeginCorrection(const QString& name) {
  // Pictures of other channels are of the same recording.
  const auto end = std::find_if_not(name.begin(), name.end(), [](QChar c) { return c.isDigit(); });
  const QString recording = name.left(end - name.begin());
  if (recording == correctedRecording_) return;
  correctedRecording_ = recording;
  ui_.GroupBoxTimeCorrection->SetSeconds(correction_.Begin(ui_.ComboBoxSatForPic->currentText(),
                                                           orbit::SecondsOfStamp(recording.toStdString())));
}

void TTabSheetGroundPath::DateTimePickerTimeChange() {
  const QTime time = ui_.DateTimePickerTime->time();
  SetPassTime(
      orbit::SteppedTime(session::PickedDay(ui_.DateTimePickerDate), time.hour(), time.minute(), passTime_));
  ButtonReloadClick();
}

void TTabSheetGroundPath::ButtonReloadClick() {
  session_.PictureKey = Stamp(passTime_);
  LoadPicture(session_.PictureKey);
}

void TTabSheetGroundPath::RadioGroupPrefPicChannelClick() { LoadPicture(CurrentKey()); }

void TTabSheetGroundPath::TimerLoadTimer() {
  if (session_.Run.Closing || IsBusy()) return;
  if (session_.Run.AutomaticRun) {
    ButtonGenTopoClick();
  } else {
    LoadPicture(CurrentKey());
  }
}

void TTabSheetGroundPath::Open1Click() {
  const QStringList filters{QStringLiteral("Bitmap files (*.bmp)"), QStringLiteral("JPEG files (*.jpg)"),
                            QStringLiteral("Portable Network Graphic files (*.png)"),
                            QStringLiteral("Picture files (*.bmp *.jpg *.png)")};
  const QStringList folders = app::FromCommaText(session_.Settings.ImagePathList.Value);
  const auto path = Boxes().OpenFile(QStringLiteral("Choose a satellite image to load"), folders.value(0),
                                     filters, static_cast<int>(filters.size()) - 1);
  if (!path) return;
  const QFileInfo file(*path);
  SetPassTime(orbit::TimeOfStamp(file.fileName().toStdString(), file.lastModified().date().year()));
  openedPath_ = *path;
  openedKey_ = session_.PictureKey = file.fileName();
  LoadPicture(openedKey_);
}

// --------------------------------------------------------------------------------------- the map

overlay::OverlayRequest TTabSheetGroundPath::Request() const {
  const app::Settings& settings = session_.Settings;
  overlay::OverlayRequest request;
  const auto chosen = static_cast<std::size_t>(ui_.ComboBoxSatForPic->currentIndex());
  request.Satellite = *session_.Active().at(chosen).Satellite;
  request.Station = session_.Station.Place;
  request.Start = {passTime_.Days + ui_.GroupBoxTimeCorrection->Seconds() / 86400};
  request.DurationMinutes = ui_.SpinEditPassDuration->value();
  request.SouthBound = session_.Pass.SouthBound;
  if (hasPictureOfPass_ && !session_.Run.AutomaticRun) {
    request.LineLimit = ui_.Panes->Picture().height();
    request.Width = std::max(ui_.Panes->Picture().width(), request.Width);
  }
  request.Overlay = ChosenMarks(settings);
  request.PassDetails = settings.SavePassDetails.Value || session_.Run.AutomaticRun;
  for (std::size_t line = 0; line < request.TextItems.size(); ++line) {
    request.TextItems[line] = overlay::MaskItems(settings.OvlTextLine[line].Value);
  }
  return request;
}

void TTabSheetGroundPath::ButtonGenTopoClick() {
  againRequested_ = false;
  if (IsBusy()) {
    stopRequested_ = true;
  } else if (session_.Run.AutomaticRun) {
    session::Guarded(Boxes(), [this] { MakeMap(); });
    session_.Window.CloseWindow();
  } else {
    do {
      againRequested_ = false;
      MakeMap();
    } while (againRequested_ && !session_.Run.Closing);
  }
}

void TTabSheetGroundPath::MakeMap() {
  if (ui_.ComboBoxSatForPic->currentIndex() < 0) {
    Boxes().Message(
        QStringLiteral("There is no satellite to make a map for. Please drag one or more satellites from the "
                       "Available list to the Active list."));
    return;
  }
  session_.Run.MakingMap = true;
  session_.Run.AbortRequested = stopRequested_ = false;
  const Hourglass hourglass;
  ui_.ButtonGenTopo->setText(QStringLiteral("Stop"));
  const auto idle = qScopeGuard([this] {
    session_.Run.MakingMap = stopRequested_ = session_.Run.AbortRequested = false;
    ui_.ButtonGenTopo->setText(QStringLiteral("Make map"));
    EnableControls();
  });
  ui_.TimerSaveResults->stop();
  EnableControls();
  // A map can be made without a picture, too.
  if (!session_.Run.AutomaticRun) session::Guarded(Boxes(), [this] { LoadPicture(CurrentKey()); });
  GenerateLive(Request());
  SaveResults();
}

void TTabSheetGroundPath::GenerateLive(const overlay::OverlayRequest& request) {
  QProgressBar* progress = ui_.ProgressBarMakeMap;
  const int linesPerMinute = request.Satellite.LinesPerMinute;
  const int minutesOfRows = (request.LineLimit + linesPerMinute - 1) / linesPerMinute;
  progress->setRange(
      0, minutesOfRows > 0 ? std::min(minutesOfRows, request.DurationMinutes) : request.DurationMinutes);
  progress->setValue(0);
  bool isTold = false;
  QElapsedTimer sincePump;
  sincePump.start();
  const auto afterLine = [&](const overlay::LineProgress& line) {
    const overlay::OverlayResult& soFar = line.SoFar;
    if (line.Line == 0) ui_.Panes->BeginMap(soFar.Map.size(), QStringLiteral("Map: ") + TitleOf(request));
    if (line.Repaint) ui_.Panes->ShowProgress(soFar.Map, request.SouthBound, soFar.LinesMade);
    if (line.NewMinute) progress->setValue(progress->value() + 1);
    if (!isTold && soFar.MiddleOfPass.Days > 0) {
      isTold = true;
      orbit::TSatellite satellite = request.Satellite;
      session_.Window.SetStatus(map::InfoAt(satellite, soFar.MiddleOfPass, request.Station).StatusText);
    }
    if (sincePump.elapsed() >= kPumpEveryMs) {
      QCoreApplication::processEvents();
      sincePump.start();
    }
    return !stopRequested_ && !session_.Run.AbortRequested && !session_.Run.Closing;
  };
  try {
    ShowResult(request, overlay::GenerateOverlay(request, sources_, afterLine));
    if (!stopRequested_) progress->setValue(progress->maximum());
  } catch (...) {
    ShowMap();
    throw;
  }
}

void TTabSheetGroundPath::ShowResult(const overlay::OverlayRequest& request, overlay::OverlayResult result) {
  result_ = std::move(result);
  madeFor_ = request;
  ShowMap();
  EnableControls();
}

void TTabSheetGroundPath::ShowMap() {
  if (result_) {
    ui_.Panes->SetMap({result_->Map, madeFor_.SouthBound, result_->LinesMade},
                      QStringLiteral("Map: ") + TitleOf(madeFor_));
  } else {
    ui_.Panes->SetMap({}, QStringLiteral("Map"));
  }
}

void TTabSheetGroundPath::SaveResults() {
  overlay::WriteOverlayOutputs(*result_, madeFor_.PassDetails, session_.Settings.ResultsPath.Value);
}

QString TTabSheetGroundPath::TitleOf(const overlay::OverlayRequest& request) const {
  const orbit::TDateTime end{request.Start.Days + request.DurationMinutes / 1440.0};
  return QStringLiteral("%1  %2-%3  %4")
      .arg(QString::fromStdString(request.Satellite.Name), MomentText("yyyy mmm dd  hh:nn:ss", request.Start),
           MomentText("hh:nn:ss", end),
           request.SouthBound ? QStringLiteral("South") : QStringLiteral("North"));
}

void TTabSheetGroundPath::ButtonPassDirectionClick() {
  session_.SetPassDirection(!session_.Pass.SouthBound);
  MakeAgain();
}

void TTabSheetGroundPath::SpinEditPassDurationExit() {
  session_.Pass.PassDurationMinutes = ui_.SpinEditPassDuration->value();
}

void TTabSheetGroundPath::MakeAgain() {
  const bool wasBusy = IsBusy();
  ButtonGenTopoClick();
  againRequested_ = wasBusy;
}

void TTabSheetGroundPath::TimeCorrectionChanged(double seconds) {
  ui_.GroupBoxTimeCorrection->SetSeconds(correction_.Change(seconds));
  session_.Settings.ClockCorrections.Value = correction_.Saved();
  if (IsBusy()) {
    MakeAgain();
  } else if (result_ && ui_.ComboBoxSatForPic->currentIndex() >= 0) {
    // Too quick to be watched; the files follow when the user has found the second.
    const overlay::OverlayRequest request = Request();
    ShowResult(request, overlay::GenerateOverlay(request, sources_));
    ui_.TimerSaveResults->start();
  }
}

void TTabSheetGroundPath::TimerSaveResultsTimer() {
  ui_.TimerSaveResults->stop();
  SaveResults();
}

// ------------------------------------------------------------------------------------- both of them

void TTabSheetGroundPath::EnableControls() {
  const bool areBoth = !ui_.Panes->Picture().isNull() && !ui_.Panes->Map().Map.isNull() && !IsBusy();
  const bool isOverlaid = areBoth && ui_.CheckBoxOverlaid->isChecked();
  ui_.CheckBoxOverlaid->setEnabled(areBoth);
  ui_.SliderOpacity->setEnabled(areBoth);
  ui_.ButtonFlicker->setEnabled(isOverlaid);
  ui_.ButtonSaveBlend->setEnabled(areBoth);
}

void TTabSheetGroundPath::CheckBoxZoomClick() { ui_.Panes->SetZoom(ui_.CheckBoxZoom->isChecked()); }

void TTabSheetGroundPath::CheckBoxScrollBothClick() {
  ui_.Panes->SetScrollBoth(ui_.CheckBoxScrollBoth->isChecked());
}

void TTabSheetGroundPath::SliderOpacityChange() { ui_.Panes->SetOpacity(ui_.SliderOpacity->value()); }

void TTabSheetGroundPath::CheckBoxOverlaidClick() {
  ui_.ButtonFlicker->setChecked(false);
  ui_.Panes->SetMapHidden(false);
  ui_.Panes->SetOverlaid(ui_.CheckBoxOverlaid->isChecked());
  EnableControls();
}

void TTabSheetGroundPath::ButtonFlickerClick() { ui_.Panes->SetMapHidden(ui_.ButtonFlicker->isChecked()); }

void TTabSheetGroundPath::ButtonSaveBlendClick() {
  const QImage blend = ui_.Panes->Blend();
  if (blend.isNull()) return;
  auto path = Boxes().SaveFile(
      QStringLiteral("Save blended picture"), ResultsFile(QStringLiteral("-blend.jpg")),
      {QStringLiteral("JPEG files (*.jpg)"), QStringLiteral("Portable Network Graphic files (*.png)")});
  if (!path) return;
  if (QFileInfo(*path).suffix().isEmpty()) *path += QStringLiteral(".jpg");
  image::SavePicture(blend, *path);
}

QString TTabSheetGroundPath::ResultsFile(const QString& ending) const {
  return app::WithSeparator(session_.Settings.ResultsPath.Value) + Stamp(passTime_) + ending;
}

void TTabSheetGroundPath::PrintImageClick() {
  PicturePage page{
      QStringLiteral("%1  %2 UTC")
          .arg(ui_.ComboBoxSatForPic->currentText(), MomentText("yyyy mmm dd  hh:nn", passTime_)),
      ui_.Panes->Map().Map, ui_.Panes->Picture()};
  if (page.Map.isNull() && page.Picture.isNull()) {
    Boxes().Message(
        QStringLiteral("There is nothing to print yet. Please load a picture or make a map first."));
    return;
  }
  if (result_) page.Caption = TitleOf(madeFor_);
  QPrinter& printer = session_.Window.Printer();
  // Where no printer is known, a page goes to a file.
  const bool isForFile = printer.outputFormat() == QPrinter::PdfFormat && printer.outputFileName().isEmpty();
  if (isForFile) {
    const auto path =
        Boxes().SaveFile(QStringLiteral("Print to a PDF file"), ResultsFile(QStringLiteral(".pdf")),
                         {QStringLiteral("PDF files (*.pdf)")});
    if (!path) return;
    printer.setOutputFileName(*path);
  }
  const auto forget = qScopeGuard([&] {
    if (isForFile) printer.setOutputFileName(QString());
  });
  const Hourglass hourglass;
  PrintPicturePage(printer, page);
}

void TTabSheetGroundPath::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) ui_.ButtonGenTopo->click();
  if (event->key() == Qt::Key_Escape) stopRequested_ = true;
  TTabSheet::keyPressEvent(event);
}

}  // namespace pelorin::ui
