// The Linux program as a whole: reads the command line, opens the files and runs the command or the
// window. The answer is the process's exit code.
#pragma once

namespace orvello {

int run_program(int argc, char** argv);

}  // namespace orvello
