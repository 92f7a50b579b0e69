// The stand-in for the device's store, registered for this program; see tests/win32/standin.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/win32/standin/standin_control.h"

namespace orvello::test {

// The folder of a library that is built beside the program: "pimstore", or "pimstore_hollow".
std::wstring library_folder(const wchar_t* library);
// Loads and registers it at first use, so that the name alone finds it from then on. After every
// test of this program nothing of it may be held, not freed or misused.
StandinControl& standin();

}  // namespace orvello::test
