#include "desktop/help/help_book.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QXmlStreamReader>

#include "desktop/help/help.h"
#include "elements/stale_elements.h"
#include "overlay/overlay_master.h"
#include "passes/pass_list.h"
#include "tests/help/installed_help.h"

namespace pelorin::tests {
namespace {

using namespace Qt::StringLiterals;

QString SourceOf(const QString& name) {
  QFile file(QDir(u"" PELORIN_HELP_SOURCES ""_s).filePath(name));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList SourcePages() {
  return QDir(u"" PELORIN_HELP_SOURCES ""_s).entryList({u"*.html"_s}, QDir::Files);
}

/// Whether "page.html#place" or "images/picture.png" is there.
bool Resolves(const QString& fromPage, const QString& link) {
  const QString name = link.section(u'#', 0, 0), place = link.section(u'#', 1);
  const QString page = name.isEmpty() ? fromPage : name;
  return QFile::exists(QDir(u"" PELORIN_HELP_SOURCES ""_s).filePath(page)) &&
         (place.isEmpty() || SourceOf(page).contains(u"name=\"%1\""_s.arg(place)));
}

/// The values of an attribute of the project file's elements of that name.
QStringList InProject(const QString& element, const QString& attribute) {
  QStringList values;
  QXmlStreamReader project(SourceOf(u"pelorin.qhp"_s));
  while (!project.atEnd()) {
    if (project.readNext() != QXmlStreamReader::StartElement || project.name() != element) continue;
    values.append(attribute.isEmpty() ? project.readElementText()
                                      : project.attributes().value(attribute).toString());
  }
  EXPECT_FALSE(project.hasError()) << project.errorString().toStdString();
  return values;
}

TEST(HelpBook, EveryNumberThatTheProgramNamesIsItsPage) {
  const InstalledHelp installed;
  QString problem;
  const auto book = desktop::HelpBook::Open(installed.File(), problem);
  ASSERT_NE(book, nullptr) << problem.toStdString();
  // The book names its topics by the numbers alone.
  const auto of = [](const char* form) { return desktop::HelpTopicOf(QLatin1StringView(form)); };
  const std::pair<int, QString> rows[] = {{of("TabSheetSetup"), u"setup"_s},
                                          {of("TabSheetMap"), u"map"_s},
                                          {of("TabSheetGroundPath"), u"groundpath"_s},
                                          {of("TabSheetFlight"), u"flight"_s},
                                          {of("FormSetFlightTime"), u"flighttime"_s},
                                          {of("FormEphemeris"), u"ephemeris"_s},
                                          {of("FormUpdateKeplers"), u"update"_s},
                                          {of("FormSatKepsSummary"), u"summary"_s},
                                          {of("FormOverlayTextOptions"), u"overlaytext"_s},
                                          {of("AboutBoxQuillfen"), u"intro"_s},
                                          {desktop::kHelpIntroduction, u"intro"_s},
                                          {desktop::kHelpFaqs, u"faq"_s},
                                          {desktop::kHelpMessages, u"messages"_s},
                                          {overlay::kMasterMemoryHelp, u"memory"_s},
                                          {passes::kNoSatellitesHelp, u"nodata"_s},
                                          {elements::kStaleElementsHelp, u"stale"_s}};
  for (const auto& [number, page] : rows) {
    EXPECT_EQ(book->Topic(number).fileName(), page + u".html"_s) << number;
    EXPECT_TRUE(book->Data(book->Topic(number)).contains("</html>")) << number;
  }
  EXPECT_EQ(book->Pages().size(), static_cast<std::size_t>(SourcePages().size()));
}

TEST(HelpBook, EveryLinkPictureAndPageIsThere) {
  static const QRegularExpression link(u"(?:href|src)=\"([^\"]+)\""_s);
  const QStringList files = InProject(u"file"_s, QString()), contents = InProject(u"section"_s, u"ref"_s);
  int links = 0;
  for (const QString& page : SourcePages()) {
    SCOPED_TRACE(page.toStdString());
    EXPECT_TRUE(files.contains(page));
    EXPECT_EQ(contents.count(page), 1);
    const QString source = SourceOf(page);
    for (auto match = link.globalMatch(source); match.hasNext(); ++links) {
      const QString target = match.next().captured(1);
      EXPECT_TRUE(Resolves(page, target)) << target.toStdString();
    }
  }
  EXPECT_GT(links, 100);
  for (const QString& target : InProject(u"keyword"_s, u"ref"_s)) {
    EXPECT_TRUE(Resolves(QString(), target)) << target.toStdString();
  }
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
    QFile file(installed.File(row.File));
    ASSERT_TRUE(file.remove());
    if (!row.Content.isNull()) {
      ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(row.Content) > 0);
      file.close();
    }
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
