// Why the system refused something with a file, in words for a person.
#pragma once

#include <string>

namespace orvello {

// The end of a sentence, without its full stop: "the disk is full", "permission denied".
std::string reason_of(int error);

// "PATH cannot be read: permission denied."
std::string cannot_be_read(const std::string& path, int error);
std::string cannot_be_written(const std::string& path, int error);

}  // namespace orvello
