// What every device's shell must do.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "ports/device_shell.h"

namespace orvello {

struct ShellDevice {
  virtual ~ShellDevice() = default;
  virtual DeviceShell& shell() = 0;
  virtual void choose(const std::string& program) = 0;  // as somebody else does
  virtual std::string chosen() = 0;                     // "": nothing is
  virtual void fail_reading() = 0;                      // from now on, and so writing
};
using ShellCase = std::pair<const char*, std::function<std::unique_ptr<ShellDevice>()>>;
inline void PrintTo(const ShellCase& one, std::ostream* out) { *out << one.first; }

class DeviceShellContract : public ::testing::TestWithParam<ShellCase> {
 protected:
  std::unique_ptr<ShellDevice> device = GetParam().second();
  DeviceShell& shell = device->shell();
};

TEST_P(DeviceShellContract, GivesBackWhatWasThereBefore) {
  for (const std::string before : {"", "other"}) {
    device->choose(before);
    EXPECT_EQ(shell.starts_this_program(), false);
    EXPECT_TRUE(shell.start_this_program(false)) << "nothing to do";
    EXPECT_EQ(device->chosen(), before);
    for (int i = 0; i < 2; ++i) {
      EXPECT_TRUE(shell.start_this_program(true));
      EXPECT_EQ(shell.starts_this_program(), true);
      EXPECT_NE(device->chosen(), before);
    }
    EXPECT_TRUE(shell.start_this_program(false));
    EXPECT_EQ(shell.starts_this_program(), false);
    EXPECT_EQ(device->chosen(), before);
  }
}

TEST_P(DeviceShellContract, KeepsWhatSomebodyElseChoseMeanwhile) {
  EXPECT_TRUE(shell.start_this_program(true));
  device->choose("third");
  EXPECT_EQ(shell.starts_this_program(), false);
  EXPECT_TRUE(shell.start_this_program(false));
  EXPECT_EQ(device->chosen(), "third");
  EXPECT_TRUE(shell.start_this_program(true));
  EXPECT_EQ(shell.starts_this_program(), true);
}

TEST_P(DeviceShellContract, WhatCannotBeReadIsNotAnsweredOrChanged) {
  device->choose("other");
  device->fail_reading();
  EXPECT_EQ(shell.starts_this_program(), std::nullopt);
  EXPECT_FALSE(shell.start_this_program(true));
}

}  // namespace orvello
