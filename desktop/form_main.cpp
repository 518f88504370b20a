#include "desktop/form_main.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPrinter>
#include <QScreen>
#include <QTabWidget>
#include <utility>

#include "app/command_line.h"
#include "app/element_address.h"
#include "app/program_paths.h"
#include "desktop/about_box.h"
#include "desktop/help/help.h"
#include "desktop/icon.h"
#include "desktop/map/tab_sheet_map.h"
#include "desktop/overlay/form_overlay_text_options.h"
#include "desktop/overlay/tab_sheet_flight.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "desktop/passes/form_ephemeris.h"
#include "desktop/passes/form_sat_keps_summary.h"
#include "desktop/passes/form_set_flight_time.h"
#include "desktop/passes/form_update_keplers.h"
#include "desktop/passes/group_box_passes.h"
#include "desktop/tab_sheet_debug.h"
#include "desktop/tab_sheet_setup.h"
#include "elements/stale_elements.h"
#include "map/map_projection.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Guarded;
using session::Handle;
using session::Page;
using session::Timeframe;

const QString kCaption = QStringLiteral("Pelorin - Quillfen's Satellite Tracker and Ground Image Generator");

/// Selected on the ground-path page at the start, where it is active.
const QString kUsualPictureSatellite = QStringLiteral("NOAA 15");

/// How long a run that found nothing to do waits for somebody to read why.
constexpr int kUnattendedMinutes = 10;

constexpr QSize kFirstSize(1120, 760);
/// What the desktop puts round a window.
constexpr QSize kFrameRoom(16, 48);

QString NameOf(const QString& programPath) { return QFileInfo(programPath).completeBaseName(); }

}  // namespace

TFormMain::TFormMain(Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      programFolder_(QFileInfo(surroundings_.ProgramPath).absolutePath() + u'/'),
      settings_(surroundings_.Store, NameOf(surroundings_.ProgramPath), app::FoldersFor(programFolder_)),
      session_(std::make_unique<session::Session>(
          settings_,
          surroundings_.Unattended != nullptr ? surroundings_.Unattended->Boxes() : surroundings_.Boxes,
          *this, surroundings_.Now, surroundings_.Unattended)) {
  setObjectName(QStringLiteral("FormMain"));
  setWindowIcon(ApplicationIcon());
  UpdateCaption();
  if (surroundings_.ApplyLook) surroundings_.ApplyLook(static_cast<Look>(settings_.WindowColours.Value));
  ui_.Build(this);
  BuildPages();
  ConnectHandlers();
  if (session_->Unattended != nullptr) {
    Handle(session_->Unattended, &session::UnattendedRun::GivenUp, this, &TFormMain::CloseWindow);
  }
  FormCreate();
}

TFormMain::~TFormMain() { FormDestroy(); }

void TFormMain::BuildPages() {
  session::Session& session = *session_;
  TabSheetSetup = session::Named(new TTabSheetSetup(session, this), "TabSheetSetup");
  TabSheetMap = session::Named(new TTabSheetMap(session, this), "TabSheetMap");
  TabSheetDebug = session::Named(new TTabSheetDebug(session, this), "TabSheetDebug");
  TabSheetGroundPath = session::Named(new TTabSheetGroundPath(session, this), "TabSheetGroundPath");
  TabSheetFlight = session::Named(new TTabSheetFlight(session, this), "TabSheetFlight");
  ui_.PageControl->addTab(TabSheetSetup, QStringLiteral(" Setup "));
  ui_.PageControl->addTab(TabSheetMap, QStringLiteral(" World Map "));
  ui_.PageControl->addTab(TabSheetDebug, QStringLiteral("Debug"));
  ui_.PageControl->addTab(TabSheetGroundPath, QStringLiteral("Ground Path"));
  ui_.PageControl->addTab(TabSheetFlight, QStringLiteral("Flight"));
}

void TFormMain::ConnectHandlers() {
  Handle(ui_.PageControl, &QTabWidget::currentChanged, this, &TFormMain::PageControlChange);
  Handle(ui_.Open1, &QAction::triggered, this, &TFormMain::Open1Click);
  Handle(ui_.FilePrintImage, &QAction::triggered, this, &TFormMain::FilePrintImageClick);
  Handle(ui_.FilePrintPassList, &QAction::triggered, this, &TFormMain::FilePrintPassListClick);
  Handle(ui_.FilePrintSetup, &QAction::triggered, this, &TFormMain::FilePrintSetupClick);
  Handle(ui_.Exit1, &QAction::triggered, this, &TFormMain::Exit1Click);
  Handle(ui_.FootprintGroup, &QActionGroup::triggered, this, &TFormMain::FootprintChanged);
  Handle(ui_.IntervalGroup, &QActionGroup::triggered, this, &TFormMain::IntervalChanged);
  Handle(ui_.MenuSavePassDetails, &QAction::triggered, this, &TFormMain::MenuSavePassDetailsClick);
  Handle(ui_.MenuShowOverlay, &QAction::triggered, this, &TFormMain::MenuShowOverlayClick);
  Handle(ui_.MenuOverlayLinesOnly, &QAction::triggered, this, &TFormMain::MenuOverlayLinesOnlyClick);
  Handle(ui_.OptionsTextOverlay, &QAction::triggered, this, &TFormMain::OptionsTextOverlayClick);
  Handle(ui_.OptionsUpdateKeplers, &QAction::triggered, this, &TFormMain::OptionsUpdateKeplersClick);
  Handle(ui_.ViewSatelliteData, &QAction::triggered, this, &TFormMain::ViewSatelliteDataClick);
  Handle(ui_.LookGroup, &QActionGroup::triggered, this, &TFormMain::LookChanged);
  Handle(ui_.HelpIntroduction, &QAction::triggered, this, &TFormMain::HelpIntroductionClick);
  Handle(ui_.HelpContents, &QAction::triggered, this, &TFormMain::HelpContentsClick);
  Handle(ui_.HelpIndex, &QAction::triggered, this, &TFormMain::HelpIndexClick);
  Handle(ui_.HelpFAQs, &QAction::triggered, this, &TFormMain::HelpFAQsClick);
  Handle(ui_.HelpPage, &QAction::triggered, this, &TFormMain::HelpPageClick);
  Handle(ui_.HelpAbout, &QAction::triggered, this, &TFormMain::HelpAboutClick);
  Handle(ui_.ShowDebug, &QAction::triggered, this, [](TFormMain* form) { form->ShowPage(Page::Debug); });
}

// ---------------------------------------------------------------------------- start and end

void TFormMain::FormCreate() {
  session::Session& session = *session_;
  const TellStatus& tellStatus = surroundings_.TellSplash;
  app::RegisterAppPath(surroundings_.Store, NameOf(surroundings_.ProgramPath), surroundings_.ProgramPath);
  const bool isFirstRun = app::ReplaceUnsavedHeight(settings_.ObserverHeight.Value);
  ShowPage(isFirstRun ? Page::Setup : Page::WorldMap);
  TabSheetSetup->Restore();
  session.Map.PacificCentred = map::IsPacificCentred(session.Station.Texts.Longitude.toDouble());

  MakeDefaultFolders(settings_);
  LoadSatelliteData(session, tellStatus);
  if (isFirstRun && session.Unattended == nullptr) {
    OfferDemonstrationElements(session, programFolder_, tellStatus);
  }
  ShowLeftOut();
  RestoreMenus();
  session.RestoreActive();

  ground_.TopographyFile = FindTopographyFile(programFolder_);
  ground_.Backdrop = LoadMapBackdrop(session, programFolder_, !ground_.TopographyFile.isEmpty(), tellStatus);
  TabSheetMap->SetBackdrop(session.Map.PacificCentred ? map::TurnedByHalf(ground_.Backdrop.Picture)
                                                      : ground_.Backdrop.Picture);
  SetStartTime();
  session.TimeZone = surroundings_.TimeZone;
  if (const int index = session.Following().IndexOf(kUsualPictureSatellite); index >= 0) {
    TabSheetGroundPath->ChooseSatellite(index);
  }
  ConnectTopography(session, ground_, tellStatus);
  OpenMaster(session, ground_, programFolder_, tellStatus);
  ui_.MenuShowOverlay->setVisible(ground_.Master.has_value());
  ui_.MenuOverlayLinesOnly->setVisible(ground_.Master.has_value());
  TabSheetGroundPath->SetSources(ground_.Sources());
  TabSheetFlight->SetSources(ground_.Sources());

  TabSheetSetup->Passes().StartFirstList();
  RestoreWindow();
  session.Map.ModeToRestore = Timeframe::RealTime;
}

void TFormMain::ShowLeftOut() {
  const QStringList texts = elements::LeftOutTexts(session_->LeftOut());
  ui_.StatusElements->setVisible(!texts.isEmpty());
  ui_.StatusElements->setText(QStringLiteral("Left out of the elements: %1").arg(texts.size()));
  const QString tip = texts.join(u'\n');
  // Names come from files and are no markup.
  ui_.StatusElements->setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
}

void TFormMain::RestoreMenus() {
  ui_.MenuSavePassDetails->setChecked(settings_.SavePassDetails.Value);
  ui_.MenuShowOverlay->setChecked(settings_.ShowOverlay.Value);
  ui_.MenuOverlayLinesOnly->setChecked(settings_.OverlayLinesOnly.Value);
  const int level = settings_.FootprintShowLevel.Value;
  if (level >= 0 && level < static_cast<int>(ui_.MenuFootprint.size())) {
    ui_.MenuFootprint[static_cast<std::size_t>(level)]->setChecked(true);
  }
  for (std::size_t index = 0; index < ui_.MenuInterval.size(); ++index) {
    ui_.MenuInterval[index]->setChecked(map::kUpdateIntervals[index] == settings_.UpdateInterval.Value);
  }
  const auto look = static_cast<std::size_t>(settings_.WindowColours.Value);
  if (look < ui_.MenuLook.size()) ui_.MenuLook[look]->setChecked(true);
  TabSheetMap->IntervalChanged();
}

void TFormMain::RestoreWindow() {
  resize(kFirstSize.boundedTo(screen()->availableSize() - kFrameRoom));
  setMinimumSize(minimumSizeHint().expandedTo(QSize(640, 480)));
  restoreGeometry(QByteArray::fromBase64(settings_.WindowPlace.Value.toLatin1()));
  PageControlChange();
}

void TFormMain::SetStartTime() {
  session::Session& session = *session_;
  session.Map.CurrentTime = session.Now();
  if (session.Unattended != nullptr) {
    try {
      const std::string passString = session.Unattended->PassString().toStdString();
      session.Map.CurrentTime = orbit::ParseTimeString(passString, session.Map.CurrentTime);
    } catch (const orbit::ConvertError&) {
      // The window, once it is seen, says that this is no pass.
    }
  }
  TabSheetSetup->Passes().SetPassDate(session.Map.CurrentTime);
  TabSheetGroundPath->SetPassTime(session.Map.CurrentTime);
}

void TFormMain::CreateForms() {
  FormSetFlightTime = new TFormSetFlightTime(*session_, this);
  FormSatKepsSummary = new TFormSatKepsSummary(*session_, this);
  FormOverlayTextOptions = new TFormOverlayTextOptions(*session_, this);
  AboutBoxQuillfen = session::Named(new TAboutBoxQuillfen(this), "AboutBoxQuillfen");
  FormEphemeris = new TFormEphemeris(*session_, this);
  FormUpdateKeplers =
      new TFormUpdateKeplers(*session_, app::ElementAddress(settings_), app::UserDataFolder(), this);
}

void TFormMain::FormShow() {
  if (session_->Unattended == nullptr) {
    CheckStaleElements();
    SetTimeframe(Timeframe::RealTime);
    return;
  }
  SetTimeframe(Timeframe::Manual);
  try {
    FindPassOfCommandLine(session_->Unattended->PassString());
  } catch (const std::exception& error) {
    HandOver(QString::fromUtf8(error.what()), &session::Prompts::Error);
  }
  if (!session_->MakesMapUnattended() && !session_->Run.Closing) SetTimeframe(Timeframe::RealTime);
}

void TFormMain::FindPassOfCommandLine(const QString& passString) {
  session::Session& session = *session_;
  TGroupBoxPasses& passes = TabSheetSetup->Passes();
  while (!session.Run.PassListMade && !passes.IsSettled() && !session.Run.Closing) {
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  if (session.Run.Closing) return;
  app::PassMatch match;
  try {
    match = app::FindPassByString(passString, passes.Entries(), session.Now());
  } catch (const orbit::ConvertError& error) {
    return HandOver(
        QStringLiteral("The pass string %1 is no time: %2. It must be of the form mmddhhnn or mmddhhnnss, "
                       "with or without the year before it.")
            .arg(passString, QString::fromUtf8(error.what())),
        &session::Prompts::Error);
  }
  session.Map.CurrentTime = match.Time;
  if (match.Index < 0) return HandOver(app::NoMatchText(passString, match.Key), &session::Prompts::Message);
  passes.SelectPass(match.Index);
  passes.ButtonPicFromPassClick();
  session.Unattended->PassFound();
}

void TFormMain::HandOver(const QString& reason, session::UnattendedRun::Box box) {
  session_->Unattended->HandOver(reason, box, kUnattendedMinutes);
}

void TFormMain::CheckStaleElements() {
  const double now = orbit::JulianDateOfDateTime(session_->LocalNow());
  if (elements::LargestElementAge(session_->Satellites(), now) <= elements::kStaleAfterDays) return;
  if (Boxes().RetryOrIgnore(elements::StaleElementsText(), elements::kStaleElementsHelp))
    OptionsUpdateKeplersClick();
}

void TFormMain::FormCloseQuery() { session_->Run.Closing = true; }

void TFormMain::FormDestroy() {
  session_->Run.Closing = true;
  settings_.WindowPlace.Value = QString::fromLatin1(saveGeometry().toBase64());
  TabSheetSetup->Store();
  settings_.Save();
  // Pages and dialogs look at the session until they are gone.
  for (QDialog* form : findChildren<QDialog*>(Qt::FindDirectChildrenOnly)) delete form;
  delete takeCentralWidget();
}

// ------------------------------------------------------------------- what pages ask of each other

void TFormMain::ShowPage(Page page) { ui_.PageControl->setCurrentIndex(static_cast<int>(page)); }

Page TFormMain::CurrentPage() const { return static_cast<Page>(ui_.PageControl->currentIndex()); }

void TFormMain::SetTitle(const QString& title) {
  title_ = title;
  UpdateCaption();
}

void TFormMain::UpdateCaption() { setWindowTitle(isMinimized() && !title_.isEmpty() ? title_ : kCaption); }

void TFormMain::SetStatus(const QString& text) { ui_.StatusText->setText(text); }

QString TFormMain::Status() const { return ui_.StatusText->text(); }

void TFormMain::UpdateObserverDetails() { TabSheetSetup->UpdateObserverDetails(); }

void TFormMain::SetMapTime(orbit::TDateTime moment) { TabSheetMap->SetMapTime(moment); }

void TFormMain::FocusMakePicture() { TabSheetMap->FocusMakePicture(); }

void TFormMain::MakePictureFromMap() { TabSheetMap->ButtonMapToPictureClick(); }

void TFormMain::ShowGroundPath(orbit::TDateTime moment, int satellite) {
  ShowPage(Page::GroundPath);
  if (!session_->RefusesWhileMakingMap()) TabSheetGroundPath->ShowFor(moment, satellite);
}

void TFormMain::SetTimeframe(Timeframe mode) { TabSheetMap->SetTimeframe(mode); }

void TFormMain::StopFlight() { TabSheetFlight->StopFlight(); }

void TFormMain::FocusRunFlight() { TabSheetFlight->FocusRunFlight(); }

void TFormMain::PrintPassList() { FilePrintPassListClick(); }

QPrinter& TFormMain::Printer() {
  // Looking for printers takes a while; most runs need none.
  if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  return *printer_;
}

void TFormMain::CloseWindow() {
  // A box that waits holds the message loop.
  for (QWidget* box = QApplication::activeModalWidget(); box != nullptr && box->close();) {
    box = QApplication::activeModalWidget();
  }
  close();
}

bool TFormMain::AskFlightStart(orbit::TDateTime& start) {
  if (FormSetFlightTime->exec() != QDialog::Accepted) return false;
  start = FormSetFlightTime->FlightStartTime;
  return true;
}

// ------------------------------------------------------------------------------------ events

void TFormMain::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (std::exchange(wasShown_, true)) return;
  // Boxes that come up wait until the window can be seen.
  QMetaObject::invokeMethod(
      this, [this] { Guarded(Boxes(), [this] { FormShow(); }); }, Qt::QueuedConnection);
}

void TFormMain::closeEvent(QCloseEvent* event) {
  FormCloseQuery();
  event->accept();
}

void TFormMain::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange) UpdateCaption();
}

void TFormMain::keyPressEvent(QKeyEvent* event) {
  FormKeyPress(event->key());
  QMainWindow::keyPressEvent(event);
}

void TFormMain::FormKeyPress(int key) {
  if (key == Qt::Key_Escape) session_->Run.AbortRequested = true;
}

void TFormMain::PageControlChange() {
  ui_.PageControl->setTabVisible(static_cast<int>(Page::Debug), CurrentPage() == Page::Debug);
  const bool hasPicture = CurrentPage() == Page::GroundPath;
  ui_.Open1->setVisible(hasPicture);
  ui_.FilePrintImage->setVisible(hasPicture);
}

}  // namespace pelorin::desktop
