// Paths as the program writes them ("\users\ann\calendar") and as this system does ("/users/ann/
// calendar").
#pragma once

#include <string>

#include "base/text.h"

namespace orvello {

Text device_path(const std::string& path);
std::string host_path(TextView path);

}  // namespace orvello
