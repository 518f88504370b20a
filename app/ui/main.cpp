#include "app/ui/program.h"

int main(int argc, char** argv) { return pelorin::ui::RunProgram(argc, argv); }
