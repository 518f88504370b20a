#include "files/folder_lock.h"

#if __has_include(<sys/file.h>)
#include <QFile>
#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace pelorin::files {

#if __has_include(<sys/file.h>)
namespace {

constexpr std::chrono::milliseconds kAskAgain(5);

}  // namespace

FolderLock::FolderLock(const QString& folder, int patienceMs)
    : descriptor_(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (descriptor_ < 0) return;
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(patienceMs);
  while (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK) return;
    isTaken_ = std::chrono::steady_clock::now() >= end;
    if (isTaken_) return;
    std::this_thread::sleep_for(kAskAgain);
  }
  isHeld_ = true;
}

FolderLock::~FolderLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}
#else
FolderLock::FolderLock(const QString&, int) {}
FolderLock::~FolderLock() = default;
#endif

}  // namespace pelorin::files
