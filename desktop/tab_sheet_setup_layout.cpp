#include "desktop/tab_sheet_setup_layout.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <vector>

#include "desktop/full_text_delegate.h"
#include "session/controls.h"
#include "session/list_box.h"

namespace pelorin::desktop {
namespace {

using session::Hinted;
using session::LabelFor;
using session::Named;

constexpr int kGroupGap = 8;
constexpr int kColumnGap = 12;
constexpr int kFoldersShown = 3;
constexpr int kLeastRenewalDays = 1, kMostRenewalDays = 60;
/// Wider than this, the lists would only keep their neighbours apart.
constexpr int kMostCharacters = 240;

/// A list that takes the room that is there, whatever its entries' lengths. Both ends of an entry are shown:
/// names and folders of one kind differ in their last letters.
session::TListBox* MakeList(const char* name, QWidget* parent) {
  auto* list = Named(new session::TListBox(parent), name);
  list->setItemDelegate(new FullTextDelegate(list));
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setTextElideMode(Qt::ElideMiddle);
  list->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
  list->setMinimumWidth(list->fontMetrics().averageCharWidth() * 20);
  return list;
}

QToolButton* MakeArrow(const char* name, Qt::ArrowType arrow, const QString& hint, QWidget* parent) {
  auto* button = Hinted(Named(new QToolButton(parent), name), hint);
  button->setArrowType(arrow);
  button->setAccessibleName(hint);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setFixedWidth(button->fontMetrics().averageCharWidth() * 5);
  return button;
}

QLineEdit* MakeNumberBox(const char* name, const QString& hint, QWidget* parent) {
  auto* box = Hinted(Named(new QLineEdit(parent), name), hint);
  box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("-000.00000")) + 16);
  return box;
}

/// Lets the Tab key go through these controls in this order. Of a control that only holds others, those are
/// visited in their own order.
void ChainTabOrder(const std::vector<QWidget*>& controls) {
  std::vector<QWidget*> chain;
  for (QWidget* control : controls) {
    if (control->focusPolicy() != Qt::NoFocus) {
      chain.push_back(control);
      continue;
    }
    for (QWidget* next = control->nextInFocusChain(); next != control; next = next->nextInFocusChain()) {
      const bool isStop = (next->focusPolicy() & Qt::TabFocus) != 0 && next->focusProxy() == nullptr;
      if (isStop && control->isAncestorOf(next)) chain.push_back(next);
    }
  }
  for (std::size_t next = 1; next < chain.size(); ++next) QWidget::setTabOrder(chain[next - 1], chain[next]);
}

}  // namespace

QWidget* TabSheetSetupLayout::BuildSatellites(QWidget* page) {
  auto* group = Named(new QGroupBox(QStringLiteral(" Satellites "), page), "GroupBoxSatellites");
  ListBoxAvailable = MakeList("ListBoxAvailable", group);
  ListBoxActive = MakeList("ListBoxActive", group);
  ListBoxAvailable->AllowDragging();
  ListBoxActive->AllowDragging();
  ButtonActivate =
      MakeArrow("ButtonActivate", Qt::RightArrow, QStringLiteral("Follow the selected satellite"), group);
  ButtonDeactivate = MakeArrow("ButtonDeactivate", Qt::LeftArrow,
                               QStringLiteral("No longer follow the selected satellite"), group);

  ComboBoxRenewal = Hinted(Named(new QComboBox(group), "ComboBoxRenewal"),
                           QStringLiteral("What is done about old elements of active satellites"));
  ComboBoxRenewal->addItems({QStringLiteral("Renew only when told"), QStringLiteral("Ask to renew"),
                             QStringLiteral("Renew by itself")});
  SpinEditRenewalDays = Hinted(Named(new QSpinBox(group), "SpinEditRenewalDays"),
                               QStringLiteral("Renewed are elements of more than so many days"));
  SpinEditRenewalDays->setRange(kLeastRenewalDays, kMostRenewalDays);
  SpinEditRenewalDays->setPrefix(QStringLiteral("after "));
  SpinEditRenewalDays->setSuffix(QStringLiteral(" days"));
  auto* renewal = new QHBoxLayout;
  renewal->addWidget(LabelFor(QStringLiteral("Element&s: "), ComboBoxRenewal, group));
  renewal->addWidget(ComboBoxRenewal);
  renewal->addWidget(SpinEditRenewalDays);
  renewal->addStretch();

  auto* arrows = new QVBoxLayout;
  arrows->addStretch();
  arrows->addWidget(ButtonActivate);
  arrows->addWidget(ButtonDeactivate);
  arrows->addStretch();
  auto* grid = new QGridLayout(group);
  grid->addWidget(LabelFor(QStringLiteral("&Available"), ListBoxAvailable, group), 0, 0);
  grid->addWidget(LabelFor(QStringLiteral("A&ctive"), ListBoxActive, group), 0, 2);
  grid->addWidget(ListBoxAvailable, 1, 0);
  grid->addLayout(arrows, 1, 1);
  grid->addWidget(ListBoxActive, 1, 2);
  grid->addLayout(renewal, 2, 0, 1, 3);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(2, 1);
  grid->setRowStretch(1, 1);
  return group;
}

QWidget* TabSheetSetupLayout::BuildObserver(QWidget* page, QWidget* passListRow) {
  auto* group = Named(new QGroupBox(QStringLiteral(" Observer "), page), "GroupBoxObserver");
  EditLatitude = MakeNumberBox(
      "EditLatitude", QStringLiteral("Latitude in degrees - negative if south of the equator"), group);
  EditLongitude = MakeNumberBox(
      "EditLongitude", QStringLiteral("Longitude in degrees - negative if west of Greenwich"), group);
  EditHeight = MakeNumberBox("EditHeight", QStringLiteral("Height of the station in metres"), group);
  EditMinPassElev = MakeNumberBox(
      "EditMinPassElev", QStringLiteral("Minimum elevation of satellite to be considered visible"), group);

  auto* grid = new QGridLayout(group);
  grid->addWidget(LabelFor(QStringLiteral("&Latitude (°): "), EditLatitude, group), 0, 0);
  grid->addWidget(EditLatitude, 0, 1);
  grid->addWidget(LabelFor(QStringLiteral("Lon&gitude (°): "), EditLongitude, group), 0, 3);
  grid->addWidget(EditLongitude, 0, 4);
  grid->addWidget(LabelFor(QStringLiteral("Height (m): "), EditHeight, group), 1, 0);
  grid->addWidget(EditHeight, 1, 1);
  grid->addWidget(LabelFor(QStringLiteral("Min. &elevation (°): "), EditMinPassElev, group), 1, 3);
  grid->addWidget(EditMinPassElev, 1, 4);
  grid->addWidget(passListRow, 2, 0, 1, 6);
  grid->setColumnMinimumWidth(2, kColumnGap);
  grid->setColumnStretch(5, 1);
  return group;
}

QWidget* TabSheetSetupLayout::BuildFolders(QWidget* page) {
  auto* group = Named(new QGroupBox(QStringLiteral(" Folders "), page), "GroupBoxFolders");
  const QString browse = QStringLiteral("Browse...");
  EditSatelliteDataPath = Hinted(Named(new QLineEdit(group), "EditSatelliteDataPath"),
                                 QStringLiteral("Path to two line element files (*.2LI or *.TLE)"));
  EditSatelliteDataPath->setReadOnly(true);
  ButtonBrowseSatDataPath = Hinted(Named(new QPushButton(browse, group), "ButtonBrowseSatDataPath"),
                                   QStringLiteral("Choose the folder of the element files"));
  EditResultsPath = Hinted(Named(new QLineEdit(group), "EditResultsPath"),
                           QStringLiteral("Path for results: maps, overlays and pass lists"));
  ButtonBrowseResultsPath = Hinted(Named(new QPushButton(browse, group), "ButtonBrowseResultsPath"),
                                   QStringLiteral("Choose the folder for results"));
  ListBoxImagePath = Hinted(MakeList("ListBoxImagePath", group),
                            QStringLiteral("One or more folders with .BMP, .PNG or .JPG files"));
  ListBoxImagePath->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  ListBoxImagePath->SetEmptyText(QStringLiteral("Add the folders that hold received pictures."));
  ButtonAddPath = Named(new QPushButton(QStringLiteral("Add..."), group), "ButtonAddPath");
  ButtonRemovePath = Named(new QPushButton(QStringLiteral("Remove..."), group), "ButtonRemovePath");
  ButtonRemovePath->setEnabled(false);

  auto* grid = new QGridLayout(group);
  grid->addWidget(LabelFor(QStringLiteral("Eleme&nt files: "), EditSatelliteDataPath, group), 0, 0);
  grid->addWidget(EditSatelliteDataPath, 0, 1);
  grid->addWidget(ButtonBrowseSatDataPath, 0, 2);
  grid->addWidget(LabelFor(QStringLiteral("&Results: "), EditResultsPath, group), 1, 0);
  grid->addWidget(EditResultsPath, 1, 1);
  grid->addWidget(ButtonBrowseResultsPath, 1, 2);
  grid->addWidget(LabelFor(QStringLiteral("&Pictures: "), ListBoxImagePath, group), 0, 4);
  grid->addWidget(ListBoxImagePath, 0, 5, 2, 1);
  grid->addWidget(ButtonAddPath, 0, 6);
  grid->addWidget(ButtonRemovePath, 1, 6);
  grid->setColumnMinimumWidth(3, kColumnGap);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(5, 1);
  ListBoxImagePath->setMinimumHeight(ListBoxImagePath->fontMetrics().lineSpacing() * kFoldersShown +
                                     2 * ListBoxImagePath->frameWidth());
  group->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  return group;
}

void TabSheetSetupLayout::Build(QWidget* page, QWidget* passListRow, QWidget* groupBoxPasses) {
  auto* content = new QWidget(page);
  content->setMaximumWidth(content->fontMetrics().averageCharWidth() * kMostCharacters);
  auto* columns = new QHBoxLayout;
  columns->setSpacing(kGroupGap);
  columns->addWidget(BuildSatellites(content), 1);
  auto* right = new QVBoxLayout;
  right->setSpacing(kGroupGap);
  right->addWidget(BuildObserver(content, passListRow));
  right->addWidget(groupBoxPasses, 1);
  columns->addLayout(right, 1);
  auto* rows = new QVBoxLayout(content);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(kGroupGap);
  rows->addLayout(columns, 1);
  rows->addWidget(BuildFolders(content));
  auto* room = new QHBoxLayout(page);
  room->addStretch(1);
  room->addWidget(content, 1000);
  room->addStretch(1);

  ChainTabOrder({ListBoxAvailable, ButtonActivate, ButtonDeactivate, ListBoxActive, ComboBoxRenewal,
                 SpinEditRenewalDays, EditLatitude, EditLongitude, EditHeight, EditMinPassElev, passListRow,
                 groupBoxPasses, EditSatelliteDataPath, ButtonBrowseSatDataPath, EditResultsPath,
                 ButtonBrowseResultsPath, ListBoxImagePath, ButtonAddPath, ButtonRemovePath});
}

}  // namespace pelorin::desktop
