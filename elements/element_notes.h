#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "elements/known_sets.h"

namespace pelorin::elements {

/// What a user ought to know of the elements at hand: a line for the status bar, and what stands behind it.
/// Both are empty when all is well.
struct ElementNotes {
  QString Line;
  QStringList Details;
};

/// `missing` are satellites in use that no file holds; of `inUse`, those count that are stale at a Julian
/// date by the clock on the wall.
ElementNotes NotesOn(const KnownSets& known, const QStringList& missing,
                     const std::vector<const orbit::TSatellite*>& inUse, double localNowJd);

}  // namespace pelorin::elements
