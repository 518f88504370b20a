#pragma once

#include <QString>
#include <QStringList>

/// Where the program and its files lie. Needs a QCoreApplication.
namespace pelorin::app {

/// The executable's folder, with a "/" at its end.
QString ProgramFolder();

/// The user's own data: environment variable PELORIN_DATA_DIR, or else "Quillfen/Pelorin" in the user's data
/// folder. Need not exist.
QString UserDataFolder();

/// Where element sets go that an update replaces: "archive" in the user's own data. Need not exist.
QString ElementArchiveFolder();

/// Where element files are looked for and results go until the user says otherwise, each with a "/" at its
/// end: the program's folder if it can be written, or else folders in the user's data. Makes none of them.
struct DefaultFolders {
  QString Elements, Results;
};
DefaultFolders FoldersFor(const QString& programFolder = ProgramFolder());

/// The folder's path with a "/" at its end; an empty path stays empty.
QString WithSeparator(const QString& folder);

/// A file that the program reads, by its name. Looked for in the working folder, its parent, the program's
/// folder, the installed "../share/pelorin" beside it, and the user's data folder; empty when none has it.
QString FindDataFile(const QString& name, const QString& programFolder = ProgramFolder());
/// The first of several names, best first. What lies in the working folder or its parent goes before
/// everything that was installed.
QString FindDataFile(const QStringList& names, const QString& programFolder = ProgramFolder());

/// Where the overlay master, "Overlay.bmp", may lie, in the order of the search: beside the program, if it is
/// there or can be written there, then in the user's cache folder, which is made when the program's cannot be
/// written.
QStringList MasterFiles(const QString& programFolder = ProgramFolder());

/// Where a new overlay master is written.
QString MasterFile(const QString& programFolder = ProgramFolder());

}  // namespace pelorin::app
