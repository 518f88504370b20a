#include "desktop/element_renewal.h"

#include <QApplication>

#include "app/element_address.h"
#include "app/program_paths.h"
#include "orbit/julian_date.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using elements::Renewal;

/// The start has its own things to do.
constexpr int kFirstMs = 5000;
constexpr int kNextMs = 3600 * 1000;

const QString kRenew = QStringLiteral("renew"), kLater = QStringLiteral("later");

QString OfferText(const QStringList& files, int days) {
  return QStringLiteral("%1: older than %2 days. <a href=\"%3\">Renew</a> <a href=\"%4\">Not now</a>")
      .arg(files.join(QStringLiteral(", ")).toHtmlEscaped())
      .arg(days)
      .arg(kRenew, kLater);
}

}  // namespace

ElementRenewal::ElementRenewal(session::Session& session, QLabel* line, QObject* parent)
    : QObject(parent),
      session_(session),
      line_(line),
      timerRenewal_(session::Named(new QTimer(this), "TimerRenewal")) {
  session::Handle(timerRenewal_, &QTimer::timeout, this, &ElementRenewal::TimerRenewalTimer);
  session::Handle(line_, &QLabel::linkActivated, this, &ElementRenewal::LinkActivated);
  session::Handle(&session_, &session::Session::SatellitesReloaded, this,
                  &ElementRenewal::SatellitesReloaded);
  timerRenewal_->start(kFirstMs);
}

ElementRenewal::~ElementRenewal() {
  if (thread_ == nullptr) return;
  thread_->requestInterruption();
  thread_->quit();
  thread_->wait();
}

void ElementRenewal::TimerRenewalTimer() {
  timerRenewal_->setInterval(kNextMs);
  const app::Settings& settings = session_.Settings;
  const auto renewal = static_cast<Renewal>(settings.ElementRenewal.Value);
  if (renewal == Renewal::WhenTold || thread_ != nullptr) return;
  if (!elements::IsRenewalDue(settings.LastRenewal.Value, session_.Now())) return;
  const QStringList files = FilesOfOldSets();
  if (files.isEmpty()) return;
  session_.Settings.LastRenewal.Value = elements::RenewalDay(session_.Now());
  if (renewal == Renewal::ByItself) {
    Start(files);
  } else {
    Offer(files);
  }
}

void ElementRenewal::SatellitesReloaded() {
  if (isOffered_) Offer(FilesOfOldSets());
}

void ElementRenewal::Offer(const QStringList& files) {
  Show(files.isEmpty() ? QString() : OfferText(files, session_.Settings.RenewalDays.Value));
  isOffered_ = !files.isEmpty();
}

void ElementRenewal::LinkActivated(const QString& link) {
  Show({});
  if (link == kRenew && thread_ == nullptr) Start(FilesOfOldSets());
}

QStringList ElementRenewal::FilesOfOldSets() const {
  return elements::FilesToRenew(session_.SatellitesInUse(), orbit::JulianDateOfDateTime(session_.Now()),
                                session_.Settings.RenewalDays.Value);
}

void ElementRenewal::Start(const QStringList& files) {
  const elements::ElementUpdate update = session_.UpdateOf(files, app::ElementAddress(session_.Settings));
  Show(QStringLiteral("Renewing elements..."));
  thread_.reset(QThread::create([this, update, requests = app::ElementRequestsFile()] {
    report_ = elements::RenewElements(update, requests,
                                      [] { return !QThread::currentThread()->isInterruptionRequested(); });
  }));
  session::Handle(thread_.get(), &QThread::finished, this, &ElementRenewal::ThreadFinished);
  thread_->start(QThread::LowPriority);
}

void ElementRenewal::ThreadFinished() {
  thread_->wait();
  thread_.reset();
  Show(elements::RenewalText(report_).toHtmlEscaped(), report_.Said.join(QStringLiteral("\n\n")));
}

void ElementRenewal::Show(const QString& text, const QString& tip) {
  isOffered_ = false;
  line_->setVisible(!text.isEmpty());
  line_->setText(text);
  // What a server said is no markup.
  line_->setToolTip(
      QString(tip).replace(u'\r', u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
}

}  // namespace pelorin::desktop
