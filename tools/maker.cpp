#include "tools/maker.h"

#include <cstdio>
#include <exception>

namespace pelorin::tools {

int RunMaker(int argc, char** argv, int argumentCount, const char* usage, const std::function<void()>& make) {
  if (argc != argumentCount + 1) {
    std::fprintf(stderr, "Usage: %s %s\n", argv[0], usage);
    return 2;
  }
  try {
    make();
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s: %s\n", argv[0], problem.what());
    return 1;
  }
  return 0;
}

}  // namespace pelorin::tools
