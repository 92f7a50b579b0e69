// What every host's input methods must do, also where there are none.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "ports/input_methods.h"

namespace orvello {

using InputCase = std::pair<const char*, std::function<std::unique_ptr<InputMethods>()>>;
inline void PrintTo(const InputCase& one, std::ostream* out) { *out << one.first; }

class InputMethodsContract : public ::testing::TestWithParam<InputCase> {};

TEST_P(InputMethodsContract, LoadAsOftenAsAskedAndBearToBeLetGo) {
  const auto input = GetParam().second();
  input->hide_input_panel();
  input->free_library(u"ink.dll");
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(input->load_library(u"ink.dll"));
    input->free_library(u"ink.dll");
  }
  // One that is not there needs no room.
  EXPECT_EQ(input->raise_input_panel({0, 300, 240, 20}), PanelAnswer::raised);
  input->hide_input_panel();
}

}  // namespace orvello
