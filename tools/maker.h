#pragma once

#include <functional>

namespace pelorin::tools {

/// The frame of every maker's main: checks that there are `argumentCount` arguments after the program's
/// name, runs `make`, and on any exception prints its text to standard error. Gives the exit code: 0, 1
/// after an exception, 2 (with `usage` printed) on a wrong number of arguments.
int RunMaker(int argc, char** argv, int argumentCount, const char* usage, const std::function<void()>& make);

}  // namespace pelorin::tools
