#include "desktop/help/help_book.h"

#include <QFileInfo>
#include <QHelpLink>
#include <QTextDocument>

#include "desktop/help/help.h"

namespace pelorin::desktop {

std::unique_ptr<HelpBook> HelpBook::Open(const QString& helpFile, QString& problem) {
  if (!QFileInfo(helpFile).isFile()) {
    problem = NoHelpText(helpFile);
    return nullptr;
  }
  std::unique_ptr<HelpBook> book(new HelpBook(helpFile));
  book->engine_.setReadOnly(true);
  book->engine_.setUsesFilterEngine(true);
  const bool isOpen = book->engine_.setupData();
  // The pages are in a second file, which the collection only names.
  if (isOpen && !book->Data(book->Topic(kHelpIntroduction)).isEmpty()) return book;
  problem = BadHelpText(helpFile, book->engine_.error());
  return nullptr;
}

QUrl HelpBook::Topic(int context) const {
  const QList<QHelpLink> links = engine_.documentsForIdentifier(QString::number(context));
  return links.isEmpty() ? QUrl() : links.constFirst().url;
}

const std::vector<HelpPage>& HelpBook::Pages() {
  if (!pages_.empty()) return pages_;
  for (const QString& book : engine_.registeredDocumentations()) {
    for (const QUrl& url : engine_.files(book, QString(), QStringLiteral("html"))) {
      QTextDocument page;
      page.setHtml(QString::fromUtf8(Data(url)));
      pages_.push_back({url, page.metaInformation(QTextDocument::DocumentTitle), page.toPlainText()});
    }
  }
  return pages_;
}

}  // namespace pelorin::desktop
