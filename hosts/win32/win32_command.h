// Another program, given something to read and waited for.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace orvello {

// Runs a command line, without a window and with `input` on its standard input; what it says is not
// shown. Empty when it ended with 0, else a sentence: that it could not be started, its exit code
// with the first line that it wrote to standard error, or that it was given up after `limit` and
// ended with all that it had started. `meanwhile` is called several times a second.
std::string run_command_line(const std::string& line, std::string_view input,
                             std::chrono::milliseconds limit,
                             const std::function<void()>& meanwhile = {});

}  // namespace orvello
