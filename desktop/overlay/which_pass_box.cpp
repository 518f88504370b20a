#include "desktop/overlay/which_pass_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "session/controls.h"
#include "swath/recording_text.h"

namespace pelorin::desktop {
namespace {

using session::Hinted;
using session::Named;

/// Passes that are listed.
constexpr std::size_t kListed = 5;
constexpr int kMostDays = 7;

}  // namespace

TWhichPassBox::TWhichPassBox(session::Prompts& boxes, QWidget* parent)
    : QGroupBox(QStringLiteral("Which pass is this?"), parent), boxes_(boxes), search_(this) {
  setObjectName(QStringLiteral("GroupBoxWhichPass"));
  SpinEditDays = Hinted(Named(new QSpinBox(this), "SpinEditDays"),
                        QStringLiteral("How many days to look through, the date above being the last"));
  SpinEditDays->setRange(1, kMostDays);
  ButtonWhichPass = Hinted(Named(new QPushButton(this), "ButtonWhichPass"),
                           QStringLiteral("Compare the picture with the coasts below each pass over your "
                                          "station"));
  ButtonWhichPass->setAutoDefault(false);
  ProgressBarPasses = Named(new QProgressBar(this), "ProgressBarPasses");
  ProgressBarPasses->setTextVisible(false);
  LabelPasses = Named(new QLabel(this), "LabelPasses");
  LabelPasses->setWordWrap(true);
  LabelPasses->setTextFormat(Qt::PlainText);
  ListBoxPasses =
      Hinted(Named(new QListWidget(this), "ListBoxPasses"),
             QStringLiteral("The passes that come nearest; choose one to fill in the fields above"));

  auto* row = new QHBoxLayout;
  row->addWidget(session::LabelFor(QStringLiteral("Da&ys:"), SpinEditDays, this));
  row->addWidget(SpinEditDays);
  row->addWidget(ButtonWhichPass);
  row->addWidget(ProgressBarPasses, 1);
  row->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(row);
  layout->addWidget(LabelPasses);
  layout->addWidget(ListBoxPasses);
  ShowRunning(false);

  session::Handle(ButtonWhichPass, &QPushButton::clicked, this, &TWhichPassBox::ButtonWhichPassClick);
  session::Handle(ListBoxPasses, &QListWidget::currentRowChanged, this, &TWhichPassBox::ListBoxPassesChange);
  session::Handle(&search_, &SearchThread::Finished, this, &TWhichPassBox::SearchFinished);
  connect(&search_, &SearchThread::Progressed, ProgressBarPasses, &QProgressBar::setValue);
}

void TWhichPassBox::End() {
  search_.End();
  found_.reset();
}

void TWhichPassBox::ShowRunning(bool isRunning) {
  ButtonWhichPass->setText(isRunning ? QStringLiteral("St&op") : QStringLiteral("&Find the pass"));
  ProgressBarPasses->setValue(0);
  ProgressBarPasses->setVisible(isRunning);
  SpinEditDays->setEnabled(!isRunning);
}

void TWhichPassBox::SetQuestion(PassQuestion question) {
  End();
  question_ = std::move(question);
  const bool isPossible = question_.WhyNot.isEmpty();
  ButtonWhichPass->setEnabled(isPossible && !search_.IsRunning());
  LabelPasses->setText(isPossible
                           ? QStringLiteral("The coasts in the picture can tell its pass and its time.")
                           : question_.WhyNot);
  answers_.clear();
  const QSignalBlocker blocker(ListBoxPasses);
  ListBoxPasses->clear();
  ListBoxPasses->hide();
}

void TWhichPassBox::ButtonWhichPassClick() {
  if (search_.IsRunning()) {
    search_.End();
    LabelPasses->setText(QStringLiteral("Stopping..."));
    return;
  }
  Begin();
}

void TWhichPassBox::Begin() {
  const int days = SpinEditDays->value();
  const orbit::TDateTime from{std::floor(day_.Days) - (days - 1)};
  auto search = std::make_shared<Search>();
  for (std::size_t i = 0; i < question_.Satellites.size(); ++i) {
    if (question_.Sender && *question_.Sender != static_cast<int>(i)) continue;
    const orbit::TSatellite set = question_.SetNear(question_.Satellites[i], day_);
    for (align::PassCandidate& candidate :
         align::CandidatesOf(question_.Channels.front().size(), std::span(&set, 1), *question_.Scanners,
                             question_.Station, from, days)) {
      search->Candidates.push_back(std::move(candidate));
      search->Satellites.push_back(static_cast<int>(i));
    }
  }
  if (search->Candidates.empty()) {
    LabelPasses->setText(
        QStringLiteral("No satellite that sends pictures of %1 columns passed your station on "
                       "those days. Are date and elements right?")
            .arg(question_.Channels.front().width()));
    return;
  }
  found_ = search;
  ShowRunning(true);
  LabelPasses->setText(
      QStringLiteral("Comparing the picture with %1 passes...").arg(search->Candidates.size()));
  search_.Begin([search, channels = question_.Channels, ground = *question_.Ground](const auto& afterStep) {
    search->Result = align::FindPassAndWay(search->Candidates, channels, ground, afterStep);
  });
}

void TWhichPassBox::SearchFinished() {
  ShowRunning(false);
  const bool isWanted = search_.TakeOutcome();
  const auto found = std::exchange(found_, nullptr);
  ButtonWhichPass->setEnabled(question_.WhyNot.isEmpty());
  if (!found) return;  // that of another picture
  if (!isWanted || found->Result.Places.empty()) {
    LabelPasses->setText(QStringLiteral("Stopped; nothing was changed."));
    return;
  }
  const align::PassSearch& result = found->Result;
  const QSignalBlocker blocker(ListBoxPasses);
  ListBoxPasses->clear();
  answers_.clear();
  for (const align::PassPlace& place : result.Places) {
    if (answers_.size() == kListed) break;
    const auto satellite = found->Satellites[place.Candidate];
    orbit::TDateTime start = found->Candidates[place.Candidate].Recording.Start;
    start.Days += place.TimeS / orbit::kSecondsPerDay;
    if (answers_.empty() && result.IsClear()) start = result.Best->Aligned.FirstLine();
    answers_.push_back({satellite, start, place.Lies});
    ListBoxPasses->addItem(
        QStringLiteral("%1, %2 UTC, %3 (%4)")
            .arg(QString::fromStdString(question_.Satellites[static_cast<std::size_t>(satellite)].Name),
                 QString::fromStdString(orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", start)),
                 swath::WordsOf(place.Lies))
            .arg(std::max(place.Score, 0.0), 0, 'f', 0));
  }
  ListBoxPasses->setCurrentRow(-1);
  // All of them are seen whole.
  const int frame = 2 * ListBoxPasses->frameWidth() + 4;
  ListBoxPasses->setFixedHeight(ListBoxPasses->sizeHintForRow(0) * ListBoxPasses->count() + frame);
  ListBoxPasses->setMinimumWidth(ListBoxPasses->sizeHintForColumn(0) + frame);
  ListBoxPasses->show();
  if (result.IsClear()) {
    ListBoxPasses->setCurrentRow(0);
    LabelPasses->setText(
        QStringLiteral("It is the first of these: it stands out %1 times as much as the next.")
            .arg(result.Margin, 0, 'f', 1));
    Q_EMIT Chosen(answers_.front());
    return;
  }
  LabelPasses->setText(
      QStringLiteral("No pass is clearly that of the picture. These come nearest; choose one if "
                     "you know that it can be, or look through more days."));
}

void TWhichPassBox::ListBoxPassesChange(int row) {
  if (row >= 0 && row < static_cast<int>(answers_.size())) {
    Q_EMIT Chosen(answers_[static_cast<std::size_t>(row)]);
  }
}

}  // namespace pelorin::desktop
