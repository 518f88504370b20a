#pragma once

#include <QString>
#include <QStringList>

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

/// The same for files of any age and name, and for the element files of folders, as a user hands them over. A
/// line for each file tells how many sets it has and how many of them were new, or why it gave none.
QStringList ArchiveElementFiles(const QStringList& filesAndFolders, const QString& archiveFolder);

}  // namespace pelorin::elements
