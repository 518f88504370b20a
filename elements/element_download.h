#pragma once

#include <QString>
#include <memory>

#include "elements/element_answer.h"

class QNetworkAccessManager;
class QNetworkReply;

namespace pelorin::elements {

/// Element files over HTTP, through the system's proxy.
class ElementDownload {
 public:
  /// `silenceLimitMs` is how long a server may send nothing; ten times as long it may take as a whole.
  explicit ElementDownload(int silenceLimitMs = 30000);
  ~ElementDownload();

  /// Whether HTTP can be spoken at all.
  bool IsAvailable() const;

  /// Asks for an address and waits for the answer. Windows stay live meanwhile and events of all kinds come,
  /// so the caller guards against being called again. Redirects are followed, also from http to https. Never
  /// fails aloud. An answer is asked for once; but where a connection is closed before the head of an answer
  /// was understood, the library below tries up to three times more by itself.
  ElementAnswer Get(const QString& address);

  /// Ends a Get that is waiting; it returns a cancelled answer.
  void Cancel();

 private:
  int silenceLimitMs_;
  std::unique_ptr<QNetworkAccessManager> manager_;
  QNetworkReply* waitingFor_ = nullptr;
  bool cancelled_ = false;
};

}  // namespace pelorin::elements
