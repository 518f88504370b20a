#include "desktop/form_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPrinter>
#include <QTabWidget>
#include <utility>

#include "app/program_paths.h"
#include "desktop/dropped_elements.h"
#include "desktop/dropped_pictures.h"
#include "desktop/map/tab_sheet_map.h"
#include "desktop/overlay/tab_sheet_flight.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "desktop/passes/form_set_flight_time.h"
#include "desktop/tab_sheet_debug.h"
#include "desktop/tab_sheet_setup.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Handle;
using session::Page;
using session::Timeframe;

const QString kCaption = QStringLiteral("Pelorin - Quillfen's Satellite Tracker and Ground Image Generator");

}  // namespace

TFormMain::TFormMain(Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      programFolder_(QFileInfo(surroundings_.ProgramPath).absolutePath() + u'/'),
      settings_(surroundings_.Store, surroundings_.ProgramName(), app::FoldersFor(programFolder_)),
      session_(std::make_unique<session::Session>(
          settings_,
          surroundings_.Unattended != nullptr ? surroundings_.Unattended->Boxes() : surroundings_.Boxes,
          *this, surroundings_.Now, surroundings_.Unattended)) {
  setObjectName(QStringLiteral("FormMain"));
  UpdateCaption();
  if (surroundings_.ApplyLook) surroundings_.ApplyLook(static_cast<Look>(settings_.WindowColours.Value));
  ui_.Build(this);
  BuildPages();
  ConnectHandlers();
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
  ConnectMenus();
  Handle(session_.get(), &session::Session::ActiveSatellitesChanged, this, &TFormMain::ShowElementNotes);
  if (session_->Unattended != nullptr) {
    Handle(session_->Unattended, &session::UnattendedRun::GivenUp, this, &TFormMain::CloseWindow);
  }
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
      this, [this] { session::Guarded(Boxes(), [this] { FormShow(); }); }, Qt::QueuedConnection);
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

void TFormMain::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData& dragged = *event->mimeData();
  if (!PictureAmong(dragged).isEmpty() || !ElementFilesAmong(dragged).isEmpty())
    event->acceptProposedAction();
}

void TFormMain::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  // The program that they come from waits until this returns.
  QMetaObject::invokeMethod(
      this,
      [this, picture = PictureAmong(*event->mimeData()), files = ElementFilesAmong(*event->mimeData())] {
        session::Guarded(Boxes(), [&] {
          if (picture.isEmpty()) {
            TakeDroppedElements(*session_, files);
          } else {
            TabSheetGroundPath->OpenPath(picture);
          }
        });
      },
      Qt::QueuedConnection);
}

void TFormMain::FormKeyPress(int key) {
  if (key == Qt::Key_Escape) session_->Run.AbortRequested = true;
}

void TFormMain::PageControlChange() {
  ui_.PageControl->setTabVisible(static_cast<int>(Page::Debug), CurrentPage() == Page::Debug);
  const bool hasPicture = CurrentPage() == Page::GroundPath;
  ui_.FilePrintImage->setVisible(hasPicture);
}

}  // namespace pelorin::desktop
