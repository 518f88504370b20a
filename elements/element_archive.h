#pragma once

#include <QString>

namespace pelorin::elements {

/// Adds the sets of an element file to the archive, a folder of element files by the month of the sets'
/// epochs: "yyyy-mm.2li" for those in lines, "yyyy-mm.csv" for messages. A picture wants the elements of its
/// own days, and by the epoch they are found there whenever they were replaced. A set that is there already
/// in the same form, whatever its name, is not added again. Epochs that are no time go to "undated.2li" and
/// "undated.csv".
///
/// Returns the number of sets added. Raises files::FileError; a month's file is replaced whole or not at all,
/// and programs that add at the same time wait for each other.
int ArchiveElementFile(const QString& elementFile, const QString& archiveFolder);

}  // namespace pelorin::elements
