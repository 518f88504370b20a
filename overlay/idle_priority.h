#pragma once

namespace pelorin::overlay {

/// The process stands back behind all others while this lives, so that a long map does not slow a decoder
/// down. Where the system refuses, nothing changes.
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
