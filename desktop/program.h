#pragma once

namespace pelorin::desktop {

/// The desktop program from its command line to its end; the result is the process's exit status. With
/// "--help" or "--version" it answers on the console and opens no window.
int RunProgram(int argc, char** argv);

}  // namespace pelorin::desktop
