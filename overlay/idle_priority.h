#pragma once

namespace pelorin::overlay {

/// While this lives, the calling thread counts as background work: the idle class on Windows, the batch class
/// on Linux, which does not take the processor from a program that has just woken up, such as a decoder with
/// new sound to work on. Where the system refuses, nothing changes.
class IdlePriority {
 public:
  IdlePriority();
  ~IdlePriority();
  IdlePriority(const IdlePriority&) = delete;
  IdlePriority& operator=(const IdlePriority&) = delete;

 private:
  int before_ = -1;
};

}  // namespace pelorin::overlay
