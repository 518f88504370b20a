#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <stdexcept>

namespace pelorin::tests {

/// An element service on this computer. It answers in the event loop of the test, as told for each path.
class ElementServer {
 public:
  enum class Then { Close, Wait };

  struct Answer {
    QByteArray Bytes;  ///< with the head
    Then Next = Then::Close;
  };

  ElementServer() {
    // A proxy of the computer's is not asked for what is on it.
    qputenv("no_proxy", "127.0.0.1");
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { Accept(); });
    if (!server_.listen(QHostAddress::LocalHost)) throw std::runtime_error("no port to listen at");
  }

  QString Base() const {
    return QStringLiteral("http://127.0.0.1:%1/NORAD/elements/").arg(server_.serverPort());
  }

  /// A whole answer; `head` are further header lines, each ended by CR LF.
  static Answer Reply(const QByteArray& status, const QByteArray& body, const QByteArray& head = {}) {
    return {"HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + head +
            "Connection: close\r\n\r\n" + body};
  }

  QHash<QString, Answer> Answers;  ///< by file name; others answer 404
  QStringList Asked;               ///< file names in order
  QByteArray LastRequest;

 private:
  void Accept() {
    while (QTcpSocket* socket = server_.nextPendingConnection()) {
      QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
        if (!socket->peek(8192).contains("\r\n\r\n")) return;
        LastRequest = socket->readAll();
        const QString path = QString::fromLatin1(LastRequest.split(' ').at(1));
        Asked.append(path.section(u'/', -1));
        const Answer answer =
            Answers.value(Asked.last(), Reply("404 Not Found", "no such file\r\nat all\r\n"));
        socket->write(answer.Bytes);
        if (answer.Next == Then::Close) socket->disconnectFromHost();
      });
    }
  }

  QTcpServer server_;
};

}  // namespace pelorin::tests
