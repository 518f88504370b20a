#include "desktop/passes/form_ephemeris_layout.h"

#include <QDateEdit>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include "desktop/passes/fixed_font.h"
#include "session/controls.h"
#include "session/list_box.h"
#include "session/picker_time.h"

namespace pelorin::desktop {
namespace {

constexpr int kMostLookaheadDays = 365;
constexpr int kButtonsOfUnit = 3;
constexpr int kDaysOfWeek = 7;
/// Passes of sun-synchronous satellites come round in weeks rather than in months of the calendar.
constexpr int kDaysOfMonth = 28;

/// A row of the report and a little more.
constexpr int kRowCharacters = 54;
constexpr int kSatelliteCharacters = 22;
/// The first size, in characters and lines of the window's font.
constexpr int kFirstWidth = 88;
constexpr int kFirstHeight = 32;
constexpr double kPartOfScreen = 0.85;

QPushButton* DialogButton(const QString& text, const char* name, const QString& hint, QWidget* parent) {
  auto* button = session::Named(new QPushButton(text, parent), name);
  // Enter means "Predict", wherever the keyboard is.
  button->setAutoDefault(false);
  return session::Hinted(button, hint);
}

}  // namespace

void FormEphemerisLayout::Build(QDialog* form) {
  PageControl = session::Named(new QTabWidget(form), "PageControl");
  TabSheetControl = session::Named(new QWidget(PageControl), "TabSheetControl");
  TabSheetEphemeris = session::Named(new QWidget(PageControl), "TabSheetEphemeris");
  BuildControlPage();
  BuildEphemerisPage();
  PageControl->addTab(TabSheetControl, QStringLiteral(" Control "));
  PageControl->addTab(TabSheetEphemeris, QStringLiteral(" Ephemeris "));

  auto* layout = new QVBoxLayout(form);
  layout->addWidget(PageControl, 1);
  layout->addWidget(BuildBottomRow(form));
  const QFontMetrics metrics = form->fontMetrics();
  form->resize(QSize(metrics.averageCharWidth() * kFirstWidth, metrics.height() * kFirstHeight)
                   .boundedTo(form->screen()->availableSize() * kPartOfScreen));
}

void FormEphemerisLayout::BuildControlPage() {
  QWidget* satellites = BuildSatellites();
  QWidget* time = BuildTime();
  ButtonPredict = DialogButton(QStringLiteral("Predict"), "ButtonPredict",
                               QStringLiteral("Predict the passes and show them"), TabSheetControl);
  ButtonPredict->setAutoDefault(true);
  ButtonPredict->setDefault(true);

  auto* right = new QVBoxLayout;
  right->addWidget(time);
  right->addStretch();
  right->addWidget(ButtonPredict);
  auto* columns = new QHBoxLayout(TabSheetControl);
  columns->addWidget(satellites, 1);
  columns->addLayout(right, 1);
}

QWidget* FormEphemerisLayout::BuildSatellites() {
  auto* box = new QGroupBox(QStringLiteral(" Satellites "), TabSheetControl);
  ListBoxSatellites = session::Named(new session::TListBox(box), "ListBoxSatellites");
  // One more or one less with every click: most reports leave out a few only.
  ListBoxSatellites->setSelectionMode(QAbstractItemView::MultiSelection);
  ListBoxSatellites->setMinimumWidth(box->fontMetrics().averageCharWidth() * kSatelliteCharacters);
  ListBoxSatellites->setAccessibleName(QStringLiteral("Satellites of the report"));
  ListBoxSatellites->SetEmptyText(
      QStringLiteral("No active satellites.\n\nMake satellites active on the set-up page."));
  session::Hinted(ListBoxSatellites, QStringLiteral("Click a satellite to put it in or to leave it out"));
  ButtonSelectAll =
      DialogButton(QStringLiteral("All"), "ButtonSelectAll", QStringLiteral("Select every satellite"), box);
  ButtonSelectNone =
      DialogButton(QStringLiteral("None"), "ButtonSelectNone", QStringLiteral("Select no satellite"), box);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(ButtonSelectAll);
  buttons->addWidget(ButtonSelectNone);
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(ListBoxSatellites, 1);
  layout->addLayout(buttons);
  return box;
}

QWidget* FormEphemerisLayout::BuildTime() {
  auto* box = new QGroupBox(QStringLiteral(" Days (UTC) "), TabSheetControl);
  DateTimePickerStart = session::Named(new QDateEdit(box), "DateTimePickerStart");
  SpinEditNumDays = session::Named(new QSpinBox(box), "SpinEditNumDays");
  SpinEditNumDays->setRange(1, kMostLookaheadDays);
  session::Hinted(SpinEditNumDays, QStringLiteral("Days of the report, 1 to %1").arg(kMostLookaheadDays));
  LabelStart = session::Named(new QLabel(box), "LabelStart");

  auto* rows = new QFormLayout(box);
  rows->addRow(session::LabelFor(QStringLiteral("Start date"), DateTimePickerStart, box),
               DateTimePickerStart);
  rows->addRow(session::LabelFor(QStringLiteral("Lookahead days"), SpinEditNumDays, box), SpinEditNumDays);
  rows->addRow(QStringLiteral("Weeks"), BuildDurations(QStringLiteral("Weeks"), "week", 0, kDaysOfWeek));
  rows->addRow(QStringLiteral("Months"),
               BuildDurations(QStringLiteral("Months"), "month", kButtonsOfUnit, kDaysOfMonth));
  rows->addRow(QStringLiteral("Report starts"), LabelStart);
  return box;
}

QWidget* FormEphemerisLayout::BuildDurations(const QString& name, const char* unit, std::size_t first,
                                             int daysOfUnit) {
  auto* row = new QWidget(TabSheetControl);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  for (int count = 1; count <= kButtonsOfUnit; ++count) {
    const int days = count * daysOfUnit;
    auto* button = DialogButton(QString::number(count), "", QStringLiteral("%1 days").arg(days), row);
    button->setObjectName(QStringLiteral("Button%1%2").arg(name).arg(count));
    button->setAccessibleName(
        QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(unit), count > 1 ? u"s" : u""));
    button->setMinimumWidth(button->fontMetrics().averageCharWidth() * 5);
    layout->addWidget(button);
    Durations[first + static_cast<std::size_t>(count - 1)] = {button, days};
  }
  return row;
}

void FormEphemerisLayout::BuildEphemerisPage() {
  ListBoxPasses = session::Named(new session::TListBox(TabSheetEphemeris), "ListBoxPasses");
  ListBoxPasses->setFont(FixedFont(TabSheetEphemeris->font()));
  ListBoxPasses->setUniformItemSizes(true);
  ListBoxPasses->setAccessibleName(QStringLiteral("Ephemeris"));
  ListBoxPasses->setMinimumWidth(ListBoxPasses->fontMetrics().averageCharWidth() * kRowCharacters +
                                 ListBoxPasses->verticalScrollBar()->sizeHint().width() +
                                 2 * ListBoxPasses->frameWidth());
  ButtonPrint = DialogButton(QStringLiteral("Print"), "ButtonPrint", QStringLiteral("Print the report"),
                             TabSheetEphemeris);
  ButtonSave =
      DialogButton(QStringLiteral("Save as..."), "ButtonSave",
                   QStringLiteral("Save the report as text, or its passes for a spreadsheet or a calendar"),
                   TabSheetEphemeris);
  ButtonPrint->setEnabled(false);
  ButtonSave->setEnabled(false);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ButtonPrint);
  buttons->addWidget(ButtonSave);
  auto* layout = new QVBoxLayout(TabSheetEphemeris);
  layout->addWidget(ListBoxPasses, 1);
  layout->addLayout(buttons);
}

QWidget* FormEphemerisLayout::BuildBottomRow(QDialog* form) {
  auto* row = new QWidget(form);
  ProgressBar = session::Named(new QProgressBar(row), "ProgressBar");
  QSizePolicy policy = ProgressBar->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  ProgressBar->setSizePolicy(policy);
  ProgressBar->hide();
  ButtonCancel =
      DialogButton(QStringLiteral("Cancel"), "ButtonCancel",
                   QStringLiteral("Stop a prediction and keep its days so far, or close this window"), row);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(ProgressBar, 1);
  layout->addWidget(ButtonCancel);
  return row;
}

}  // namespace pelorin::desktop
