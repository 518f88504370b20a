#pragma once

#include <QString>
#include <QStringList>

namespace pelorin::passes {

/// Replaces "PassList.txt" in the results folder by the entries, one a line. An empty list leaves the file as
/// it is. Raises FileError.
void SavePassList(const QString& resultsFolder, const QStringList& entries);

}  // namespace pelorin::passes
