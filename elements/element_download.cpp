#include "elements/element_download.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

namespace pelorin::elements {
namespace {

constexpr int kMostRedirects = 5;
constexpr int kSilencesInAll = 10;

/// All known objects in orbit make a file a tenth as long.
constexpr qint64 kMostBytes = 32 << 20;

/// What the desktop is set to, asked for each request.
class SystemProxies : public QNetworkProxyFactory {
 public:
  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    return systemProxyForQuery(query);
  }
};

QNetworkRequest ElementRequest(const QUrl& url, int silenceLimitMs) {
  QNetworkRequest request(url);
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Pelorin"));
  // A compressed answer that is cut between two blocks looks whole, and shorter by some sets.
  request.setRawHeader("Accept-Encoding", "identity");
  request.setTransferTimeout(silenceLimitMs);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  request.setMaximumRedirectsAllowed(kMostRedirects);
  return request;
}

bool IsRedirect(int status) { return status >= 300 && status < 400; }

/// The library's reason, with the place where it arose if that is not the one that was asked for.
QString ProblemOf(const QNetworkReply& reply, const QUrl& asked) {
  if (reply.url() == asked) return reply.errorString();
  return QStringLiteral("moved to %1: %2").arg(reply.url().toString(), reply.errorString());
}

}  // namespace

ElementDownload::ElementDownload(int silenceLimitMs)
    : silenceLimitMs_(silenceLimitMs), manager_(std::make_unique<QNetworkAccessManager>()) {
  manager_->setProxyFactory(new SystemProxies);
}

ElementDownload::~ElementDownload() = default;

bool ElementDownload::IsAvailable() const {
  return manager_->supportedSchemes().contains(QStringLiteral("http"));
}

ElementAnswer ElementDownload::Get(const QString& address) {
  ElementAnswer answer;
  const QUrl url(address);
  const bool isWeb = url.scheme() == QStringLiteral("http") || url.scheme() == QStringLiteral("https");
  if (!isWeb || url.host().isEmpty()) {
    answer.Problem = QStringLiteral("this is not the address of a Web server");
    return answer;
  }
  cancelled_ = false;
  bool isLate = false, isLong = false;
  QEventLoop loop;
  const std::unique_ptr<QNetworkReply> reply(manager_->get(ElementRequest(url, silenceLimitMs_)));
  waitingFor_ = reply.get();
  QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
  QObject::connect(reply.get(), &QNetworkReply::requestSent, reply.get(), [&] { answer.Sent = true; });
  QObject::connect(reply.get(), &QNetworkReply::readyRead, reply.get(), [&] {
    if (isLong || reply->bytesAvailable() <= kMostBytes) return;
    isLong = true;
    reply->abort();
  });
  QTimer whole;
  whole.setSingleShot(true);
  QObject::connect(&whole, &QTimer::timeout, reply.get(), [&] {
    isLate = true;
    reply->abort();
  });
  whole.start(silenceLimitMs_ * kSilencesInAll);
  if (!reply->isFinished()) loop.exec();
  // The end of the program ends every wait.
  if (!reply->isFinished()) Cancel();
  waitingFor_ = nullptr;

  answer.Status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  answer.StatusText = reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
  if (reply->isOpen()) answer.Body = reply->readAll();
  answer.Cancelled = cancelled_;
  // Where a redirect leads nowhere, its status is the last one that came.
  const bool isRefusal = answer.Status != 0 && answer.Status != 200 && !IsRedirect(answer.Status);
  if (reply->error() == QNetworkReply::NoError || isRefusal) return answer;
  if (isLong) {
    answer.Problem = QStringLiteral("more data than any element file has");
  } else if (isLate || reply->error() == QNetworkReply::OperationCanceledError) {
    answer.Problem = QStringLiteral("the server took too long to answer");
  } else {
    answer.Problem = ProblemOf(*reply, url);
  }
  return answer;
}

void ElementDownload::Cancel() {
  cancelled_ = true;
  if (waitingFor_ != nullptr) waitingFor_->abort();
}

}  // namespace pelorin::elements
