// What every host's message boxes must do.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

#include "ports/message_box.h"

namespace orvello {

struct BoxDevice {
  virtual ~BoxDevice() = default;
  virtual MessageBoxes& boxes() = 0;
  virtual void make_window() = 0;
  // In front of the next box the person presses a button, counted from 0, or leaves without one.
  virtual void person(std::optional<int> button) = 0;
  virtual void press_return() = 0;  // likewise
};
using BoxCase = std::pair<const char*, std::function<std::unique_ptr<BoxDevice>()>>;
inline void PrintTo(const BoxCase& one, std::ostream* out) { *out << one.first; }

class MessageBoxesContract : public ::testing::TestWithParam<BoxCase> {
 protected:
  std::unique_ptr<BoxDevice> device = GetParam().second();
};

TEST_P(MessageBoxesContract, GiveTheAnswerThatWasPressedAndElseTheCarefulOne) {
  const struct {
    BoxButtons buttons;
    std::vector<BoxAnswer> pressed;  // by button
    BoxAnswer left, by_return;
  } cases[] = {
      {BoxButtons::ok, {BoxAnswer::ok}, BoxAnswer::ok, BoxAnswer::ok},
      {BoxButtons::ok_cancel, {BoxAnswer::ok, BoxAnswer::cancel}, BoxAnswer::cancel, BoxAnswer::ok},
      {BoxButtons::ok_cancel_losing,
       {BoxAnswer::ok, BoxAnswer::cancel},
       BoxAnswer::cancel,
       BoxAnswer::cancel},
      {BoxButtons::yes_no, {BoxAnswer::yes, BoxAnswer::no}, BoxAnswer::no, BoxAnswer::yes},
      {BoxButtons::yes_no_losing, {BoxAnswer::yes, BoxAnswer::no}, BoxAnswer::no, BoxAnswer::no},
      {BoxButtons::yes_no_cancel,
       {BoxAnswer::yes, BoxAnswer::no, BoxAnswer::cancel},
       BoxAnswer::cancel,
       BoxAnswer::yes}};
  for (const bool owned : {false, true}) {  // before there is a window, too
    if (owned) device->make_window();
    for (const auto& one : cases) {
      const auto show = [&](std::optional<int> button) {
        device->person(button);
        return device->boxes().show(u"text", u"caption", BoxIcon::none, one.buttons, owned);
      };
      for (std::size_t i = 0; i < one.pressed.size(); ++i)
        EXPECT_EQ(show(static_cast<int>(i)), one.pressed[i]);
      EXPECT_EQ(show(std::nullopt), one.left);
      device->press_return();
      EXPECT_EQ(device->boxes().show(u"text", u"caption", BoxIcon::none, one.buttons, owned),
                one.by_return);
    }
  }
  device->boxes().beep();
  device->boxes().beep(Beep::hand);
}

}  // namespace orvello
