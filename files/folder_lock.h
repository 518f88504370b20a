#pragma once

#include <QString>

namespace pelorin::files {

/// Makes programs that write the same file wait for each other, as long as each of them takes this lock on
/// the file's folder before it reads what it is about to replace.
///
/// The lock is the system's own and is on the folder, not on a file in it: it ends with its holder however
/// that ends, nothing is left behind that could be old, empty or someone else's, and a folder that can only
/// be read can be locked, too. Where the system has no such lock, as on some network file systems, nobody
/// waits.
class FolderLock {
 public:
  /// Waits until the lock is free, but no longer than `patienceMs`.
  FolderLock(const QString& folder, int patienceMs);
  ~FolderLock();
  bool IsHeld() const { return isHeld_; }
  /// Another one had it all the time.
  bool IsTaken() const { return isTaken_; }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int descriptor_ = -1;
  bool isHeld_ = false, isTaken_ = false;
};

}  // namespace pelorin::files
