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
  const struct {
    QString Form;  ///< empty: the number is used by a menu or a box
    int InProgram, Number;
    QString File;
  } rows[] = {
      {u"TabSheetSetup"_s, 0, 20, u"setup.html"_s},
      {u"TabSheetMap"_s, 0, 30, u"map.html"_s},
      {u"TabSheetGroundPath"_s, 0, 40, u"groundpath.html"_s},
      {u"TabSheetFlight"_s, 0, 50, u"flight.html"_s},
      {u"FormSetFlightTime"_s, 0, 51, u"flighttime.html"_s},
      {u"FormEphemeris"_s, 0, 60, u"ephemeris.html"_s},
      {u"FormUpdateKeplers"_s, 0, 70, u"update.html"_s},
      {u"FormSatKepsSummary"_s, 0, 80, u"summary.html"_s},
      {u"FormOverlayTextOptions"_s, 0, 90, u"overlaytext.html"_s},
      {u"AboutBoxQuillfen"_s, 0, 10, u"intro.html"_s},
      {QString(), desktop::kHelpIntroduction, 10, u"intro.html"_s},
      {QString(), overlay::kMasterMemoryHelp, 115, u"memory.html"_s},
      {QString(), desktop::kHelpFaqs, 200, u"faq.html"_s},
      {QString(), passes::kNoSatellitesHelp, 270, u"nodata.html"_s},
      {QString(), elements::kStaleElementsHelp, 280, u"stale.html"_s},
      {QString(), desktop::kHelpMessages, 290, u"messages.html"_s},
  };
  qsizetype forms = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.File.toStdString());
    EXPECT_EQ(row.Form.isEmpty() ? row.InProgram : desktop::HelpTopicOf(row.Form), row.Number);
    EXPECT_EQ(book->Topic(row.Number).fileName(), row.File);
    EXPECT_TRUE(book->Data(book->Topic(row.Number)).contains("</html>"));
    if (!row.Form.isEmpty()) ++forms;
  }
  EXPECT_EQ(forms, desktop::HelpTopics().size());
  EXPECT_EQ(book->Pages().size(), static_cast<std::size_t>(SourcePages().size()));
}

TEST(HelpBook, EveryLinkAndPictureIsThere) {
  static const QRegularExpression link(u"(?:href|src)=\"([^\"]+)\""_s);
  int links = 0;
  for (const QString& page : SourcePages()) {
    const QString source = SourceOf(page);
    for (auto match = link.globalMatch(source); match.hasNext(); ++links) {
      const QString target = match.next().captured(1);
      EXPECT_TRUE(Resolves(page, target)) << page.toStdString() << ": " << target.toStdString();
    }
  }
  EXPECT_GT(links, 100);
  for (const QString& target : InProject(u"keyword"_s, u"ref"_s)) {
    EXPECT_TRUE(Resolves(QString(), target)) << target.toStdString();
  }
}

TEST(HelpBook, EveryPageIsInTheBookAndItsContents) {
  const QStringList files = InProject(u"file"_s, QString()), contents = InProject(u"section"_s, u"ref"_s);
  for (const QString& page : SourcePages()) {
    EXPECT_TRUE(files.contains(page)) << page.toStdString();
    EXPECT_EQ(contents.count(page), 1) << page.toStdString();
  }
}

TEST(HelpBook, WhatIsNoBookIsTold) {
  const struct {
    const char* Label;
    QString File;
    std::function<void(const QString& folder)> Spoil;
    QString Said;
  } rows[] = {
      {"no collection", u"Pelorin.qhc"_s, [](const QString& folder) { QFile::remove(folder); },
       u"not installed"_s},
      {"collection is noise", u"Pelorin.qhc"_s,
       [](const QString& path) {
         QFile::remove(path);
         QFile file(path);
         ASSERT_TRUE(file.open(QIODevice::WriteOnly));
         file.write("noise");
       },
       u"cannot be read"_s},
      {"no pages", u"Pelorin.qch"_s, [](const QString& path) { QFile::remove(path); }, u"cannot be read"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const InstalledHelp installed;
    row.Spoil(installed.File(row.File));
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
