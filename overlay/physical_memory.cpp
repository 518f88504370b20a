#include "overlay/physical_memory.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fstream>
#include <string>
#endif

namespace pelorin::overlay {

std::optional<int> AvailablePhysicalMemoryMb() {
#ifdef _WIN32
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  if (!GlobalMemoryStatusEx(&status)) return std::nullopt;
  return static_cast<int>(status.ullAvailPhys >> 20);
#else
  std::ifstream file("/proc/meminfo");
  std::string word;
  while (file >> word) {
    long long kilobytes = 0;
    if (word == "MemAvailable:" && file >> kilobytes) return static_cast<int>(kilobytes >> 10);
  }
  return std::nullopt;
#endif
}

}  // namespace pelorin::overlay
