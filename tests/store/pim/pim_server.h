// The stand-in for the device's store, registered for this program; see tests/win32/standin.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/win32/standin/standin_control.h"

namespace orvello::test {

// The folder of a library that is built beside the program: "pimstore", or "pimstore_hollow".
std::wstring library_folder(const wchar_t* library);
// Loads and registers it at first use, so that the name alone finds it from then on.
StandinControl& standin();

// An empty server at the start; at the end nothing of it is held, and nothing was misused.
class PimServerTest : public testing::Test {
 protected:
  void SetUp() override { standin().reset(); }
  void TearDown() override { expect_nothing_left(); }
  static void expect_nothing_left();
};

}  // namespace orvello::test
