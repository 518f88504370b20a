#pragma once

class QAction;
class QActionGroup;
class QLabel;
class QMainWindow;
class QMenu;
class QTabWidget;

namespace pelorin::desktop {

/// Menus, page control and status bar of the main window; its pages are put in by the window itself.
struct FormMainLayout {
  QTabWidget* PageControl;
  QLabel* StatusText;
  QLabel* StatusRenewal;   ///< hidden unless elements were renewed, or are to be
  QLabel* StatusElements;  ///< hidden unless there is something to say about the element files

  QMenu* MenuOpenRecent;
  QAction *Open1, *OpenFolder1, *FilePrintImage, *FilePrintPassList, *FilePrintSetup, *Exit1;
  // Items carry the value of the setting that they choose.
  QActionGroup *FootprintGroup, *IntervalGroup, *LookGroup, *AlignGroup;
  QAction *MenuSavePassDetails, *MenuShowOverlay, *MenuOverlayLinesOnly, *OptionsTextOverlay,
      *OptionsUpdateKeplers;
  QAction *ViewSatelliteData, *ViewAlignments;
  QAction *HelpIntroduction, *HelpContents, *HelpIndex, *HelpFAQs, *HelpAbout;
  QAction *ShowDebug, *HelpPage;  ///< in no menu

  void Build(QMainWindow* form);
};

}  // namespace pelorin::desktop
