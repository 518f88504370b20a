// The main window's start and end.

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QScreen>
#include <QTabWidget>
#include <QTextDocument>
#include <utility>

#include "app/program_paths.h"
#include "desktop/about_box.h"
#include "desktop/element_renewal.h"
#include "desktop/element_watch.h"
#include "desktop/form_main.h"
#include "desktop/map/tab_sheet_map.h"
#include "desktop/overlay/form_alignments.h"
#include "desktop/overlay/form_overlay_text_options.h"
#include "desktop/overlay/tab_sheet_flight.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "desktop/passes/form_ephemeris.h"
#include "desktop/passes/form_sat_keps_summary.h"
#include "desktop/passes/form_set_flight_time.h"
#include "desktop/passes/form_update_keplers.h"
#include "desktop/passes/group_box_passes.h"
#include "desktop/tab_sheet_setup.h"
#include "elements/element_notes.h"
#include "elements/stale_elements.h"
#include "map/map_projection.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Page;
using session::Timeframe;

/// Selected on the ground-path page at the start, where it is active.
const QString kUsualPictureSatellite = QStringLiteral("NOAA 15");

constexpr QSize kFirstSize(1120, 760);
/// What the desktop puts round a window.
constexpr QSize kFrameRoom(16, 48);

}  // namespace

void TFormMain::FormCreate() {
  session::Session& session = *session_;
  const TellStatus& tellStatus = surroundings_.TellSplash;
  session.TimeZone = surroundings_.TimeZone;
  app::RegisterAppPath(surroundings_.Store, surroundings_.ProgramName(), surroundings_.ProgramPath);
  const bool isFirstRun = app::ReplaceUnsavedHeight(settings_.ObserverHeight.Value);
  ShowPage(isFirstRun ? Page::Setup : Page::WorldMap);
  TabSheetSetup->Restore();
  session.Map.PacificCentred = map::IsPacificCentred(session.Station.Texts.Longitude.toDouble());

  PrepareFolders(session);
  LoadSatelliteData(session, tellStatus);
  LoadSetAgeing(session, programFolder_);
  if (isFirstRun && session.Unattended == nullptr) {
    OfferDemonstrationElements(session, programFolder_, tellStatus);
  }
  RestoreMenus();
  session.RestoreActive();
  if (session.Unattended == nullptr) {
    new ElementWatch(session, this);
    new ElementRenewal(session, ui_.StatusRenewal, this);
    setAcceptDrops(true);
  }

  ground_.TopographyFile = FindTopographyFile(programFolder_);
  ground_.Backdrop = TakeBackdrop(session, std::move(surroundings_.Backdrop), tellStatus);
  TabSheetMap->SetBackdrop(session.Map.PacificCentred ? map::TurnedByHalf(ground_.Backdrop.Picture)
                                                      : ground_.Backdrop.Picture);
  SetStartTime();
  if (const int index = session.Following().IndexOf(kUsualPictureSatellite); index >= 0) {
    TabSheetGroundPath->ChooseSatellite(index);
  }
  ConnectTopography(session, ground_, tellStatus);
  OpenMaster(session, ground_, programFolder_, tellStatus);
  ui_.MenuShowOverlay->setVisible(ground_.Sources.HasMaster());
  ui_.MenuOverlayLinesOnly->setVisible(ground_.Sources.HasMaster());
  ground_.Scanners = LoadScanners(session, programFolder_);
  TabSheetGroundPath->SetSources(ground_.Sources.Borrowed(), ground_.Scanners);
  OpenFineLines(ground_, programFolder_);
  TabSheetGroundPath->SetLines(ground_.Lines ? &*ground_.Lines : nullptr, ground_.NoLines);
  TabSheetFlight->SetSources(ground_.Sources.Borrowed(), ground_.Scanners);

  TabSheetSetup->Passes().StartFirstList();
  RestoreWindow();
  session.Map.ModeToRestore = Timeframe::RealTime;
}

void TFormMain::ShowElementNotes() {
  const elements::ElementNotes notes = session_->NotesOnElements();
  ui_.StatusElements->setVisible(!notes.Line.isEmpty());
  ui_.StatusElements->setText(notes.Line);
  const QString tip = notes.Details.join(u'\n');
  // Names come from files and are no markup.
  ui_.StatusElements->setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
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
  FormAlignments = new TFormAlignments(*session_, this);
  FormOverlayTextOptions = new TFormOverlayTextOptions(*session_, this);
  AboutBoxQuillfen = new TAboutBoxQuillfen(*session_, this);
  FormEphemeris = new TFormEphemeris(*session_, this);
  FormUpdateKeplers = new TFormUpdateKeplers(*session_, this);
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
  TGroupBoxPasses& list = TabSheetSetup->Passes();
  while (!session.Run.PassListMade && !list.IsSettled() && !session.Run.Closing) {
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  if (session.Run.Closing) return;
  passes::PassMatch match;
  try {
    match = list.FindPass(passString);
  } catch (const orbit::ConvertError& error) {
    return HandOver(
        QStringLiteral("The pass string %1 is no time: %2. It must be of the form mmddhhnn or mmddhhnnss, "
                       "with or without the year before it.")
            .arg(passString, QString::fromUtf8(error.what())),
        &session::Prompts::Error);
  }
  session.Map.CurrentTime = match.Time;
  if (match.Entry.isEmpty()) {
    return HandOver(passes::NoMatchText(passString, match.Key), &session::Prompts::Message);
  }
  list.MakePictureOf(match);
  session.Unattended->PassFound();
}

void TFormMain::HandOver(const QString& reason, session::UnattendedRun::Box box) {
  session_->Unattended->HandOver(reason, box, settings_.UnattendedMinutes.Value);
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

}  // namespace pelorin::desktop
