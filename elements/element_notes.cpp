#include "elements/element_notes.h"

#include "elements/element_age.h"
#include "elements/stale_elements.h"

namespace pelorin::elements {
namespace {

QStringList StaleTexts(const std::vector<const orbit::TSatellite*>& inUse, double localNowJd) {
  QStringList texts;
  for (const orbit::TSatellite* satellite : inUse) {
    const int age = ElementAgeDays(localNowJd, satellite->Epoch);
    if (age <= kStaleAfterDays) continue;
    texts.append(QStringLiteral("The elements of %1 are %2 days old")
                     .arg(QString::fromStdString(satellite->Name))
                     .arg(age));
  }
  return texts;
}

}  // namespace

ElementNotes NotesOn(const KnownSets& known, const QStringList& missing,
                     const std::vector<const orbit::TSatellite*>& inUse, double localNowJd) {
  QStringList missingTexts;
  for (const QString& name : missing) {
    missingTexts.append(QStringLiteral("No element file has a set of %1, which is active").arg(name));
  }
  const std::pair<QString, QStringList> kinds[] = {
      {QStringLiteral("Left out of the elements: %1"), LeftOutTexts(known.LeftOut())},
      {QStringLiteral("Wrong checksums: %1"), DoubtTexts(known.Satellites())},
      {QStringLiteral("No elements: %1"), missingTexts},
      {QStringLiteral("Stale: %1"), StaleTexts(inUse, localNowJd)}};
  QStringList line;
  ElementNotes notes;
  for (const auto& [caption, texts] : kinds) {
    if (!texts.isEmpty()) line.append(caption.arg(texts.size()));
    notes.Details += texts;
  }
  notes.Line = line.join(QStringLiteral("  "));
  return notes;
}

}  // namespace pelorin::elements
