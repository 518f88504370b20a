#include "desktop/passes/group_box_passes_layout.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include "desktop/passes/fixed_font.h"
#include "session/controls.h"
#include "session/list_box.h"
#include "session/picker_time.h"

namespace pelorin::desktop {
namespace {

/// An entry up to its satellite's name, and most names, fit without scrolling.
constexpr int kEntryCharacters = 34;
constexpr int kMostDaysAhead = 28;

}  // namespace

void GroupBoxPassesLayout::Build(QGroupBox* box) {
  box->setTitle(QStringLiteral(" Pass generator "));
  DateTimePickerPasses = session::Named(new QDateEdit(box), "DateTimePickerPasses");
  session::SetUpPicker(DateTimePickerPasses, QStringLiteral("yyyy MMM dd"));
  LabelPassDate = session::Named(new QLabel(box), "LabelPassDate");
  ListBoxPasses = session::Named(new session::TListBox(box), "ListBoxPasses");
  ListBoxPasses->setFont(FixedFont(box->font()));
  ListBoxPasses->setAccessibleName(QStringLiteral("Passes"));
  ListBoxPasses->setMinimumWidth(ListBoxPasses->fontMetrics().averageCharWidth() * kEntryCharacters);
  ListBoxPasses->setToolTip(QStringLiteral(
      "Start (month, day, hour, minute, second in UTC), direction, longitude\nat culmination in "
      "degrees east, duration in seconds, satellite"));
  LabelPassDate->setBuddy(ListBoxPasses);
  ButtonNextPass = session::Named(new QPushButton(QStringLiteral("Get next pass"), box), "ButtonNextPass");
  session::Hinted(ButtonNextPass, QStringLiteral("Get the next pass after the current time"));
  ButtonMapFromPass =
      session::Named(new QPushButton(QStringLiteral("Map from pass"), box), "ButtonMapFromPass");
  ButtonMapFromPass->setEnabled(false);
  ButtonPicFromPass =
      session::Named(new QPushButton(QStringLiteral("Picture from pass"), box), "ButtonPicFromPass");
  ButtonPicFromPass->setEnabled(false);
  ButtonFlightFromPass =
      session::Named(new QPushButton(QStringLiteral("Fly this pass"), box), "ButtonFlightFromPass");

  auto* grid = new QGridLayout(box);
  grid->addWidget(session::LabelFor(QStringLiteral("Show passes for"), DateTimePickerPasses, box), 0, 0);
  grid->addWidget(DateTimePickerPasses, 0, 1);
  grid->addWidget(LabelPassDate, 1, 0, 1, 2);
  grid->addWidget(ListBoxPasses, 2, 0, 1, 2);
  grid->addWidget(ButtonNextPass, 3, 0);
  grid->addWidget(ButtonMapFromPass, 3, 1);
  grid->addWidget(ButtonPicFromPass, 4, 0);
  grid->addWidget(ButtonFlightFromPass, 4, 1);
  grid->setRowStretch(2, 1);

  BuildMakePassListRow(box);
}

void GroupBoxPassesLayout::BuildMakePassListRow(QGroupBox* box) {
  MakePassListRow = session::Named(new QWidget(box), "MakePassListRow");
  ButtonRegenPasses =
      session::Named(new QPushButton(QStringLiteral("Make pass list"), MakePassListRow), "ButtonRegenPasses");
  UpDownDaysAhead = session::Named(new QSpinBox(MakePassListRow), "UpDownDaysAhead");
  UpDownDaysAhead->setRange(1, kMostDaysAhead);
  UpDownDaysAhead->setAccessibleName(QStringLiteral("Days to make"));
  session::Hinted(UpDownDaysAhead, QStringLiteral("Days to make"));
  ButtonEphemeris = session::Named(new QPushButton(QStringLiteral("Print ephemeris..."), MakePassListRow),
                                   "ButtonEphemeris");
  session::Hinted(ButtonEphemeris, QStringLiteral("Predict, save, print formatted pass list"));

  auto* row = new QHBoxLayout(MakePassListRow);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(ButtonRegenPasses, 1);
  row->addWidget(UpDownDaysAhead);
  row->addWidget(ButtonEphemeris, 1);
}

}  // namespace pelorin::desktop
