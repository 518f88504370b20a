#pragma once

#include <array>

#include "map/map_clock.h"

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
  QLabel* StatusElements;  ///< hidden unless there is something to say about the element files

  QAction *Open1, *FilePrintImage, *FilePrintPassList, *FilePrintSetup, *Exit1;
  std::array<QAction*, 3> MenuFootprint;  ///< by setting "FootprintShowLevel"
  QActionGroup* FootprintGroup;
  std::array<QAction*, map::kUpdateIntervals.size()> MenuInterval;
  QActionGroup* IntervalGroup;
  QAction *MenuSavePassDetails, *MenuShowOverlay, *MenuOverlayLinesOnly, *OptionsTextOverlay,
      *OptionsUpdateKeplers;
  QAction* ViewSatelliteData;
  std::array<QAction*, 3> MenuLook;  ///< by Look
  QActionGroup* LookGroup;
  QAction *HelpIntroduction, *HelpContents, *HelpIndex, *HelpFAQs, *HelpAbout;
  QAction *ShowDebug, *HelpPage;  ///< in no menu

  void Build(QMainWindow* form);
};

}  // namespace pelorin::desktop
