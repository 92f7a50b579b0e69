// How this system is told a path, and why it refused something.
#pragma once

#include <string>

namespace orvello {

// The whole path, in the form that has no limit to its length; empty with `errno` for a name that
// means a device or a pipe wherever it stands, and for one that nothing can have.
std::wstring system_path(const std::string& path);
std::string path_from_system(std::wstring_view path);

// Sets `errno` to what the last call failed with, and answers false.
bool fail_with_last_error();

}  // namespace orvello
