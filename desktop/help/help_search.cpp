#include "desktop/help/help_search.h"

#include <algorithm>

namespace pelorin::desktop {
namespace {

constexpr qsizetype kInTitle = 1000;
constexpr qsizetype kBeforeWord = 40, kExcerptLength = 120;

QString ExcerptAround(const QString& text, const QString& word) {
  const qsizetype found = std::max<qsizetype>(text.indexOf(word, 0, Qt::CaseInsensitive), 0);
  qsizetype start = std::max<qsizetype>(found - kBeforeWord, 0);
  while (start > 0 && start < found && !text[start - 1].isSpace()) ++start;
  const QString excerpt = text.mid(start, kExcerptLength).simplified();
  return (start > 0 ? QStringLiteral("… ") : QString()) + excerpt + QStringLiteral(" …");
}

/// 0 when a word is missing.
qsizetype WeightOf(const HelpPage& page, const QStringList& words) {
  qsizetype weight = 0;
  for (const QString& word : words) {
    const qsizetype inTitle = page.Title.count(word, Qt::CaseInsensitive);
    const qsizetype inText = page.Text.count(word, Qt::CaseInsensitive);
    if (inTitle + inText == 0) return 0;
    weight += inTitle * kInTitle + inText;
  }
  return weight;
}

}  // namespace

QStringList HelpWords(const QString& query) {
  QStringList words;
  const QStringList parts = query.simplified().split(u'"');
  for (qsizetype part = 0; part < parts.size(); ++part) {
    if (part % 2 == 1) {
      words.append(parts[part].trimmed());
    } else {
      words.append(parts[part].split(u' ', Qt::SkipEmptyParts));
    }
  }
  words.removeAll(QString());
  return words;
}

QList<HelpHit> SearchHelp(const std::vector<HelpPage>& pages, const QString& query) {
  const QStringList words = HelpWords(query);
  std::vector<std::pair<qsizetype, HelpHit>> found;
  for (const HelpPage& page : pages) {
    if (const qsizetype weight = WeightOf(page, words); weight > 0) {
      found.push_back({weight, {page.Url, page.Title, ExcerptAround(page.Text, words.constFirst())}});
    }
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  QList<HelpHit> hits;
  for (auto& [weight, hit] : found) hits.append(std::move(hit));
  return hits;
}

}  // namespace pelorin::desktop
