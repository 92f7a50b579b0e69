// Files that the program gives a name for a person to find, or for a mail program to read.
#pragma once

#include <string>

#include "base/result.h"
#include "base/text.h"

namespace orvello {

// A file name without its ending: 60 characters at most, never empty, nothing that a file system,
// a shell, a mail program's argument or another platform would trip over.
std::string safe_file_name(TextView subject);

// A new file "NAME.ending", or "NAME-2.ending" ..., which nobody but its owner reads; the folder is
// made where it is missing. The value is its path; fails with the reason.
Result<std::string> save_under_free_name(const std::string& folder, const std::string& name,
                                         const std::string& ending, const std::string& content);

// Removes what has lain in that folder for a week: a mail program reads its file when it will.
void forget_old_files(const std::string& folder);

}  // namespace orvello
