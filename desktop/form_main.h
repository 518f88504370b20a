#pragma once

#include <QFileInfo>
#include <QMainWindow>
#include <functional>
#include <memory>

#include "app/registry_store.h"
#include "app/settings.h"
#include "desktop/form_main_layout.h"
#include "desktop/look.h"
#include "desktop/start_up.h"
#include "session/session.h"
#include "session/shell.h"
#include "session/unattended_run.h"

namespace pelorin::desktop {

class TAboutBoxQuillfen;
class TFormAlignments;
class TFormEphemeris;
class TFormOverlayTextOptions;
class TFormSatKepsSummary;
class TFormSetFlightTime;
class TFormUpdateKeplers;
class TTabSheetDebug;
class TTabSheetFlight;
class TTabSheetGroundPath;
class TTabSheetMap;
class TTabSheetSetup;

/// What the main window stands on: the computer, the user's settings, the clock.
struct Surroundings {
  const app::RegistryStore& Store;
  QString ProgramPath;                 ///< the executable
  session::Prompts& Boxes;             ///< the user's
  session::UnattendedRun* Unattended;  ///< null unless started with a pass
  session::Session::Clock Now;
  app::TimeZone TimeZone;
  TellStatus TellSplash;  ///< start-up's progress
  std::function<void(Look)> ApplyLook;
  std::future<map::Backdrop> Backdrop;  ///< from LoadBackdropAhead, which has begun by now

  QString ProgramName() const { return QFileInfo(ProgramPath).completeBaseName(); }
};

/// The main window. It owns the session and the pages, carries out what pages ask of each other, and has the
/// handlers of the menus.
class TFormMain : public QMainWindow, public session::Shell {
  Q_OBJECT

 public:
  /// Runs the whole start-up.
  explicit TFormMain(Surroundings surroundings);
  /// Writes every setting back.
  ~TFormMain() override;

  /// Makes the dialogs, which live as long as the window.
  void CreateForms();

  session::Session& Shared() { return *session_; }
  session::Prompts& Boxes() const { return session_->Boxes; }

  void ShowPage(session::Page page) override;
  session::Page CurrentPage() const override;
  void SetTitle(const QString& title) override;
  void SetStatus(const QString& text) override;
  QString Status() const override;
  void UpdateObserverDetails() override;
  void SetMapTime(orbit::TDateTime moment) override;
  void FocusMakePicture() override;
  void MakePictureFromMap() override;
  void ShowGroundPath(orbit::TDateTime moment, int satellite) override;
  void SetTimeframe(session::Timeframe mode) override;
  void StopFlight() override;
  void FocusRunFlight() override;
  void PrintPassList() override;
  QPrinter& Printer() override;
  void CloseWindow() override;
  bool AskFlightStart(orbit::TDateTime& start) override;

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void FormCreate();
  void FormShow();
  void FormCloseQuery();
  void FormDestroy();
  void FormKeyPress(int key);

  void ConnectHandlers();
  void ConnectMenus();
  void BuildPages();
  void ShowElementNotes();
  void RestoreMenus();
  void RestoreWindow();
  void SetStartTime();
  void FindPassOfCommandLine(const QString& passString);
  /// There is no map to make, for this reason.
  void HandOver(const QString& reason, session::UnattendedRun::Box box);
  void CheckStaleElements();
  void UpdateCaption();

  void PageControlChange();
  void Open1Click();
  void OpenFolder1Click();
  void MenuOpenRecentShow();
  void RecentPictureChosen(QAction* item);
  void FilePrintImageClick();
  void FilePrintPassListClick();
  void FilePrintSetupClick();
  void Exit1Click();
  void FootprintChanged(QAction* item);
  void IntervalChanged(QAction* item);
  void MenuSavePassDetailsClick();
  void MenuShowOverlayClick();
  void MenuOverlayLinesOnlyClick();
  void OptionsTextOverlayClick();
  void OptionsUpdateKeplersClick();
  void ViewSatelliteDataClick();
  void ViewAlignmentsClick();
  void LookChanged(QAction* item);
  void HelpIntroductionClick();
  void HelpContentsClick();
  void HelpIndexClick();
  void HelpFAQsClick();
  void HelpPageClick();
  void HelpAboutClick();

  Surroundings surroundings_;
  QString programFolder_;
  app::Settings settings_;
  std::unique_ptr<session::Session> session_;
  GroundData ground_;
  FormMainLayout ui_;
  QString title_;
  bool wasShown_ = false;
  std::unique_ptr<QPrinter> printer_;

  TTabSheetSetup* TabSheetSetup = nullptr;
  TTabSheetMap* TabSheetMap = nullptr;
  TTabSheetDebug* TabSheetDebug = nullptr;
  TTabSheetGroundPath* TabSheetGroundPath = nullptr;
  TTabSheetFlight* TabSheetFlight = nullptr;
  TFormSetFlightTime* FormSetFlightTime = nullptr;
  TFormSatKepsSummary* FormSatKepsSummary = nullptr;
  TFormAlignments* FormAlignments = nullptr;
  TFormOverlayTextOptions* FormOverlayTextOptions = nullptr;
  TAboutBoxQuillfen* AboutBoxQuillfen = nullptr;
  TFormEphemeris* FormEphemeris = nullptr;
  TFormUpdateKeplers* FormUpdateKeplers = nullptr;
};

}  // namespace pelorin::desktop
