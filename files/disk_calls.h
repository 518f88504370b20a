#pragma once

#include <QString>
#include <system_error>

/// What the system is asked for when a finished file is put in its place. Each call tells the system's own
/// reason when it fails, and has no error when it worked. They stand apart from their callers so that a test
/// can put failing ones in their place.
namespace pelorin::files {

/// Waits until what was written to an open file is on the disk. `descriptor` is QFile::handle().
std::error_code SyncFile(int descriptor);

/// Waits until the names in a folder are on the disk: without it, a file that was renamed there can have its
/// earlier content again after a power cut. No error where the system cannot do it for folders.
std::error_code SyncFolder(const QString& folder);

/// Gives a file another name in the same folder, in place of the file that has it.
std::error_code RenameOver(const QString& from, const QString& to);

}  // namespace pelorin::files
