#include "overlay/idle_priority.h"

#if defined(_WIN32)
#include <windows.h>
#elif defined(__linux__)
#include <sched.h>
#endif

namespace pelorin::overlay {

#if defined(_WIN32)

IdlePriority::IdlePriority() : before_(static_cast<int>(GetPriorityClass(GetCurrentProcess()))) {
  SetPriorityClass(GetCurrentProcess(), IDLE_PRIORITY_CLASS);
}
IdlePriority::~IdlePriority() {
  if (before_ > 0) SetPriorityClass(GetCurrentProcess(), static_cast<DWORD>(before_));
}

#elif defined(__linux__)

// The batch class, not the idle one: without privilege a process may leave the former but not the latter.
IdlePriority::IdlePriority() : before_(sched_getscheduler(0)) {
  const sched_param parameters{};
  if (before_ != SCHED_OTHER || sched_setscheduler(0, SCHED_BATCH, &parameters) != 0) before_ = -1;
}
IdlePriority::~IdlePriority() {
  const sched_param parameters{};
  if (before_ >= 0) sched_setscheduler(0, before_, &parameters);
}

#else

IdlePriority::IdlePriority() = default;
IdlePriority::~IdlePriority() = default;

#endif

}  // namespace pelorin::overlay
