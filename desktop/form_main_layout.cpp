#include "desktop/form_main_layout.h"

#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>

#include "app/settings.h"
#include "desktop/look.h"
#include "map/map_clock.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Named;

QAction* Item(QMenu* menu, const QString& text, const char* name, const QString& tip,
              const QKeySequence& shortcut = QKeySequence()) {
  QAction* action = Named(menu->addAction(text), name);
  action->setToolTip(tip);
  action->setShortcut(shortcut);
  return action;
}

QAction* CheckItem(QMenu* menu, const QString& text, const char* name) {
  QAction* action = Named(menu->addAction(text), name);
  action->setCheckable(true);
  return action;
}

/// One of several items that exclude each other; it carries its value, and is named by it.
void AddChoice(QActionGroup* group, QMenu* menu, const QString& text, const char* name, int value) {
  QAction* action = group->addAction(menu->addAction(text));
  action->setObjectName(QLatin1StringView(name) + QString::number(value));
  action->setCheckable(true);
  action->setData(value);
}

void BuildFileMenu(FormMainLayout& ui, QMenuBar* bar) {
  QMenu* menu = Named(bar->addMenu(QStringLiteral("&File")), "MenuFile");
  menu->setToolTipsVisible(true);
  ui.Open1 = Item(menu, QStringLiteral("&Open..."), "Open1",
                  QStringLiteral("Open a satellite picture, or a decoder's pass by a file in its folder"),
                  QKeySequence::Open);
  ui.OpenFolder1 = Item(menu, QStringLiteral("Open &folder..."), "OpenFolder1",
                        QStringLiteral("Open the folder that a decoder made of a pass"));
  ui.MenuOpenRecent = Named(menu->addMenu(QStringLiteral("Open &recent")), "MenuOpenRecent");
  ui.FilePrintImage = Item(menu, QStringLiteral("Print image"), "FilePrintImage",
                           QStringLiteral("Print the satellite picture and its map"));
  ui.FilePrintPassList =
      Item(menu, QStringLiteral("Print pass list..."), "FilePrintPassList",
           QStringLiteral("Predict, save, print formatted pass list"), QKeySequence::Print);
  ui.FilePrintSetup =
      Item(menu, QStringLiteral("Print setup..."), "FilePrintSetup", QStringLiteral("Paper and margins"));
  menu->addSeparator();
  ui.Exit1 = Item(menu, QStringLiteral("E&xit"), "Exit1", QStringLiteral("Save the settings and end"),
                  QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void BuildOptionsMenu(FormMainLayout& ui, QMainWindow* form) {
  QMenu* menu = Named(form->menuBar()->addMenu(QStringLiteral("&Options")), "MenuOptions");
  menu->setToolTipsVisible(true);
  QMenu* footprint = Named(menu->addMenu(QStringLiteral("Show &footprint")), "MenuShowFootprint");
  ui.FootprintGroup = new QActionGroup(form);
  AddChoice(ui.FootprintGroup, footprint, QStringLiteral("&None"), "MenuFootprint", 0);
  AddChoice(ui.FootprintGroup, footprint, QStringLiteral("&Selected"), "MenuFootprint", 1);
  AddChoice(ui.FootprintGroup, footprint, QStringLiteral("&All"), "MenuFootprint", 2);
  QMenu* rate = Named(menu->addMenu(QStringLiteral("&Update rate")), "MenuUpdateRate");
  ui.IntervalGroup = new QActionGroup(form);
  for (const int seconds : map::kUpdateIntervals) {
    AddChoice(ui.IntervalGroup, rate, QStringLiteral("%1 sec").arg(seconds), "MenuInterval", seconds);
  }
  QMenu* align = Named(menu->addMenu(QStringLiteral("Ali&gn opened pictures")), "MenuAlignOpened");
  ui.AlignGroup = new QActionGroup(form);
  AddChoice(ui.AlignGroup, align, QStringLiteral("&No"), "MenuAlign", app::kAlignNever);
  AddChoice(ui.AlignGroup, align, QStringLiteral("&Offer what is found"), "MenuAlign", app::kAlignOffering);
  AddChoice(ui.AlignGroup, align, QStringLiteral("Offer it, and &take what is clear"), "MenuAlign",
            app::kAlignTaking);
  menu->addSeparator();
  ui.MenuSavePassDetails = CheckItem(menu, QStringLiteral("Save &pass details"), "MenuSavePassDetails");
  ui.MenuShowOverlay = CheckItem(menu, QStringLiteral("Show &overlay"), "MenuShowOverlay");
  ui.MenuOverlayLinesOnly = CheckItem(menu, QStringLiteral("Overlay &lines only"), "MenuOverlayLinesOnly");
  ui.OptionsTextOverlay = Item(menu, QStringLiteral("Text overlay..."), "OptionsTextOverlay",
                               QStringLiteral("What the overlay's text lines contain"));
  menu->addSeparator();
  ui.OptionsUpdateKeplers = Item(menu, QStringLiteral("Update Keplers..."), "OptionsUpdateKeplers",
                                 QStringLiteral("Get new element sets over the Internet"));
}

void BuildViewMenu(FormMainLayout& ui, QMainWindow* form) {
  QMenu* menu = Named(form->menuBar()->addMenu(QStringLiteral("&View")), "MenuView");
  menu->setToolTipsVisible(true);
  ui.ViewSatelliteData = Item(menu, QStringLiteral("Satellite orbit data ...."), "ViewSatelliteData",
                              QStringLiteral("Every loaded element set and its age"));
  ui.ViewAlignments = Item(menu, QStringLiteral("&Alignments..."), "ViewAlignments",
                           QStringLiteral("The pictures that were aligned, and what was found"));
  QMenu* look = Named(menu->addMenu(QStringLiteral("&Colours")), "MenuColours");
  ui.LookGroup = new QActionGroup(form);
  const auto add = [&](Look value, const QString& text) {
    AddChoice(ui.LookGroup, look, text, "MenuLook", static_cast<int>(value));
  };
  add(Look::AsDesktop, QStringLiteral("As the &desktop"));
  add(Look::Light, QStringLiteral("&Light"));
  add(Look::Dark, QStringLiteral("D&ark"));
}

void BuildHelpMenu(FormMainLayout& ui, QMenuBar* bar) {
  QMenu* menu = Named(bar->addMenu(QStringLiteral("&Help")), "MenuHelp");
  menu->setToolTipsVisible(true);
  ui.HelpIntroduction =
      Item(menu, QStringLiteral("Introduction"), "HelpIntroduction", QStringLiteral("What Pelorin does"));
  ui.HelpContents =
      Item(menu, QStringLiteral("&Contents"), "HelpContents", QStringLiteral("The help's table of contents"));
  ui.HelpIndex = Item(menu, QStringLiteral("I&ndex"), "HelpIndex", QStringLiteral("The help's keywords"));
  ui.HelpFAQs = Item(menu, QStringLiteral("FAQs"), "HelpFAQs", QStringLiteral("Questions often asked"));
  menu->addSeparator();
  ui.HelpAbout =
      Item(menu, QStringLiteral("&About Pelorin..."), "HelpAbout", QStringLiteral("Version and licences"));
}

}  // namespace

void FormMainLayout::Build(QMainWindow* form) {
  BuildFileMenu(*this, form->menuBar());
  BuildOptionsMenu(*this, form);
  BuildViewMenu(*this, form);
  BuildHelpMenu(*this, form->menuBar());
  ShowDebug = Named(new QAction(form), "ShowDebug");
  ShowDebug->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D));
  form->addAction(ShowDebug);
  HelpPage = Named(new QAction(form), "HelpPage");
  HelpPage->setShortcut(QKeySequence::HelpContents);
  form->addAction(HelpPage);

  PageControl = Named(new QTabWidget(form), "PageControl");
  PageControl->setDocumentMode(true);
  form->setCentralWidget(PageControl);

  // Not the status bar's own message: opening a menu would wipe it.
  StatusText = Named(new QLabel(form), "StatusText");
  StatusText->setMinimumHeight(StatusText->fontMetrics().height());
  StatusText->setTextFormat(Qt::PlainText);
  StatusText->setTextInteractionFlags(Qt::TextSelectableByMouse);
  Named(form->statusBar(), "StatusBar")->addWidget(StatusText, 1);
  StatusRenewal = Named(new QLabel(form), "StatusRenewal");
  StatusRenewal->setTextFormat(Qt::RichText);
  StatusRenewal->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  StatusRenewal->hide();
  form->statusBar()->addPermanentWidget(StatusRenewal);
  StatusElements = Named(new QLabel(form), "StatusElements");
  StatusElements->setTextFormat(Qt::PlainText);
  form->statusBar()->addPermanentWidget(StatusElements);
}

}  // namespace pelorin::desktop
