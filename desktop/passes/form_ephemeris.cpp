#include "desktop/passes/form_ephemeris.h"

#include <QCalendarWidget>
#include <QCoreApplication>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSpinBox>
#include <QTabWidget>
#include <iterator>
#include <utility>

#include "app/program_paths.h"
#include "desktop/passes/report_printer.h"
#include "passes/ephemeris_file.h"
#include "passes/ephemeris_report.h"
#include "session/controls.h"
#include "session/hourglass.h"
#include "session/list_box.h"
#include "session/picker_time.h"
#include "session/print_out.h"

namespace pelorin::desktop {
namespace {

/// How long the window may wait for its events while days are made.
constexpr qint64 kPumpEveryMs = 30;

QString DayText(const char* pattern, orbit::TDateTime day) {
  return QString::fromStdString(FormatDateTime(pattern, day));
}

}  // namespace

TFormEphemeris::TFormEphemeris(session::Session& session, QWidget* parent)
    : TForm(session, "FormEphemeris", QStringLiteral("Pelorin - Ephemeris generation"), parent) {}

void TFormEphemeris::FormCreate() {
  ui_.Build(this);
  session::SetUpPicker(ui_.DateTimePickerStart, QStringLiteral("yyyy MMM dd"));
  session::TurnPicker(ui_.DateTimePickerStart, session_.LocalNow());

  using session::Handle;
  Handle(ui_.DateTimePickerStart, &QDateEdit::dateChanged, this, &TFormEphemeris::DateTimePickerStartChange);
  // The day that is shown already may be picked too.
  Handle(ui_.DateTimePickerStart->calendarWidget(), &QCalendarWidget::clicked, this,
         &TFormEphemeris::DateTimePickerStartChange);
  Handle(ui_.SpinEditNumDays, &QSpinBox::valueChanged, this, &TFormEphemeris::DateTimePickerStartChange);
  for (const DurationButton& duration : ui_.Durations) {
    Handle(duration.Button, &QPushButton::clicked, this,
           [days = duration.Days](TFormEphemeris* form) { form->ChangeDuration(days); });
  }
  Handle(ui_.ButtonPredict, &QPushButton::clicked, this, &TFormEphemeris::ButtonPredictClick);
  Handle(ui_.PageControl, &QTabWidget::currentChanged, this, [](TFormEphemeris* form) {
    if (form->ui_.PageControl->currentWidget() == form->ui_.TabSheetEphemeris) form->TabSheetEphemerisShow();
  });
  Handle(ui_.ButtonPrint, &QPushButton::clicked, this, &TFormEphemeris::ButtonPrintClick);
  Handle(ui_.ButtonSave, &QPushButton::clicked, this, &TFormEphemeris::ButtonSaveClick);
  connect(ui_.ButtonSelectAll, &QPushButton::clicked, ui_.ListBoxSatellites, &QListWidget::selectAll);
  connect(ui_.ButtonSelectNone, &QPushButton::clicked, ui_.ListBoxSatellites, &QListWidget::clearSelection);
  connect(ui_.ButtonCancel, &QPushButton::clicked, this, &TFormEphemeris::reject);
  for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
    session::OnKey(ui_.ListBoxSatellites, enter, Boxes(), [this] { ui_.ButtonPredict->click(); });
  }
}

void TFormEphemeris::FormShow() {
  // Before the first pass list there is no date of one.
  const orbit::TDateTime listDate = session_.Pass.PassListDate;
  SetStartDate(DatePart(listDate.Days > 0 ? listDate : session_.Now()));
  ui_.ListBoxSatellites->SetItems(session::NamesOf(session_.Active()));
  ui_.ListBoxSatellites->selectAll();
}

void TFormEphemeris::DateTimePickerStartChange() {
  SetStartDate(session::PickedDay(ui_.DateTimePickerStart));
}

void TFormEphemeris::ChangeDuration(int days) { ui_.SpinEditNumDays->setValue(days); }

void TFormEphemeris::SetStartDate(orbit::TDateTime start) {
  StartDate = start;
  ui_.LabelStart->setText(DayText("yyyy mmm dd", StartDate));
}

void TFormEphemeris::ButtonPredictClick() {
  if (Predict()) ui_.PageControl->setCurrentWidget(ui_.TabSheetEphemeris);
}

void TFormEphemeris::TabSheetEphemerisShow() {
  if (ui_.ListBoxPasses->count() == 0 && !isPredicting_) Predict();
}

std::vector<orbit::TSatellite> TFormEphemeris::SelectedSatellites() const {
  std::vector<orbit::TSatellite> selected;
  const std::vector<orbit::TSatellite> active =
      session_.ActiveSetsFor(StartDate, ui_.SpinEditNumDays->value());
  for (std::size_t index = 0; index < active.size(); ++index) {
    const QListWidgetItem* item = ui_.ListBoxSatellites->item(static_cast<int>(index));
    if (item != nullptr && item->isSelected()) selected.push_back(active[index]);
  }
  return selected;
}

bool TFormEphemeris::Predict() {
  passes::EphemerisRequest request{SelectedSatellites(), StartDate, ui_.SpinEditNumDays->value(),
                                   session_.Station.Place, session_.Station.MinElevationDeg};
  if (request.Satellites.empty()) {
    Boxes().Message(QStringLiteral("Please select one or more satellites"));
    ui_.PageControl->setCurrentWidget(ui_.TabSheetControl);
    return false;
  }
  isPredicting_ = true;
  stopRequested_ = false;
  const session::Hourglass hourglass;
  EnableOutput(false);
  ui_.TabSheetControl->setEnabled(false);
  ui_.ProgressBar->setRange(1, request.Days);
  ui_.ProgressBar->setValue(1);
  ui_.ProgressBar->setFormat(QStringLiteral("Day %v of %1").arg(request.Days));
  ui_.ProgressBar->show();
  const auto settled = qScopeGuard([this] {
    ui_.ProgressBar->hide();
    ui_.TabSheetControl->setEnabled(true);
    EnableOutput(true);
    isPredicting_ = false;
  });
  ui_.ListBoxPasses->SetItems({});
  reportedPasses_.clear();
  reportedStation_ = passes::StationText(request.Station);
  reportedStart_ = request.StartDate;

  QElapsedTimer sincePump;
  sincePump.start();
  passes::MakeEphemeris(std::move(request), [&](passes::EphemerisDay day) {
    ui_.ListBoxPasses->setUpdatesEnabled(false);
    ui_.ListBoxPasses->addItems(day.Lines);
    ui_.ListBoxPasses->setUpdatesEnabled(true);
    std::move(day.Passes.begin(), day.Passes.end(), std::back_inserter(reportedPasses_));
    ui_.ProgressBar->setValue(day.Number);
    if (sincePump.elapsed() >= kPumpEveryMs) {
      QCoreApplication::processEvents();
      sincePump.restart();
    }
    return !stopRequested_ && !session_.Run.Closing;
  });
  return true;
}

void TFormEphemeris::EnableOutput(bool enabled) {
  ui_.ButtonPrint->setEnabled(enabled);
  ui_.ButtonSave->setEnabled(enabled);
}

QString TFormEphemeris::SuggestedFile(const QString& extension) const {
  return app::WithSeparator(session_.Settings.ResultsPath.Value) + QStringLiteral("Passes-") +
         DayText("yyyy-mm-dd", reportedStart_) + extension;
}

void TFormEphemeris::ButtonPrintClick() {
  QPrinter& printer = session_.Window.Printer();
  if (session::NeedsFileName(printer)) {
    const auto path =
        Boxes().SaveFile(QStringLiteral("Print to a PDF file"), SuggestedFile(QStringLiteral(".pdf")),
                         {QStringLiteral("PDF files (*.pdf)")});
    if (!path) return;
    printer.setOutputFileName(*path);
  } else {
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted) return;
  }
  // The next print is another one, and must not replace this one's file.
  const auto forget = qScopeGuard([&printer] { printer.setOutputFileName(QString()); });
  const session::Hourglass hourglass;
  PrintLines(printer, QStringLiteral("Pelorin pass prediction"), ui_.ListBoxPasses->Items());
}

void TFormEphemeris::ButtonSaveClick() {
  const auto path =
      Boxes().SaveFile(QStringLiteral("Save as"), SuggestedFile(QStringLiteral(".txt")),
                       {QStringLiteral("Text files (*.txt)"), QStringLiteral("CSV files (*.csv)"),
                        QStringLiteral("iCalendar files (*.ics)"), QStringLiteral("All files (*.*)")});
  if (!path) return;
  if (passes::IsCalendarFile(*path) && reportedPasses_.empty()) {
    Boxes().Message(QStringLiteral("There are no passes in this report to put into a calendar."));
    return;
  }
  try {
    passes::SaveEphemeris(*path,
                          {ui_.ListBoxPasses->Items(), reportedPasses_, reportedStation_, session_.Now()});
  } catch (const std::exception&) {
    Boxes().Error(QStringLiteral("Error tring to save pass list to ") + *path);
  }
}

void TFormEphemeris::reject() {
  if (isPredicting_) {
    stopRequested_ = true;
  } else {
    TForm::reject();
  }
}

QWidget* TFormEphemeris::FirstControl() const {
  const bool showsReport = ui_.PageControl->currentWidget() == ui_.TabSheetEphemeris;
  return showsReport ? ui_.ListBoxPasses : ui_.ListBoxSatellites;
}

}  // namespace pelorin::desktop
