#include "desktop/program.h"

int main(int argc, char** argv) { return pelorin::desktop::RunProgram(argc, argv); }
