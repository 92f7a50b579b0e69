// Which files are the program's own, so that nobody's export or picture takes their place.
#pragma once

#include <string>
#include <vector>

#include "hosts/shared/paths.h"

namespace orvello {

// True for the databases and what belongs to them, the registry, the backups and the rest of what
// the program keeps: by what the path leads to, not by how it is spelt, and for names in those
// folders that are free at the moment.
bool is_own_file(const Paths& paths, const std::string& path);

// The first of the files that is one; empty without.
std::string own_file_among(const Paths& paths, const std::vector<std::string>& files);

}  // namespace orvello
