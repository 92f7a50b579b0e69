// The program as a whole: reads the command line, opens the files and runs the command or the
// window. The answer is the process's exit code.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "hosts/shared/program_system.h"

namespace orvello {

// `words` are the arguments after the program's name. What is printed goes to std::cout, what is
// wrong to std::cerr, and a file's content that is to be printed to `content`, byte for byte.
int run_program(const std::vector<std::string>& words, ProgramSystem& system,
                std::ostream& content);

}  // namespace orvello
