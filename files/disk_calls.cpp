#include "files/disk_calls.h"

#include <QFile>
#include <cerrno>
#include <cstdio>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace pelorin::files {
namespace {

#ifdef _WIN32
std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }
#else
/// Whether the call is only unknown to what the file lies on, as on some network drives. Nothing was lost
/// then.
bool IsUnknownCall(int error) { return error == EINVAL || error == ENOSYS || error == ENOTSUP; }

/// 0, or the system's error number.
int ErrorOfSync(int descriptor) {
#ifdef F_FULLFSYNC
  // There fsync alone leaves the data in the drive's own memory.
  if (fcntl(descriptor, F_FULLFSYNC) == 0) return 0;
#endif
  int result = 0;
  do {
    result = fsync(descriptor);
  } while (result != 0 && errno == EINTR);
  return result == 0 || IsUnknownCall(errno) ? 0 : errno;
}
#endif

}  // namespace

std::error_code SyncFile(int descriptor) {
#ifdef _WIN32
  if (FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)))) return {};
  return LastError();
#else
  return {ErrorOfSync(descriptor), std::generic_category()};
#endif
}

std::error_code SyncFolder([[maybe_unused]] const QString& folder) {
#ifdef _WIN32
  return {};  // the file system keeps a journal of names
#else
  const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return {};  // a folder that may be written but not read
  const int error = ErrorOfSync(descriptor);
  close(descriptor);
  return {error, std::generic_category()};
#endif
}

std::error_code RenameOver(const QString& from, const QString& to) {
#ifdef _WIN32
  const auto native = [](const QString& path) { return reinterpret_cast<const wchar_t*>(path.utf16()); };
  if (MoveFileExW(native(from), native(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return {};
  return LastError();
#else
  const bool isDone =
      std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
  return {isDone ? 0 : errno, std::generic_category()};
#endif
}

}  // namespace pelorin::files
