#pragma once

#include <QHelpEngine>
#include <QList>
#include <QString>
#include <QUrl>
#include <memory>

#include "desktop/help/help_search.h"

namespace pelorin::desktop {

/// The help collection: pages, their numbers, table of contents, keywords. It is only read, since what is
/// installed cannot be written.
class HelpBook {
 public:
  /// The collection of that file, or null; `problem` then tells why.
  static std::unique_ptr<HelpBook> Open(const QString& helpFile, QString& problem);

  /// The page of a help context; empty when there is none.
  QUrl Topic(int context) const;
  QByteArray Data(const QUrl& url) const { return engine_.fileData(url); }
  /// Every page. Read at the first call.
  const std::vector<HelpPage>& Pages();

  /// Gives the widgets of contents and keywords, which fill themselves.
  QHelpEngine& Engine() { return engine_; }

 private:
  explicit HelpBook(const QString& helpFile) : engine_(helpFile) {}

  QHelpEngine engine_;
  std::vector<HelpPage> pages_;
};

}  // namespace pelorin::desktop
