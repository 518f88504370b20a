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

/// Where it is written down when the element service was asked: a file in the user's own data.
QString ElementRequestsFile();

/// The log of accepted alignments: a file in the user's own data. Need not exist.
QString AlignmentLogFile();

/// What the program can make anew at any time lies there. Need not exist.
QString CacheFolder();

/// Whether the program keeps its files beside itself: it does where a file "pelorin-portable.txt" lies in its
/// folder and the folder can be written, as on a stick or in the folder that it was built in. An installed
/// program never writes there, not even when root runs it.
bool IsPortable(const QString& programFolder = ProgramFolder());

/// Where element files are looked for and results go until the user says otherwise, each with a "/" at its
/// end.
struct DefaultFolders {
  QString Elements, Results;
  /// The program's folder, where it is not to be written and earlier versions did; otherwise empty. Settings
  /// that remember it for results take `Results` instead.
  QString Left{};
};
/// Folders in the user's data. Makes none of them.
DefaultFolders UserFolders();
/// The program's own folder for one that is portable, otherwise the user's. As long as the user has no folder
/// of elements, those are read that lie beside the program.
DefaultFolders FoldersFor(const QString& programFolder = ProgramFolder());

/// The folder's path with a "/" at its end; an empty path stays empty.
QString WithSeparator(const QString& folder);

/// A file that the program reads, by its name. Looked for in the working folder, its parent, the user's data
/// folder, the program's folder, and the installed "../share/pelorin" beside it; empty when none has it.
QString FindDataFile(const QString& name, const QString& programFolder = ProgramFolder());
/// The first of several names, best first. What lies in the first three folders is the user's own and goes
/// before everything that was installed, whatever its name.
QString FindDataFile(const QStringList& names, const QString& programFolder = ProgramFolder());

}  // namespace pelorin::app
