#pragma once

#include <QString>

namespace pelorin::elements {

/// Adds the sets of an element file to the archive, a folder of element files "yyyy-mm.2li" by the month of
/// the sets' epochs: a picture wants the elements of its own days, and by the epoch they are found there
/// whenever they were replaced. A set that is there already, by its two lines, is not added again. Epochs
/// that are no time go to "undated.2li".
///
/// Returns the number of sets added. Raises orbit::ReadError and files::FileError; a month's file is
/// replaced whole or not at all.
int ArchiveElementFile(const QString& elementFile, const QString& archiveFolder);

}  // namespace pelorin::elements
