#include "desktop/help/help_book.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "tests/help/installed_help.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;

const QDir kSources(u"" PELORIN_HELP_SOURCES ""_s);

QString SourceOf(const QString& name) { return QString::fromUtf8(files::ReadFile(kSources.filePath(name))); }

TEST(HelpBook, EveryNumberThatTheProgramNamesIsItsPage) {
  const InstalledHelp installed;
  QString problem;
  const auto book = desktop::HelpBook::Open(installed.File(), problem);
  ASSERT_NE(book, nullptr) << problem.toStdString();
  const std::pair<int, const char*> rows[] = {
      {10, "intro"},      {20, "setup"},       {30, "map"},       {40, "groundpath"}, {41, "pictures"},
      {50, "flight"},     {51, "flighttime"},  {60, "ephemeris"}, {70, "update"},     {80, "summary"},
      {85, "alignments"}, {90, "overlaytext"}, {115, "memory"},   {200, "faq"},       {270, "nodata"},
      {280, "stale"},     {290, "messages"}};
  for (const auto& [number, page] : rows) {
    EXPECT_EQ(book->Topic(number).fileName(), QLatin1StringView(page) + u".html"_s);
    EXPECT_TRUE(book->Data(book->Topic(number)).contains("</html>")) << page;
  }
  EXPECT_EQ(book->Pages().size(), static_cast<std::size_t>(kSources.entryList({u"*.html"_s}).size()));
}

TEST(HelpBook, EveryLinkPictureAndPageIsThere) {
  static const QRegularExpression link(u"(?:href|src|ref)=\"([^\"#]*)#?([^\"]*)\""_s);
  const QString project = SourceOf(u"pelorin.qhp"_s);
  int links = 0;
  for (const QString& page : kSources.entryList({u"*.html"_s, u"*.qhp"_s})) {
    SCOPED_TRACE(page.toStdString());
    if (page.endsWith(u".html"_s)) {
      EXPECT_EQ(project.count(u"<file>%1</file>"_s.arg(page)), 1);
      EXPECT_EQ(project.count(QRegularExpression(u"<section [^>]*ref=\"%1\""_s.arg(page))), 1);
    }
    for (auto match = link.globalMatch(SourceOf(page)); match.hasNext(); ++links) {
      const QRegularExpressionMatch found = match.next();
      const QString target = found.captured(1).isEmpty() ? page : found.captured(1),
                    place = found.captured(2);
      EXPECT_TRUE(kSources.exists(target)) << target.toStdString();
      EXPECT_TRUE(place.isEmpty() || SourceOf(target).contains(u"name=\"%1\""_s.arg(place)))
          << target.toStdString() << '#' << place.toStdString();
    }
  }
  EXPECT_GT(links, 100);
}

TEST(HelpBook, WhatIsNoBookIsTold) {
  const struct {
    QString File;
    QByteArray Content;  ///< of what lies there instead; null for nothing
    QString Said;
  } rows[] = {{u"Pelorin.qhc"_s, {}, u"not installed"_s},
              {u"Pelorin.qhc"_s, "noise", u"cannot be read"_s},
              {u"Pelorin.qch"_s, {}, u"cannot be read"_s}};
  for (const auto& row : rows) {
    const InstalledHelp installed;
    ASSERT_TRUE(QFile::remove(installed.File(row.File)));
    if (!row.Content.isNull()) files::ReplaceFile(installed.File(row.File), row.Content);
    QString problem;
    EXPECT_EQ(desktop::HelpBook::Open(installed.File(), problem), nullptr);
    EXPECT_TRUE(problem.contains(row.Said) && problem.contains(QDir::toNativeSeparators(installed.File())))
        << problem.toStdString();
  }
}

TEST(HelpSearch, AllWordsCountAndTitlesGoFirst) {
  const std::vector<desktop::HelpPage> pages{
      {QUrl(u"a"_s), u"The map"_s, u"Clouds over the sea. A picture folder, and another folder."_s},
      {QUrl(u"b"_s), u"Folders"_s, u"Where a picture lies."_s},
      {QUrl(u"c"_s), u"Clocks"_s, u"A folder of the picture."_s}};
  const struct {
    QString Query;
    QString Found;  ///< pages in order
  } rows[] = {
      {u"picture FOLDER"_s, u"bac"_s},
      {u"\"picture folder\""_s, u"a"_s},
      {u"cloud clock"_s, QString()},
      {u"  "_s, QString()},
      {u"\""_s, QString()},
  };
  for (const auto& row : rows) {
    QString found;
    for (const desktop::HelpHit& hit : desktop::SearchHelp(pages, row.Query)) found += hit.Url.toString();
    EXPECT_EQ(found, row.Found) << row.Query.toStdString();
  }
}

}  // namespace
}  // namespace pelorin::tests
