// Another program, given something to read and waited for.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvello {

// Runs the command of `words`, the first of which is a path or is looked for in PATH, without a
// shell and in a group of its own, with `input` on its standard input; what it says is not shown.
// Empty when it ended with 0, else a sentence: that it could not be started, its exit code with the
// first line that it wrote to standard error, the signal that ended it, or that it was given up
// after `limit` and ended. `meanwhile` is called several times a second.
std::string run_command(const std::vector<std::string>& words, std::string_view input,
                        std::chrono::milliseconds limit,
                        const std::function<void()>& meanwhile = {});

// The words of a command line: parted by blanks, but for what stands between quotes.
std::vector<std::string> command_words(std::string_view line);

// The executable file of that name in PATH; empty: there is none. A name with a slash is a path.
std::string find_program(const std::string& name);

}  // namespace orvello
