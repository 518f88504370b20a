#pragma once

#include <QByteArray>
#include <QString>

namespace pelorin::elements {

/// What came of asking an element service for an address.
struct ElementAnswer {
  int Status = 0;      ///< of HTTP; 0 when no answer came
  QString StatusText;  ///< that goes with it, may be empty
  QByteArray Body;     ///< as far as it came
  QString Problem;     ///< why not all of it came; empty for a whole answer
  bool Cancelled = false;
  bool Sent = false;  ///< a server got the request, whether it answered or not
};

/// The service's way to say that its copy is the one that was fetched the last time.
bool SaysNothingNew(const ElementAnswer& answer);

/// The service has no such group, satellite or file. It says so with a status of its own, or in words.
bool IsUnknownThere(const ElementAnswer& answer);

/// A whole answer with something in it that may be elements.
bool HasData(const ElementAnswer& answer);

/// Asking on would do harm, or be in vain: the service refuses this client, has too much to do or is out of
/// order, or cannot be reached.
bool EndsRun(const ElementAnswer& answer);

/// What the service said, to be read by people: lines parted by CR, a page without its markup.
QString AnswerText(const QByteArray& body);

}  // namespace pelorin::elements
