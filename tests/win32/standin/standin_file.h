// What the stand-in holds, in a file: a program that is started again finds its device's store as
// it left it.
#pragma once

#include <string>

#include "hosts/headless/memory_store.h"

namespace orvello::test {

// False: there is no such file, or it is of another kind.
bool load_standin(const std::string& path, MemoryStore::Contents& contents);
bool save_standin(const std::string& path, MemoryStore::Contents contents);

}  // namespace orvello::test
