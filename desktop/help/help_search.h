#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <vector>

/// Searching the help. The book is small enough to be gone through as a whole, so there is no index that
/// would want a place to be written to.
namespace pelorin::desktop {

struct HelpPage {
  QUrl Url;
  QString Title;
  QString Text;  ///< without its markup
};

struct HelpHit {
  QUrl Url;
  QString Title;
  QString Excerpt;  ///< one line around the first word found in the text
};

/// What is searched for: words, and "several words" between quotes as one.
QStringList HelpWords(const QString& query);

/// The pages that have all the words, as parts of words too and in any case; those with a word in the title
/// go first, then those that have them most often.
QList<HelpHit> SearchHelp(const std::vector<HelpPage>& pages, const QString& query);

}  // namespace pelorin::desktop
