#include "desktop/overlay/tab_sheet_flight.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/overlay/flight_view.h"
#include "desktop/overlay/overlay_choices.h"
#include "session/controls.h"
#include "swath/scanner_match.h"

namespace pelorin::desktop {
namespace {

using session::Handle;
using session::Hinted;
using session::Named;

QPushButton* NewFlightButton(const QString& caption, const char* name, const QString& hint, QWidget* page) {
  auto* button = Hinted(Named(new QPushButton(caption, page), name), hint);
  button->setAutoDefault(true);
  return button;
}

}  // namespace

TTabSheetFlight::TTabSheetFlight(session::Session& session, QWidget* parent) : TTabSheet(session, parent) {
  setObjectName(QStringLiteral("TabSheetFlight"));
  Build();
  using Page = TTabSheetFlight;
  Handle(this, &TTabSheet::Shown, this, &Page::TabSheetFlightShow);
  Handle(this, &TTabSheet::Hidden, this, &Page::TabSheetFlightHide);
  Handle(&session, &session::Session::ActiveSatellitesChanged, this, &Page::ActiveSatellitesChanged);
  Handle(&session, &session::Session::SatelliteChosen, this, &Page::SatelliteChosen);
  Handle(&session, &session::Session::PassDirectionChanged, this, &Page::PassDirectionChanged);

  Handle(ComboBoxSatForFlight, &QComboBox::currentIndexChanged, this, &Page::ComboBoxSatForFlightChange);
  Handle(ButtonFlightDirection, &QPushButton::clicked, this, &Page::ButtonFlightDirectionClick);
  Handle(ButtonRunFlight, &QPushButton::clicked, this, &Page::ButtonRunFlightClick);
  session::OnKey(ButtonRunFlight, Qt::Key_Escape, Boxes(), [this] { ButtonRunFlightKeyPress(); });
  Handle(ButtonSetFlightTime, &QPushButton::clicked, this, &Page::ButtonSetFlightTimeClick);
  Handle(TimerFlight, &QTimer::timeout, this, &Page::TimerFlightTimer);
}

void TTabSheetFlight::Build() {
  ComboBoxSatForFlight = Hinted(Named(new QComboBox(this), "ComboBoxSatForFlight"),
                                QStringLiteral("This satellite can have its track mapped"));
  ComboBoxSatForFlight->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  ComboBoxSatForFlight->setMinimumContentsLength(16);
  ButtonFlightDirection = NewFlightButton(
      DirectionCaption(session_.Pass.SouthBound), "ButtonFlightDirection",
      QStringLiteral("Whether the satellite moves north or south; press to turn the picture"), this);
  ButtonRunFlight = NewFlightButton(QStringLiteral("Start"), "ButtonRunFlight",
                                    QStringLiteral("Start the flight, or stop it"), this);
  ButtonSetFlightTime = NewFlightButton(QStringLiteral("Set flight date && time..."), "ButtonSetFlightTime",
                                        QStringLiteral("Fly as if it were another time"), this);
  LabelElementAge = new session::TDoubtLabel(this);
  ImageFlight = Named(new TFlightView, "ImageFlight");
  ScrollBoxFlight = Named(new QScrollArea(this), "ScrollBoxFlight");
  ScrollBoxFlight->setBackgroundRole(QPalette::Base);
  ScrollBoxFlight->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  ScrollBoxFlight->setWidget(ImageFlight);
  // Until the first flight its text fills the box.
  ScrollBoxFlight->setWidgetResizable(true);
  TimerFlight = Named(new QTimer(this), "TimerFlight");
  TimerFlight->setInterval(100);

  auto* row = new QHBoxLayout;
  row->addWidget(session::LabelFor(QStringLiteral("Sa&tellite:"), ComboBoxSatForFlight, this));
  row->addWidget(ComboBoxSatForFlight);
  row->addSpacing(12);
  row->addWidget(Named(session::LabelFor(QStringLiteral("Flight direction: "), ButtonFlightDirection, this),
                       "LabelFlightDirection"));
  row->addWidget(ButtonFlightDirection);
  row->addSpacing(12);
  row->addWidget(ButtonRunFlight);
  row->addWidget(ButtonSetFlightTime);
  row->addSpacing(12);
  row->addWidget(LabelElementAge, 1);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(6, 6, 6, 4);
  rows->addLayout(row);
  rows->addWidget(ScrollBoxFlight, 1);
}

void TTabSheetFlight::SetSources(const overlay::OverlaySources& sources,
                                 const swath::ScannerTable& scanners) {
  sources_ = sources;
  scanners_ = &scanners;
}

// ------------------------------------------------------------------------- following the session

void TTabSheetFlight::TabSheetFlightShow() {
  StopFlight();
  session_.Window.SetTitle(QStringLiteral("Pelorin"));
  session_.Window.SetStatus(QString());
  FocusRunFlight();
}

void TTabSheetFlight::TabSheetFlightHide() {
  StopFlight();
  session_.Window.SetStatus(QString());
}

void TTabSheetFlight::ActiveSatellitesChanged() {
  session::FillChooser(ComboBoxSatForFlight, session_.Active(), session_.SelectedIndex());
}

void TTabSheetFlight::SatelliteChosen() {
  session::SelectQuietly(ComboBoxSatForFlight, session_.SelectedIndex());
  // One that is seen goes on with the elements that it began with.
  if (isVisible() && !session_.Run.Reloading) StartFlight();
}

void TTabSheetFlight::PassDirectionChanged() {
  ButtonFlightDirection->setText(DirectionCaption(session_.Pass.SouthBound));
}

void TTabSheetFlight::OverlayMarksChanged() { flight_.SetMarks(ChosenMarks(session_.Settings)); }

// ------------------------------------------------------------------------------------ the flight

orbit::TDateTime TTabSheetFlight::FlightTime() const {
  return {session_.Now().Days + session_.Pass.FlightTimeOffset};
}

void TTabSheetFlight::StartFlight() {
  StopFlight();
  session_.Window.SetTitle(QStringLiteral("Pelorin - flight"));
  session_.Window.SetStatus(QString());
  const orbit::TSatellite* satellite = session_.SelectedSatellite();
  if (satellite == nullptr) {
    session_.Window.SetStatus(QStringLiteral("No satellite is chosen"));
    return;
  }
  const orbit::TDateTime now = FlightTime();
  const orbit::TSatellite set = session_.SetNear(*satellite, now);
  swath::Recording recording;
  recording.SouthBound = session_.Pass.SouthBound;
  const swath::ScannerMatch match = swath::TakeElements(set, *scanners_, recording);
  if (!match.Problem.isEmpty()) throw overlay::OverlayError(match.Problem.toStdString());
  session_.ShowDoubt(LabelElementAge, *recording.Elements, now);
  flight_.Start(recording, sources_, ChosenMarks(session_.Settings), now, screen()->size().height());
  ScrollBoxFlight->setWidgetResizable(false);
  ImageFlight->SetFlight(*flight_.Picture());
  ScrollBoxFlight->verticalScrollBar()->setValue(session_.Pass.SouthBound ? 0 : 9999);
  TimerFlight->start();
  ShowState();
  FocusRunFlight();
}

void TTabSheetFlight::StopFlight() {
  TimerFlight->stop();
  flight_.Stop();
  ShowState();
}

void TTabSheetFlight::ShowState() {
  ButtonRunFlight->setText(flight_.Running() ? QStringLiteral("Stop") : QStringLiteral("Fly"));
}

void TTabSheetFlight::FocusRunFlight() { ButtonRunFlight->setFocus(); }

void TTabSheetFlight::TimerFlightTimer() {
  if (flight_.Picture() == nullptr) return;
  const orbit::TDateTime now = FlightTime();
  const int rowBefore = flight_.Picture()->Row();
  int drawn = 0;
  try {
    drawn = flight_.Tick(now, session_.Run.MakingMap);
  } catch (...) {
    // Once is enough for a message.
    StopFlight();
    throw;
  }
  if (!flight_.Running()) StopFlight();
  if (drawn == 0) return;
  ImageFlight->ShowLines(drawn);
  ScrollAlong(rowBefore);
  session_.Window.SetStatus(overlay::FlightStatus(flight_.Lines(), now));
}

void TTabSheetFlight::ScrollAlong(int rowBefore) {
  const QScrollBar* bar = ScrollBoxFlight->verticalScrollBar();
  const int top = bar->value(), bottom = top + ScrollBoxFlight->viewport()->height();
  // The user may be looking at lines of before.
  const bool wasInView = rowBefore >= top - 1 && rowBefore <= bottom + 1;
  if (wasInView) ScrollToLine();
}

void TTabSheetFlight::ScrollToLine() {
  constexpr int margin = 16;
  ScrollBoxFlight->ensureVisible(ScrollBoxFlight->horizontalScrollBar()->value(), flight_.Picture()->Row(), 0,
                                 margin);
}

void TTabSheetFlight::ComboBoxSatForFlightChange(int index) { session_.ChooseSatellite(index); }

void TTabSheetFlight::ButtonRunFlightClick() {
  if (flight_.Running()) {
    flight_.RequestStop();
  } else {
    StartFlight();
  }
}

void TTabSheetFlight::ButtonRunFlightKeyPress() { flight_.RequestStop(); }

void TTabSheetFlight::ButtonFlightDirectionClick() {
  session_.SetPassDirection(!session_.Pass.SouthBound);
  if (!flight_.Running()) {
    ButtonRunFlight->click();
    return;
  }
  flight_.Turn();
  ImageFlight->update();
  ScrollToLine();
  FocusRunFlight();
}

void TTabSheetFlight::ButtonSetFlightTimeClick() {
  orbit::TDateTime start;
  if (!session_.Window.AskFlightStart(start)) return;
  session_.Pass.FlightTimeOffset = start.Days - session_.Now().Days;
  if (flight_.Running()) StartFlight();
}

}  // namespace pelorin::desktop
