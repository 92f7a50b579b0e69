// Paths as the program writes them (with a "\" before the drive's letter) and as this system does.
#pragma once

#include <string>

#include "base/text.h"

namespace orvello {

Text device_path(const std::string& path);
std::string host_path(TextView path);

}  // namespace orvello
