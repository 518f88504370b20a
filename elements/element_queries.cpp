#include "elements/element_queries.h"

#include <QFileInfo>
#include <QHash>
#include <algorithm>

namespace pelorin::elements {
namespace {

QString Escaped(const QString& text) { return QString::fromLatin1(text.toUtf8().toPercentEncoding()); }

bool IsCatalogueNumber(const QString& name) {
  constexpr qsizetype mostDigits = 9;
  return !name.isEmpty() && name.size() <= mostDigits &&
         std::all_of(name.begin(), name.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// The group of a file name in lower case. Most groups have the name of the file in which they were published
/// before: weather, noaa, goes, resource, amateur, stations, visual, science, cubesat and so on.
QString GroupOf(const QString& name) {
  static const QHash<QString, QString> renamed{
      {QStringLiteral("tle-new"), QStringLiteral("last-30-days")},
      {QStringLiteral("1999-025"), QStringLiteral("fengyun-1c-debris")},
      {QStringLiteral("resources"), QStringLiteral("resource")},
      {QStringLiteral("amsat"), QStringLiteral("amateur")},
      {QStringLiteral("iss"), QStringLiteral("stations")}};
  return renamed.value(name, name);
}

}  // namespace

QString RemoteFileName(const QString& fileName) {
  return QString(QFileInfo(fileName).completeBaseName() + QStringLiteral(".txt")).toLower();
}

QString RemoteAddress(const QString& baseAddress, const QString& fileName) {
  return baseAddress + Escaped(RemoteFileName(fileName));
}

QString QueryOf(const QString& fileName) {
  const QString name = QFileInfo(fileName).completeBaseName().toLower();
  return IsCatalogueNumber(name) ? QStringLiteral("CATNR=") + name
                                 : QStringLiteral("GROUP=") + Escaped(GroupOf(name));
}

QString QueryAddress(const QString& baseAddress, const QString& fileName) {
  return baseAddress + QStringLiteral("gp.php?") + QueryOf(fileName) + QStringLiteral("&FORMAT=csv");
}

}  // namespace pelorin::elements
